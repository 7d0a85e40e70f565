package com.corvane.testing;

import com.corvane.testing.Words.Word;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;
import java.util.Set;
import java.util.regex.Pattern;
import java.util.stream.Collectors;
import java.util.stream.IntStream;

/** One scene: a call, perhaps more that follow it, what Windows does meanwhile, and what must come of it. */
final class Scene {

    /** The words that begin a clause. */
    static final Set<String> CLAUSES = Set.of("with", "calls", "files", "leaves", "later", "open", "registry", "says",
            "waiting", "then");

    /** Calls that tell a reader nothing. */
    private static final Pattern HOUSEKEEPING =
            Pattern.compile("^([GS]etLastError|malloc|calloc|realloc|free|LocalFree|ExceptionCheck|DeleteLocalRef"
                    + "|GetString(Chars|Length)|ReleaseStringChars|GetACP|WideCharToMultiByte|MultiByteToWideChar)\\b");

    private static final Map<String, String> GROUPS = Map.of("9x", "W98", "NT", "W10", "all",
            Arrays.stream(Windows.values()).map(Enum::name).collect(Collectors.joining(" ")));

    /** A call of a native and what it must come to. */
    private record Step(String text, String name, List<String> arguments, String outcome) {}

    private final String place;
    private final String line;
    private final List<String> systems;
    private final List<Step> steps = new ArrayList<>();
    private final Map<String, List<Word>> clauses = new LinkedHashMap<>();
    private final List<String> differences = new ArrayList<>();

    /** {@code given} are the clauses that hold for all scenes around it. */
    Scene(String place, String line, Map<String, String> given) {
        this.place = place;
        this.line = line;
        List<Word> words = Words.of(line);
        int start = 0;
        if (line.startsWith("[")) {
            start = IntStream.range(0, words.size()).filter(at -> words.get(at).text().endsWith("]")).findFirst()
                    .orElseThrow() + 1;
        }
        systems = systems(Words.raw(line, words.subList(0, start)));
        given.forEach((keyword, text) -> clauses.put(keyword, Words.of(text)));
        parse(words.subList(start, words.size()));
    }

    private static List<String> systems(String named) {
        if (named.isEmpty()) {
            return List.of("W98", "W10");
        }
        return Arrays.stream(named.substring(1, named.length() - 1).split(" "))
                .flatMap(name -> Arrays.stream(GROUPS.getOrDefault(name, name).split(" "))).toList();
    }

    private void parse(List<Word> words) {
        String keyword = "then";
        List<Word> part = new ArrayList<>();
        for (int index = 0; index <= words.size(); ++index) {
            boolean ends = index == words.size();
            if (ends || !words.get(index).quoted() && CLAUSES.contains(words.get(index).text())) {
                take(keyword, part);
                keyword = ends ? "" : words.get(index).text();
                part = new ArrayList<>();
            } else {
                part.add(words.get(index));
            }
        }
    }

    private void take(String keyword, List<Word> part) {
        if (keyword.equals("then")) {
            steps.add(step(part));
        } else if (keyword.equals("with") && clauses.containsKey("with")) {
            List<Word> both = new ArrayList<>(clauses.get("with"));
            both.add(new Word(";", false, 0, 0));
            both.addAll(part);
            clauses.put("with", both);
        } else {
            clauses.put(keyword, part);
        }
    }

    private Step step(List<Word> words) {
        int arrow = IntStream.range(0, words.size()).filter(at -> words.get(at).is("=>")).findFirst()
                .orElseThrow(() -> new AssertionError(place + ": no => in " + line));
        return new Step(Words.raw(line, words.subList(0, arrow)), words.get(0).text(),
                Native.arguments(line, words.subList(1, arrow)),
                Words.raw(line, words.subList(arrow + 1, words.size())));
    }

    List<String> systems() {
        return systems;
    }

    String call() {
        return steps.stream().map(Step::text).collect(Collectors.joining(", "));
    }

    /** Plays it; what comes otherwise than the scene says is an error that says both. */
    void play(String name) throws Exception {
        differences.clear();
        Stage stage = new Stage(line);
        stage.set(clauses.getOrDefault("files", List.of()), clauses.containsKey("registry"), text("waiting"));
        Hooks.reset();
        Windows system = name.equals("unknown") ? null : Windows.valueOf(name);
        Windows family = system == null ? Windows.W10 : system;
        if (system == null) {
            Windows.useUnknown();
        } else {
            system.use();
        }
        String before = stage.files();
        List<Native> natives = steps.stream().map(step -> new Native(step.name(), step.arguments(), stage)).toList();
        Plan.prepare(Words.parts(clauses.getOrDefault("with", List.of()), ";"), family, stage);
        if (clauses.containsKey("says")) {
            compare("on the standard error stream", text("says"), StandardError.during(() -> call(natives, stage)));
        } else {
            call(natives, stage);
        }
        check(family, stage, before);
        String report = differences.isEmpty() ? "" : report(name, stage);
        Hooks.reset();
        if (!report.isEmpty()) {
            throw new AssertionError(report);
        }
    }

    private void call(List<Native> natives, Stage stage) {
        Hooks.arm();
        for (int index = 0; index < natives.size(); ++index) {
            Step step = steps.get(index);
            compare("outcome of " + step.text(), expected(step.outcome(), stage),
                    natives.get(index).outcome(stage) + natives.get(index).told());
        }
        Hooks.disarm();
    }

    /** As an outcome is shown: unquoted, when it is a text with blanks. */
    private static String expected(String outcome, Stage stage) {
        boolean quoted = outcome.length() > 2 && outcome.startsWith("'") && outcome.endsWith("'");
        return stage.shown(stage.real(quoted ? outcome.substring(1, outcome.length() - 1) : outcome));
    }

    private void check(Windows family, Stage stage, String before) {
        if (clauses.containsKey("calls")) {
            differences.addAll(new ExpectedCalls(clauses.get("calls"), family, stage).differences());
        }
        boolean leaves = clauses.containsKey("leaves");
        compare("files afterwards", leaves ? String.join(" ", texts("leaves").stream().sorted().toList()) : before,
                stage.files());
        compare("what waits for the next start", text("later"), stage.later());
        if (clauses.containsKey("open")) {
            compare("things left open", texts("open").get(0), Integer.toString(Hooks.leftOpen()));
        }
        for (String unused : Hooks.unused()) {
            differences.add("prepared in vain: " + unused);
        }
        differences.addAll(TestBed.complaints());
    }

    /** A clause as it stands, without quotes. */
    private String text(String keyword) {
        return Words.parts(clauses.getOrDefault(keyword, List.of()), ";").stream()
                .map(part -> part.stream().map(Word::text).collect(Collectors.joining(" ")))
                .collect(Collectors.joining("; "));
    }

    private List<String> texts(String keyword) {
        return clauses.get(keyword).stream().map(Word::text).filter(text -> !text.equals("nothing")).toList();
    }

    private void compare(String what, String expected, String came) {
        if (!expected.equals(came)) {
            differences.add(what + "\n      expected  " + expected + "\n      came      " + came);
        }
    }

    private String report(String name, Stage stage) {
        String all = Arrays.stream(Hooks.shownCalls()).filter(call -> !HOUSEKEEPING.matcher(call).find()).map(call -> "    " + stage.shown(call.replace('\t', ' ')))
                .collect(Collectors.joining("\n"));
        return place + " on " + name + "\n    " + line + "\nIt came otherwise than the scene says:\n  - "
                + String.join("\n  - ", differences) + "\nAll calls of the library, in order:\n" + all;
    }
}
