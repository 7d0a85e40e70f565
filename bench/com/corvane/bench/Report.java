package com.corvane.bench;

import com.corvane.bench.Rounds.Samples;
import com.sun.jna.Native;
import java.io.PrintStream;
import java.util.List;
import java.util.Locale;

/** Measures rows and prints them as tables, each row with the aims that it reached or missed. */
final class Report {
    private static final double MOST_OF_REQUIRED = 1.06;
    private static final double MOST_OWN_NANOS = 500;

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
                after the other. A figure is the median of its rounds. The bare calls are those of
                Windows that do the work, in a loop of C++. The required ones are made by a plain
                native method and are all that the library must call besides: what brings texts and
                objects from Java and back, asks which Windows this is, lifts the read-only
                attribute, looks functions up, asks for sizes. A ratio in parentheses is the median of the
                rounds' own ratios, so it is not the quotient of two medians in the table.
                Aims of this library, pass or MISS:
                  <= 1.06       at most 1.06 times as long as the required calls
                  < JNA, < JDK  faster than JNA, or the JDK
                  <= 500        at most 500 nanoseconds of its own an item
                "few" marks rows that take too long for many rounds: the load of the machine moves
                their ratios and verdicts from run to run.
                """);
    }

    /**
     * Everybody's time for each row, with the ratio to the bare calls; this library's to the required
     * ones before it.
     *
     * @param rival the column of {@link Row#works()} that the library is to be faster than
     */
    void comparison(String group, String jdkName, List<Row> rows, int rival) throws Exception {
        print("%n%s: microseconds a call (times the required calls, times the bare calls)%n%n", group);
        print("%-24s%23s%17s%10s%17s%17s  %7s  %5s  %s%n", "", "this library", "required", "bare",
                "JNA", jdkName, "<= " + MOST_OF_REQUIRED, rival == Row.JNA ? "< JNA" : "< JDK",
                "rounds");
        for (Row row : rows) {
            Samples samples = rounds.time(row.works());
            boolean nearRequired = samples.ratio(Row.LIBRARY, Row.REQUIRED) <= MOST_OF_REQUIRED;
            boolean beforeRival = samples.ratio(Row.LIBRARY, rival) < 1;
            print("%-24s%23s%17s%10s%17s%17s  %7s  %5s  %6d%s%n", row.name(), libraryCell(samples),
                    cell(samples, Row.REQUIRED), micros(samples, Row.BARE),
                    cell(samples, Row.JNA), row.jdk() == null ? "-" : cell(samples, Row.JDK),
                    verdict(nearRequired, samples), verdict(beforeRival, samples), samples.count(), samples.few() ? " few" : "");
        }
    }

    private static String libraryCell(Samples samples) {
        return String.format(Locale.ROOT, "%s (%.2f, %.2f)", micros(samples, Row.LIBRARY),
                samples.ratio(Row.LIBRARY, Row.REQUIRED), samples.ratio(Row.LIBRARY, Row.BARE));
    }

    private static String cell(Samples samples, int work) {
        return String.format(
                Locale.ROOT, "%s (%.2f)", micros(samples, work), samples.ratio(work, Row.BARE));
    }

    private static String micros(Samples samples, int work) {
        double micros = samples.median(work) / 1000;
        return String.format(Locale.ROOT, micros < 10_000 ? "%.2f" : "%.0f", micros);
    }

    /**
     * What a call takes when the system answers at once, and how much of it is not in the required
     * calls; of a list, each item's share of that counts.
     */
    void ownCost(String group, List<Row> rows) throws Exception {
        print("%n%s: nanoseconds a call, the system answering at once%n%n", group);
        print("%-24s%16s%10s%9s%9s  %6s%n", "", "this library", "required", "own", "an item",
                "<= " + (int) MOST_OWN_NANOS);
        try (StandIns standIns = new StandIns()) {
            for (Row row : rows) {
                Samples samples = rounds.time(List.of(row.library(), row.required()));
                double own = samples.difference(Row.LIBRARY, Row.REQUIRED);
                double item = own / row.items();
                print("%-24s%16.0f%10.0f%9.0f%9.0f  %6s%n", row.name(),
                        samples.median(Row.LIBRARY), samples.median(Row.REQUIRED), own, item,
                        verdict(item <= MOST_OWN_NANOS, samples));
            }
        }
    }

    /** A line about the rows before it. */
    void tells(String line) {
        out.println();
        out.println(line);
    }

    /** Something that bounds a row above. */
    void alone(String name, Timed work) throws Exception {
        print("%n%s: %.0f microseconds%n", name, rounds.time(List.of(work)).median(0) / 1000);
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
