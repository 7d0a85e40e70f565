package com.corvane.testing;

import com.corvane.wizard.service.ServiceException;
import java.util.ArrayList;
import java.util.List;
import java.util.Set;
import java.util.concurrent.Callable;
import java.util.function.Consumer;
import java.util.function.Predicate;
import java.util.function.Supplier;
import org.junit.jupiter.api.DynamicTest;

/**
 * Lets every call that a native makes fail, one after the other: those of Windows, of the heap and of
 * JNI. After each, Java sees the right answer or exactly one exception, everything is closed, no rule of
 * JNI is broken, and what the native works on is in a state that is allowed: as before or as after the
 * good call, unless the row says otherwise.
 *
 * <p>A native joins with one line:
 * {@code sweep.add("keyExists", -100001, () -> registry.keyExists(3, KEY));}
 */
public final class FaultSweep {

    /** Their failure loses a text; only the text of a message may be lost. */
    private static final Set<String> CONVERSIONS = Set.of("WideCharToMultiByte", "MultiByteToWideChar");

    /** Their failure costs the text of a message, not the exception. */
    private static final Set<String> MESSAGES =
            Set.of("FormatMessageA", "FormatMessageW", "GetSystemDirectoryA", "LoadLibraryExA");

    /** Asked again in another way. */
    private static final Set<String> RETRIED = Set.of("GetVersionExA");

    /** A failed expansion is an empty text. */
    private static final Set<String> EXPANSIONS =
            Set.of("ExpandEnvironmentStringsA", "ExpandEnvironmentStringsW");

    private static final Set<String> HEAP = Set.of("malloc", "calloc", "realloc");
    private static final int ACCESS_DENIED = 5;
    private static final int NO_UNICODE_TRANSLATION = 1113;

    private static final Outcome NO_TEXT = new Outcome("", null);

    /** Whether an outcome is right after a function failed. */
    @FunctionalInterface
    public interface Judge {
        boolean accepts(String failed, Outcome outcome, String state);
    }

    /** One native, and what is different about it. */
    public static final class Row {

        private final String name;
        private final int code;
        private final Callable<?> call;
        private Consumer<Windows> plan = system -> {};
        private Judge judge = (failed, outcome, state) -> false;
        private Predicate<String> allowed = state -> false;

        private Row(String name, int code, Callable<?> call) {
            this.name = name;
            this.code = code;
            this.call = call;
        }

        /** Puts this in place before each run: an answer, or a failure that the native is to meet. */
        public Row meets(Consumer<Windows> plan) {
            this.plan = plan;
            return this;
        }

        /** Outcomes that are right too. */
        public Row accepts(Judge judge) {
            this.judge = judge;
            return this;
        }

        /** States that are allowed too. */
        public Row allows(Predicate<String> allowed) {
            this.allowed = allowed;
            return this;
        }
    }

    private final List<Row> rows = new ArrayList<>();
    private final Runnable prepare;
    private final Supplier<String> state;

    /** {@code prepare} brings about the state that each run starts from. */
    public FaultSweep(Runnable prepare, Supplier<String> state) {
        this.prepare = prepare;
        this.state = state;
    }

    /** A native, the code of its failures, and a call of it. */
    public Row add(String name, int code, Callable<?> call) {
        Row row = new Row(name, code, call);
        rows.add(row);
        return row;
    }

    public Row addVoid(String name, int code, Outcome.Action action) {
        return add(name, code, () -> {
            action.run();
            return null;
        });
    }

    /** A test for each native on each of these systems. */
    public List<DynamicTest> on(Windows... systems) {
        List<DynamicTest> tests = new ArrayList<>();
        for (Windows system : systems) {
            for (Row row : rows) {
                tests.add(DynamicTest.dynamicTest(row.name + " on " + system, () -> new Sweep(row, system).run()));
            }
        }
        return tests;
    }

