package com.corvane.testing;

import java.util.ArrayList;
import java.util.List;
import java.util.Set;
import java.util.concurrent.Callable;
import org.junit.jupiter.api.DynamicTest;

/**
 * Lets every call that a native makes fail, one after the other: those of Windows, of the heap and of
 * JNI. After each, Java sees the right answer or exactly one exception, everything is closed, no rule of
 * JNI is broken, and the registry is as before or as after the good call.
 *
 * <p>A native joins with one line:
 * {@code sweep.add("keyExists", -100001, () -> registry.keyExists(3, KEY));}
 */
public final class FaultSweep {

    /** Their failure loses a text; only the text of a message may be lost. */
    private static final Set<String> CONVERSIONS = Set.of("WideCharToMultiByte", "MultiByteToWideChar");

    /** Their failure costs the text of a message, not the exception. */
    private static final Set<String> MESSAGES = Set.of("FormatMessageA", "FormatMessageW", "LoadLibraryExA");

    /** Asked again in another way. */
    private static final Set<String> RETRIED = Set.of("GetVersionExA");

    /** A failed expansion is an empty text. */
    private static final Set<String> EXPANSIONS =
            Set.of("ExpandEnvironmentStringsA", "ExpandEnvironmentStringsW");

    private static final Set<String> HEAP = Set.of("malloc", "calloc", "realloc");
    private static final int ACCESS_DENIED = 5;
    private static final int NO_UNICODE_TRANSLATION = 1113;

    private static final Outcome NO_TEXT = new Outcome("", null);

    private record Row(String name, int code, Callable<?> call) {}

    private final List<Row> rows = new ArrayList<>();
    private final Runnable prepare;

    /** {@code prepare} brings the registry into the state that each run starts from. */
    public FaultSweep(Runnable prepare) {
        this.prepare = prepare;
    }

    /** A native, the code of its failures, and a call of it. */
    public void add(String name, int code, Callable<?> call) {
        rows.add(new Row(name, code, call));
    }

    public void addVoid(String name, int code, Outcome.Action action) {
        add(name, code, () -> {
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
            stateAfter = RawRegistry.dump(RawRegistry.KEY);
            prepare.run();
            stateBefore = RawRegistry.dump(RawRegistry.KEY);
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
                Outcome outcome = call(() -> Hooks.failNth(jni, number));
                String failed = Hooks.failed();
                String run = (jni ? "JNI call " : "call ") + nth + " of " + count + ", " + failed;
                note(run, TestBed.complaints());
                if (failed.isEmpty() || !(jni ? isRightAfterJni(outcome, failed) : isRight(outcome, failed))) {
                    complaints.add(run + ": " + brief(outcome));
                }
                checkState(run);
            }
        }

        private Outcome call(Runnable plan) {
            prepare.run();
            Hooks.reset();
            system.use();
            plan.run();
            Hooks.arm();
            Outcome outcome = Outcome.of(row.call);
            Hooks.disarm();
            return outcome;
        }

        private boolean isRight(Outcome outcome, String failed) {
            if (CONVERSIONS.contains(failed)) {
                return outcome.isFailure(row.code, NO_UNICODE_TRANSLATION)
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

        /** The injected error names the function as its message. */
        private boolean isRightAfterJni(Outcome outcome, String failed) {
            boolean injected = outcome.isException() && failed.equals(outcome.thrown().getMessage());
            return injected || good.isException() && outcome.equals(good);
        }

        /** A tree is deleted key by key, so a failure may leave a part of it. */
        private void checkState(String run) {
            String state = RawRegistry.dump(RawRegistry.KEY);
            boolean exempt = row.name.startsWith("deleteKey");
            if (!exempt && !state.equals(stateBefore) && !state.equals(stateAfter)) {
                complaints.add(run + " left the registry as\n" + state);
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
