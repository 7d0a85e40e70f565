package com.corvane.testing;

import com.corvane.testing.Words.Word;
import com.corvane.wizard.service.ServiceException;
import java.io.IOException;
import java.io.UncheckedIOException;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;
import java.util.function.Supplier;
import java.util.regex.Pattern;
import java.util.stream.Stream;
import org.junit.jupiter.api.DynamicTest;

/**
 * Lets every call that a native makes fail, one after the other: those of Windows, of the heap and of
 * JNI. Each fails with an error that no code expects (1450). After it Java sees exactly one exception for
 * that error, with nothing but 0 or an empty text beside it; only clean-up and raising follow; everything
 * is closed, no rule of JNI is broken, and what the native works on is as before or as after the good call.
 *
 * <p>A native joins with one line: {@code sweep.add("keyExists HKCU KEY", -100001);}. Where it does
 * otherwise, rules take the place of that: {@code after("GetProcAddress SetFileSecurityW => error 127")} for
 * calls that begin so. After {@code =>} is what comes of it, as scenes write it, or several with "or" between:
 * {@code good} is what came when nothing failed, {@code lost} the same without the message's text,
 * {@code error N} the native's code with that error, {@code unexpected} the failure that nobody expected,
 * {@code thrown} the Java error of the JNI call that failed, {@code a number} any. After {@code then} is the
 * fallback: the call with which the work goes on. Of several rules for a call, one must hold.
 */
public final class FaultSweep {

    /** What holds where no row says otherwise. The C++ runtime keeps a reserve for the exceptions themselves. */
    private static final List<Rule> ALWAYS = rules(
            "malloc|calloc|realloc => unexpected",
            "malloc|calloc|realloc => good then .*",
            "GetVersionExA 156 => good then .*",
            "FormatMessage[AW]|GetSystemDirectoryA|LoadLibraryExA => lost",
            "WideCharToMultiByte => error 1113",
            "MultiByteToWideChar => error 1113 or lost",
            "CoCreateInstance|I\\w+::.*|SHGetSpecialFolderLocation => error 2147943850");
    private static final List<Rule> OTHERWISE = rules(".* => error 1450");
    private static final List<Rule> IN_JNI = rules(".* => thrown");

    /** What may follow a failure: closing, asking for the reason, and raising. */
    private static final Pattern CLEAN_UP = Pattern.compile("(RegCloseKey|CloseHandle|FreeLibrary|LocalFree|FindClose"
            + "|UnmapViewOfFile|FreeSid|IMalloc::Free|I\\w+::Release|free|[GS]etLastError|RtlNtStatusToDosError|GetACP"
            + "|GetVersionExA|FormatMessage[AW]|MultiByteToWideChar|WideCharToMultiByte|malloc|calloc|realloc"
            + "|SetErrorMode [0-5]|SHGetMalloc|SetFileAttributes[AW] ~\\\\\\w+ 33|AdjustTokenPrivileges 0 0 x\\w{24}0{8}"
            + "|Release\\w+|Delete(Local|Global)Ref|Exception\\w+|GetMethodID (<init>|setSeverity)|NewString|NewObjectV"
            + "|CallVoidMethodV|FindClass com/corvane/wizard/service/ServiceException|Throw)( .*)?");

    /** What may come of it when a call that begins with {@code call} fails, and with what the work goes on. */
    private record Rule(Pattern call, List<String> outcomes, Pattern fallback) {

        static Rule of(String text) {
            String[] sides = text.split(" => ", 2);
            String[] parts = sides[1].split(" then ", 2);
            return new Rule(Pattern.compile("(?:" + sides[0] + ")(?: .*)?"), List.of(parts[0].split(" or ")),
                    parts.length == 1 ? null : Pattern.compile("(?:" + parts[1] + ")(?: .*)?"));
        }

        boolean isFor(String failed) {
            return call.matcher(failed).matches();
        }
    }

    /** Whether an outcome, and what there is now, are right after a call failed. */
    @FunctionalInterface
    public interface Truth {
        boolean of(String failed, String outcome, String state);
    }

    /** One native, and what is different about it. */
    public static final class Row {

        private final String name;
        private final int code;
        private final Native call;
        private final List<Word> plan;
        private final List<Rule> rules = new ArrayList<>();
        private String beside = "''";
        private Truth truth;

        private Row(String name, int code, Native call, List<Word> plan) {
            this.name = name;
            this.code = code;
            this.call = call;
            this.plan = plan;
        }

        /** Rules for this row. */
        public Row after(String... rules) {
            this.rules.addAll(rules(rules));
            return this;
        }

        /** What may be returned beside an exception, too. */
        public Row beside(String pattern) {
            beside = pattern;
            return this;
        }

        /** What is asked of every outcome and state, in place of a state as before or as after the good call. */
        public Row tells(Truth truth) {
            this.truth = truth;
            return this;
        }
    }

    private final List<Row> rows = new ArrayList<>();
    private final Runnable prepare;
    private final Supplier<String> state;
    private final Stage stage = new Stage("~");

    /** {@code prepare} brings about the state that each run starts from. */
    public FaultSweep(Runnable prepare, Supplier<String> state) {
        this.prepare = prepare;
        this.state = state;
    }

    /** In a folder with these files; its state is what is in it and what waits for the next start. */
    public FaultSweep(String files) {
        prepare = () -> {
            try {
                stage.set(Words.of(files), false, "");
            } catch (IOException failure) {
                throw new UncheckedIOException(failure);
            }
        };
        state = () -> stage.files() + (stage.later().isEmpty() ? "" : " later: " + stage.later());
    }

