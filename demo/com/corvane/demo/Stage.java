package com.corvane.demo;

import com.corvane.wizard.service.ServiceException;
import java.io.PrintStream;
import java.util.Locale;
import java.util.Objects;

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

    /** An answer longer than this gets a line of its own. */
    private static final int ANSWER_WIDTH = 33;

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
        out.println("      | " + line);
    }

    /** A step that must return normally. */
    void does(String what, Deed deed) {
        Outcome outcome = Outcome.of(() -> {
            deed.act();
            return "";
        });
        report(outcome.error == null, what, outcome.nanos, outcome.text());
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
        report(isFailure(outcome.error, code), what, outcome.nanos, outcome.text());
    }

    /** The same; the message must end in the system's number of the failure, too. */
    void refuses(String what, int code, int reason, Deed deed) {
        Outcome outcome = Outcome.of(() -> {
            deed.act();
            return "no failure";
        });
        boolean good = isFailure(outcome.error, code)
                && ("" + outcome.error.getMessage()).endsWith("(" + reason + ")");
        report(good, what, outcome.nanos, outcome.text());
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
        report(good, String.join(" ", command), outcome.nanos, text);
        tool.lines().forEach(this::tells);
        return tool.output();
    }

    boolean allAsExpected() {
        return failed == 0;
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
        String mark = good ? "ok" : "!!";
        String gap = answer.length() > ANSWER_WIDTH ? System.lineSeparator() + "      -> " : "  ";
        String line = String.format(Locale.ROOT, "  %s  %-50s %7.2f ms", mark, what, nanos / 1e6);
        out.println(answer.isEmpty() ? line : line + gap + answer);
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
