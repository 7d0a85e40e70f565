package com.corvane.bench;

import com.corvane.bench.Rounds.Samples;
import com.sun.jna.Native;
import java.io.PrintStream;
import java.util.List;
import java.util.Locale;

/** Measures rows and prints them as tables, each row with the aims that it reached or missed. */
final class Report {
    private static final double MOST_OF_BARE = 1.15;
    private static final double MOST_OWN_NANOS = 1000;

    private final PrintStream out;
    private final Rounds rounds;
    private final long start = System.nanoTime();
    private int missed;
    private int missedWithFewRounds;

    Report(PrintStream out, Rounds rounds) {
        this.out = out;
        this.rounds = rounds;
    }

    void opening(int count) {
        print("Java %s, %s, JNA %s; %d ms of warming up, at most %d rounds%n",
                System.getProperty("java.version"), System.getProperty("os.name"), Native.VERSION,
                Rounds.WARM_NANOS / 1_000_000, count);
        out.print("""

                Each column of a row is warmed up on its own; then each round times them all, one
                after the other. A figure is the median of its rounds. The ratio in parentheses is
                the median of the rounds' own ratios to the bare calls, so it is not the quotient
                of the two medians in the table.
                Aims of this library, pass or MISS:
                  <= 1.15       at most 1.15 times as long as the bare calls
                  < JNA, < JDK  faster than JNA, or the JDK
                  < 1000        fewer nanoseconds of its own an item
                "few" marks rows that take too long for many rounds: the load of the machine moves
                their ratios and verdicts from run to run.
                """);
    }

    /**
     * Everybody's time for each row, with the ratio to the bare calls.
     *
     * @param rival the column of {@link Row#works()} that the library is to be faster than
     */
    void comparison(String group, String jdkName, List<Row> rows, int rival) throws Exception {
        print("%n%s: microseconds a call (times the bare calls)%n%n", group);
        print("%-24s%17s%10s%17s%17s  %7s  %5s  %s%n", "", "this library", "bare", "JNA", jdkName,
                "<= " + MOST_OF_BARE, rival == Row.JNA ? "< JNA" : "< JDK", "rounds");
        for (Row row : rows) {
            Samples samples = rounds.time(row.works());
            boolean nearBare = samples.ratio(Row.LIBRARY, Row.BARE) <= MOST_OF_BARE;
            boolean beforeRival = samples.ratio(Row.LIBRARY, rival) < 1;
            print("%-24s%17s%10s%17s%17s  %7s  %5s  %6d%s%n", row.name(),
                    cell(samples, Row.LIBRARY), micros(samples, Row.BARE), cell(samples, Row.JNA),
                    row.jdk() == null ? "-" : cell(samples, Row.JDK), verdict(nearBare, samples),
                    verdict(beforeRival, samples), samples.count(), samples.few() ? " few" : "");
        }
    }

    private static String cell(Samples samples, int work) {
        return String.format(
                Locale.ROOT, "%s (%.2f)", micros(samples, work), samples.ratio(work, Row.BARE));
    }

    private static String micros(Samples samples, int work) {
        double micros = samples.median(work) / 1000;
        return String.format(Locale.ROOT, micros < 10_000 ? "%.2f" : "%.0f", micros);
    }

    /** What the library adds to the system's time; of a list, each item's share counts. */
    void ownCost(String group, List<Row> rows) throws Exception {
        print("%n%s: the library's own nanoseconds, the system answering at once%n%n", group);
        print("%-24s%16s%9s  %6s%n", "", "a call", "an item", "< " + (int) MOST_OWN_NANOS);
        try (StandIns standIns = new StandIns()) {
            for (Row row : rows) {
                Samples samples = rounds.time(List.of(row.library()));
                double call = samples.median(Row.LIBRARY);
                double item = call / row.items();
                print("%-24s%16.0f%9.0f  %6s%n", row.name(), call, item,
                        verdict(item < MOST_OWN_NANOS, samples));
            }
        }
    }

    void close() {
        double seconds = (System.nanoTime() - start) / 1e9;
        print("%n%d aims missed, %d of them in rows with few rounds; %.0f s%n", missed,
                missedWithFewRounds, seconds);
    }

    private String verdict(boolean reached, Samples samples) {
        missed += reached ? 0 : 1;
        missedWithFewRounds += !reached && samples.few() ? 1 : 0;
        return reached ? "pass" : "MISS";
    }

    private void print(String format, Object... arguments) {
        out.printf(Locale.ROOT, format, arguments);
    }
}