    private static List<Rule> rules(String... texts) {
        return Stream.of(texts).map(Rule::of).toList();
    }

    /** A native's call as a scene writes it, perhaps with what Windows does meanwhile, and its code. */
    public Row add(String line, int code) {
        List<Word> words = Words.of(line);
        int with = 0;
        while (with < words.size() && !words.get(with).is("with")) {
            ++with;
        }
        return add(line, code, new Native(words.get(0).text(), Native.arguments(line, words.subList(1, with)), stage),
                words.subList(Math.min(with + 1, words.size()), words.size()));
    }

    /** Something else that calls the library. */
    public Row add(String name, int code, Outcome.Action action) {
        return add(name, code, new Native(action), List.of());
    }

    private Row add(String name, int code, Native call, List<Word> plan) {
        Row row = new Row(name, code, call, plan);
        rows.add(row);
        return row;
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
        private String good;
        private String stateBefore;
        private String stateAfter;

        Sweep(Row row, Windows system) {
            this.row = row;
            this.system = system;
        }

        void run() {
            call(() -> {});
            good = call(() -> {});
            stateAfter = state.get();
            int win32 = Hooks.failable(false);
            int jni = Hooks.failable(true);
            note("good run", TestBed.complaints());
            note("good run, prepared in vain", List.of(Hooks.unused()));
            prepare.run();
            stateBefore = state.get();
            runEach(false, win32);
            runEach(true, jni);
            Hooks.reset();
            if (!complaints.isEmpty()) {
                throw new AssertionError("good: " + good + "\n" + String.join("\n", complaints));
            }
        }

        private void runEach(boolean jni, int count) {
            for (int nth = 1; nth <= count; ++nth) {
                int number = nth;
                String outcome = call(() -> Hooks.failNth(jni, number, false));
                List<String> calls = Arrays.stream(Hooks.shownCalls())
                        .map(call -> stage.shown(call.replace('\t', ' '))).toList();
                int at = Hooks.failed();
                String run = (jni ? "JNI call " : "call ") + nth + " of " + count + ", "
                        + (at < 0 ? "did not come" : calls.get(at));
                note(run, TestBed.complaints());
                if (at < 0 || !isRight(jni, outcome, calls.get(at), calls.subList(at + 1, calls.size()))) {
                    complaints.add(run + ": " + brief(outcome) + "; and then " + calls.subList(at + 1, calls.size())
                            .stream().filter(Sweep::isWork).limit(3).toList());
                }
                checkState(run, at < 0 ? "" : calls.get(at), outcome);
            }
        }

        private String call(Runnable plan) {
            prepare.run();
            Hooks.reset();
            system.use();
            Plan.prepare(Words.parts(row.plan, ";"), system, stage);
            plan.run();
            Hooks.arm();
            String outcome = row.call.outcome(stage);
            Hooks.disarm();
            return outcome;
        }

        private static boolean isWork(String call) {
            return !CLEAN_UP.matcher(call).matches();
        }

        private boolean isRight(boolean jni, String outcome, String failed, List<String> later) {
            return Stream.of(row.rules, jni ? IN_JNI : ALWAYS, OTHERWISE)
                    .map(rules -> rules.stream().filter(rule -> rule.isFor(failed)).toList())
                    .filter(rules -> !rules.isEmpty()).findFirst().orElseThrow()
                    .stream().anyMatch(rule -> holds(rule, outcome, failed, later));
        }

        private boolean holds(Rule rule, String outcome, String failed, List<String> later) {
            String next = later.stream().filter(Sweep::isWork).findFirst().orElse(null);
            boolean follows = next == null || rule.fallback != null && rule.fallback.matcher(next).matches();
            return follows && rule.outcomes.stream().anyMatch(allowed -> comes(allowed, outcome, failed));
        }

        private boolean comes(String allowed, String outcome, String failed) {
            boolean plain = row.code == ServiceException.UNEXPECTED;
            return switch (allowed.split(" ", 2)[0]) {
                case "good" -> outcome.equals(good);
                case "unexpected" -> isFailure(outcome, ServiceException.UNEXPECTED + " without a message", false);
                case "thrown" -> outcome.endsWith(": " + failed.split(" ")[0]) && hasNothingBeside();
                case "lost" -> outcome.equals(good) || outcome.equals(good.replaceFirst("error \\d+", "error 0"));
                case "error" -> isFailure(outcome, plain ? row.code + " without a message" : row.code + " " + allowed,
                        allowed.contains(", "));
                default -> outcome.equals(allowed) || allowed.equals("a number") && outcome.matches("\\d+");
            };
        }

        /** {@code beside}: whether the value that is returned beside it is a part of {@code wanted}. */
        private boolean isFailure(String outcome, String wanted, boolean beside) {
            return outcome.equals(wanted) || !beside && outcome.startsWith(wanted + ", ")
                    && outcome.substring(wanted.length() + 2).matches(row.beside);
        }

        private boolean hasNothingBeside() {
            return Hooks.returned().isEmpty() || Hooks.returned().matches(row.beside);
        }

        private void checkState(String run, String failed, String outcome) {
            String now = state.get();
            if (row.truth == null ? !now.equals(stateBefore) && !now.equals(stateAfter)
                    : !row.truth.of(failed, outcome, now)) {
                complaints.add(run + ": " + brief(outcome) + ", and left this:\n" + now);
            }
        }

        private static String brief(String text) {
            return text.length() <= 200 ? text : text.substring(0, 200) + "...";
        }

        private void note(String run, List<String> found) {
            found.forEach(complaint -> complaints.add(run + ": " + complaint));
        }
    }
}
