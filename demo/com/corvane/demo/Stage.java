package com.corvane.demo;

import com.corvane.wizard.service.ServiceException;
import java.io.PrintStream;
import java.util.Locale;
import java.util.Objects;
import java.util.concurrent.TimeUnit;

/**
 * Where chapters play: runs their steps, shows what was done, how long it took and what came back,
 * and keeps count of the steps that came out otherwise than expected.
 */
final class Stage {
    /** A step whose answer matters. */
    interface Question {
        Object ask() throws Exception;
    }

    /** A step that is done when it returns. */
    interface Deed {
        void act() throws Exception;
    }

    /** A step or an answer that is longer: then the answer gets lines of its own. */
    private static final int STEP_WIDTH = 50;
    private static final int ANSWER_WIDTH = 32;

    /** A line about a step that is longer is cut. */
    private static final int LINE_WIDTH = 132;

    private static final String CUT = "...";

    /** So that nobody takes a failure for passed over. */
    private static final String AS_IT_MUST_BE = ", as it must be";

    /** From one line of an answer to the next. */
    private static final String NEXT_LINE = System.lineSeparator() + "         ";

    private final PrintStream out;
    private final long start = System.nanoTime();
    private int steps;
    private int failed;

    Stage(PrintStream out) {
        this.out = out;
    }

    void play(Chapter chapter) {
        out.printf("%n== %s ==%n", chapter.name());
        try {
            chapter.run(this);
        } catch (Exception e) {
            report(false, "the chapter goes on to its end", 0, e.toString());
        }
    }

    /** A heading for the steps that follow. */
    void scene(String title) {
        out.printf("%n %s%n", title);
    }

    /** A line about the scene or the step before it. */
    void tells(String line) {
        out.println("      | " + (line.length() <= LINE_WIDTH ? line
                : line.substring(0, LINE_WIDTH - CUT.length()) + CUT));
    }

    /** A step that must return normally. */
    void does(String what, Deed deed) {
        Outcome outcome = Outcome.of(() -> {
            deed.act();
            return null;
        });
        boolean good = outcome.error == null;
        report(good, what, outcome.nanos, good ? "" : outcome.text());
    }

    /** A step that must answer {@code expected}; arrays are compared by their elements. */
    void gives(String what, Object expected, Question question) {
        Outcome outcome = Outcome.of(question);
        boolean good = outcome.error == null && Objects.deepEquals(expected, outcome.answer);
        String text = good ? outcome.text() : outcome.text() + ", expected " + Text.of(expected);
        report(good, what, outcome.nanos, text);
    }

    /** A step that must fail with {@code code}; shows the failure as Java sees it. */
    void refuses(String what, int code, Deed deed) {
        Outcome outcome = Outcome.of(() -> {
            deed.act();
            return "no failure";
        });
        reportRefusal(isFailure(outcome.error, code), what, outcome);
    }

    /** The same; {@code reason} is the system's number of the failure. */
    void refuses(String what, int code, int reason, Deed deed) {
        Outcome outcome = Outcome.of(() -> {
            deed.act();
            return "no failure";
        });
        boolean good = isFailure(outcome.error, code)
                && ((ServiceException) outcome.error).getReason() == reason;
        reportRefusal(good, what, outcome);
    }

    private void reportRefusal(boolean good, String what, Outcome outcome) {
        report(good, what, outcome.nanos, outcome.text() + (good ? AS_IT_MUST_BE : ""));
    }

    private static boolean isFailure(Throwable error, int code) {
        return error instanceof ServiceException && ((ServiceException) error).getCode() == code;
    }

    /** Runs one of the system's own tools, which must succeed, and shows what it prints. */
    String run(String... command) {
        return run(0, command);
    }

    /** Runs one of the system's own tools, which must exit with {@code exitCode}. */
    String run(int exitCode, String... command) {
        SystemTool tool = new SystemTool(command);
        Outcome outcome = Outcome.of(tool::run);
        boolean good = Objects.equals(exitCode, outcome.answer);
        String text = outcome.error == null ? "exit code " + outcome.text() : outcome.text();
        String hint = good && exitCode != 0 ? AS_IT_MUST_BE : "";
        report(good, String.join(" ", command), outcome.nanos, text + hint);
        tool.lines().forEach(this::tells);
        return tool.output();
    }

    boolean allAsExpected() {
        return failed == 0;
    }

    int steps() {
        return steps;
    }

    /** Closes with the count of the steps. */
    void close() {
        double seconds = (System.nanoTime() - start) / 1e9;
        String verdict = failed == 0 ? "all as expected" : failed + " NOT AS EXPECTED";
        out.printf(Locale.ROOT, "%n%d steps, %s, %.1f s%n", steps, verdict, seconds);
    }

    private void report(boolean good, String what, long nanos, String answer) {
        steps++;
        failed += good ? 0 : 1;
        out.printf("  %s  %8s  ", good ? "ok" : "!!", milliseconds(nanos));
        boolean isRow = what.length() <= STEP_WIDTH && answer.length() <= ANSWER_WIDTH;
        if (answer.isEmpty()) {
            out.println(what);
        } else if (isRow && !answer.contains("\n")) {
            out.printf("%-" + STEP_WIDTH + "s  %s%n", what, answer);
        } else {
            out.printf("%s%n      -> %s%n", what, answer.replace("\n", NEXT_LINE));
        }
    }

    private static String milliseconds(long nanos) {
        long whole = TimeUnit.NANOSECONDS.toMillis(nanos);
        return (whole < 1 ? "<1" : "" + whole) + " ms";
    }

    /** What one step brought: an answer or an error, and the time until then. */
    private static final class Outcome {
        private Object answer;
        private Throwable error;
        private long nanos;

        /** Errors are caught too: a native that is missing is a failed step, not the end. */
        static Outcome of(Question question) {
            Outcome outcome = new Outcome();
            long start = System.nanoTime();
            try {
                outcome.answer = question.ask();
            } catch (Exception | LinkageError e) {
                outcome.error = e;
            }
            outcome.nanos = System.nanoTime() - start;
            return outcome;
        }

        String text() {
            return error == null ? Text.of(answer) : Text.of(error);
        }
    }
}
