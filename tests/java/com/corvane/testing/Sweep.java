package com.corvane.testing;

import com.corvane.wizard.service.ServiceException;
import java.util.ArrayList;
import java.util.List;
import java.util.regex.Pattern;
import java.util.stream.Collectors;
import java.util.stream.Stream;

/**
 * A scene that lets every call of its native fail, one after the other: those of Windows, of the heap and
 * of JNI. Each fails with an error that no code expects (1450). After it Java sees exactly one exception
 * for that error, with nothing but 0 or an empty text beside it; only clean-up and raising follow;
 * everything is closed, no rule of JNI is broken, and what the native works on is as before or as after the
 * good call. Where a native promises otherwise, its scene has rules in place of that.
 */
final class Sweep {

    static final String KEYWORD = "sweep ";

    /** What holds where no scene says otherwise. The C++ runtime keeps a reserve for the exceptions themselves. */
    private static final List<Rule> ALWAYS = rules("malloc|calloc|realloc => unexpected"
            + "; malloc|calloc|realloc => good -> .*"
            + "; GetVersionExA 156 => good -> .*"
            + "; FormatMessage[AW]|GetSystemDirectoryA|LoadLibraryExA => lost"
            + "; WideCharToMultiByte => error 1113"
            + "; MultiByteToWideChar => error 1113 or lost"
            + "; CoCreateInstance|I\\w+::.*|SHGetSpecialFolderLocation => error 2147943850"
            + "; (Call|New|FindClass|Get(Byte|Method|Object|Static|String)|Set(Byte|Object))\\w* => thrown");
    private static final List<Rule> OTHERWISE = rules(".* => error 1450");

    /** What may follow a failure: closing, asking for the reason, and raising. */
    private static final Pattern CLEAN_UP = Pattern.compile("(RegCloseKey|CloseHandle|FreeLibrary|LocalFree|FindClose"
            + "|UnmapViewOfFile|CloseServiceHandle|UnlockServiceDatabase"
            + "|FreeSid|Lsa(FreeMemory|NtStatusToWinError)|NetApiBufferFree"
            + "|IMalloc::Free|I\\w+::Release|free|[GS]etLastError|RtlNtStatusToDosError|GetACP"
            + "|GetVersionExA|FormatMessage[AW]|MultiByteToWideChar|WideCharToMultiByte|malloc|calloc|realloc"
            + "|SetErrorMode [0-5]|SHGetMalloc|SetFileAttributes[AW] ~.\\w+ 33|AdjustTokenPrivileges 0 0 x\\w{24}0{8}"
            + "|Release\\w+|Delete(Local|Global)Ref|Exception\\w+|GetMethodID (<init>|setSeverity)|NewString|NewObjectV"
            + "|CallVoidMethodV|FindClass com/corvane/wizard/service/ServiceException|Throw)( .*)?");

    /** {@code CALL => OUTCOME or OUTCOME -> FALLBACK}: when a call that begins so fails, one of these comes of it. */
    private record Rule(Pattern when, String outcomes, Pattern fallback) {

        static Rule of(String text) {
            String[] sides = text.split(" => ", 2);
            String[] parts = sides[1].split(" -> ", 2);
            return new Rule(begins(sides[0]), parts[0], parts.length == 1 ? null : begins(parts[1]));
        }

        private static Pattern begins(String call) {
            return Pattern.compile("(?:" + call + ")(?: .*)?");
        }
    }

    private final Scene scene;
    private final Stage stage;
    private final Windows system;
    private final String code;
    private final String call;
    private final List<Rule> rules;
    private final List<String> differences = new ArrayList<>();
    private String good;
    private String before;
    private String after;

    /** Of a scene that begins {@code sweep CODE NATIVE}; the code is "unexpected" for a native that has none. */
    Sweep(Scene scene, Windows system) {
        this.scene = scene;
        this.system = system;
        stage = scene.stage;
        String[] words = scene.steps.get(0).split(" ", 3);
        code = words[1];
        call = words[2];
        rules = rules(scene.clause("after"));
    }

    private static List<Rule> rules(String texts) {
        return Stream.of(texts.split("; +")).filter(text -> !text.isEmpty()).map(Rule::of).toList();
    }