    /** The sweep over one native on one system. */
    private final class Sweep {

        private final Row row;
        private final Windows system;
        private final List<String> complaints = new ArrayList<>();
        private Outcome good;
        private boolean expands;
        private String stateBefore;
        private String stateAfter;

        Sweep(Row row, Windows system) {
            this.row = row;
            this.system = system;
        }

        void run() {
            good = call(() -> {});
            good = call(() -> {});
            stateAfter = state.get();
            prepare.run();
            stateBefore = state.get();
            int win32 = Hooks.failable(false);
            int jni = Hooks.failable(true);
            expands = Call.all().stream().anyMatch(call -> EXPANSIONS.contains(call.name()));
            note("good run", TestBed.complaints());
            runEach(false, win32);
            runEach(true, jni);
            if (!complaints.isEmpty()) {
                throw new AssertionError("good: " + brief(good) + "\n" + String.join("\n", complaints));
            }
        }

        private void runEach(boolean jni, int count) {
            for (int nth = 1; nth <= count; ++nth) {
                int number = nth;
                Outcome outcome = call(() -> Hooks.failNth(jni, number, false));
                String failed = Hooks.failed();
                String run = (jni ? "JNI call " : "call ") + nth + " of " + count + ", " + failed;
                note(run, TestBed.complaints());
                if (failed.isEmpty() || !isRightAfter(jni, outcome, failed)) {
                    complaints.add(run + ": " + brief(outcome));
                }
                checkState(run);
            }
        }

        private Outcome call(Runnable plan) {
            prepare.run();
            Hooks.reset();
            system.use();
            row.plan.accept(system);
            plan.run();
            Hooks.arm();
            Outcome outcome = Outcome.of(row.call);
            Hooks.disarm();
            return outcome;
        }

        private boolean isRight(Outcome outcome, String failed) {
            if (CONVERSIONS.contains(failed)) {
                return tellsLostText(outcome)
                        || good.isException() && outcome.hasCode(row.code)
                        || expands && outcome.equals(NO_TEXT);
            }
            if (MESSAGES.contains(failed)) {
                return outcome.hasCode(row.code);
            }
            if (RETRIED.contains(failed)) {
                return outcome.equals(good);
            }
            if (EXPANSIONS.contains(failed)) {
                return outcome.equals(NO_TEXT);
            }
            if (HEAP.contains(failed)) {
                // The C++ runtime keeps a reserve for the exceptions themselves.
                return outcome.isUnexpectedFailure() || outcome.equals(good);
            }
            return outcome.isFailure(row.code, ACCESS_DENIED);
        }

        /** A native without a code of its own gives no reason. */
        private boolean tellsLostText(Outcome outcome) {
            return row.code == ServiceException.UNEXPECTED
                    ? outcome.isUnexpectedFailure()
                    : outcome.isFailure(row.code, NO_UNICODE_TRANSLATION);
        }

        private boolean isRightAfter(boolean jni, Outcome outcome, String failed) {
            return (jni ? isRightAfterJni(outcome, failed) : isRight(outcome, failed))
                    || row.judge.accepts(failed, outcome, state.get());
        }

        /** The injected error names the function as its message. */
        private boolean isRightAfterJni(Outcome outcome, String failed) {
            boolean injected = outcome.isException() && failed.equals(outcome.thrown().getMessage());
            return injected || good.isException() && outcome.equals(good);
        }

        private void checkState(String run) {
            String now = state.get();
            if (!now.equals(stateBefore) && !now.equals(stateAfter) && !row.allowed.test(now)) {
                complaints.add(run + " left this:\n" + now);
            }
        }

        private static String brief(Outcome outcome) {
            String text = outcome.toString();
            return text.length() <= 200 ? text : text.substring(0, 200) + "...";
        }

        private void note(String run, List<String> found) {
            found.forEach(complaint -> complaints.add(run + ": " + complaint));
        }
    }
}