    List<String> differences() throws Exception {
        run(0);
        good = run(0);
        after = state();
        int calls = Hooks.failable();
        note("the good call", false);
        if (calls == 0) {
            differences.add("no call could fail");
        }
        scene.prepare(system);
        before = state();
        runEach(calls);
        return differences.isEmpty() ? differences
                : Stream.concat(Stream.of("the good call came to " + good), differences.stream()).toList();
    }

    /** The n-th of all calls fails, or none for 0. */
    private String run(int nth) throws Exception {
        scene.prepare(system);
        Hooks.fail(Hooks.ANY, nth, 0, false);
        Native action = new Native(call, stage);
        Hooks.arm();
        String outcome = action.outcome();
        Hooks.disarm();
        return outcome;
    }

    /** The folder, the key, and what the calls behind "then" come to. */
    private String state() {
        return stage.state() + scene.steps.stream().skip(1).map(step -> new Native(step, stage).outcome())
                .collect(Collectors.joining(", "));
    }

    private void runEach(int count) throws Exception {
        for (int nth = 1; nth <= count; ++nth) {
            String outcome = run(nth);
            String run = "call " + nth + " of " + count;
            int at = Hooks.failed();
            if (at < 0) {
                differences.add(run + " did not come");
            } else {
                judge(run, outcome, Calls.shown(stage), at);
            }
        }
    }

    private void judge(String call, String outcome, List<String> calls, int at) {
        String failed = calls.get(at);
        String run = call + " fails, " + failed;
        List<String> work = calls.stream().skip(at + 1L).filter(later -> !CLEAN_UP.matcher(later).matches()).toList();
        if (!isRight(outcome, failed, work.isEmpty() ? null : work.get(0))) {
            differences.add(run + ": " + outcome + "; and then " + work.stream().limit(3).toList());
        }
        note(run, true);
        String state = state();
        if (!isRightState(outcome + " / " + failed, state)) {
            differences.add(run + ": " + outcome + ", and left this:\n" + state);
        }
    }

    private void note(String run, boolean mayEndEarly) {
        List<String> complaints = new ArrayList<>(Hooks.each(Hooks.complaints()));
        complaints.removeIf(complaint -> mayEndEarly && complaint.startsWith("prepared in vain"));
        if (scene.has("calls")) {
            complaints.addAll(new Calls(scene.clause("calls"), system, stage).differences(mayEndEarly));
        }
        complaints.forEach(complaint -> differences.add(run + ": " + complaint));
    }

    /** The rules of the scene count before those for all; of several for a call, one must hold. */
    private boolean isRight(String outcome, String failed, String next) {
        return Stream.of(rules, ALWAYS, OTHERWISE)
                .map(rules -> rules.stream().filter(rule -> rule.when.matcher(failed).matches()).toList())
                .filter(rules -> !rules.isEmpty()).findFirst().orElseThrow().stream()
                .anyMatch(rule -> (next == null || rule.fallback != null && rule.fallback.matcher(next).matches())
                        && Stream.of(rule.outcomes.split(" or ")).anyMatch(allowed -> comes(allowed, outcome, failed)));
    }

    private boolean comes(String allowed, String outcome, String failed) {
        String value = scene.has("beside") ? scene.clause("beside") : "''";
        String beside = "(, (" + value + "))?";
        String unexpected = ServiceException.UNEXPECTED + " without a message" + beside;
        return switch (allowed.split(" ")[0]) {
            case "good" -> outcome.equals(good);
            case "lost" -> outcome.equals(good) || outcome.equals(good.replaceFirst("error \\d+", "error 0"));
            case "thrown" -> outcome.endsWith(": " + failed.split(" ")[0])
                    && Hooks.returned().toString().matches("(" + value + ")?");
            case "unexpected" -> outcome.matches(unexpected);
            case "error" -> outcome.matches(code.equals("unexpected") ? unexpected
                    : code + " " + allowed + (allowed.contains(", ") ? "" : beside));
            default -> outcome.matches(allowed);
        };
    }

    /** {@code OUTCOME / CALL => STATE}: all must hold that are for this outcome after the failure of this call. */
    private boolean isRightState(String when, String state) {
        if (!scene.has("state")) {
            return state.equals(before) || state.equals(after);
        }
        List<String[]> truths = Stream.of(scene.clause("state").split("; +")).map(truth -> truth.split(" => ", 2))
                .filter(sides -> when.matches(sides[0])).toList();
        return !truths.isEmpty() && truths.stream().allMatch(sides -> state.matches("(?s)" + sides[1]));
    }
}
