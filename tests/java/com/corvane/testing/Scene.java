package com.corvane.testing;

import com.corvane.testing.Words.Word;
import java.io.IOException;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.HashMap;
import java.util.List;
import java.util.Map;
import java.util.Set;
import java.util.regex.Pattern;
import java.util.stream.Collectors;

/** One scene: a call, perhaps more that follow it, what Windows does meanwhile, and what must come of it. */
final class Scene {

    /** The words that begin a clause. */
    static final Set<String> CLAUSES = Set.of("with", "calls", "files", "leaves", "later", "open", "registry", "says",
            "waiting", "tells", "then", "first", "after", "beside", "state", "leads");

    /** Calls that tell a reader nothing. */
    private static final Pattern HOUSEKEEPING =
            Pattern.compile("^([GS]etLastError|malloc|calloc|realloc|free|LocalFree|ExceptionCheck|DeleteLocalRef"
                    + "|GetString(Chars|Length)|ReleaseStringChars|GetACP|WideCharToMultiByte|MultiByteToWideChar)\\b");

    private static final Map<String, String> GROUPS = Map.of("9x", "W98", "NT", "W10");

    private final String place;
    private final String line;
    final List<Windows> systems;
    final List<String> steps = new ArrayList<>();
    private final Map<String, String> clauses;
    final Stage stage;

    /** {@code given} are the clauses that hold for all scenes around it. */
    Scene(String place, String line, Map<String, String> given) {
        this.place = place;
        this.line = line;
        clauses = new HashMap<>(given);
        int start = line.startsWith("[") ? line.indexOf(']') + 1 : 0;
        String named = start == 0 ? "9x NT" : line.substring(1, start - 1);
        systems = Arrays.stream(named.split(" "))
                .map(name -> Windows.valueOf(GROUPS.getOrDefault(name, name).toUpperCase())).toList();
        parse(line.substring(start));
        stage = new Stage(line + clauses);
    }

    private void parse(String text) {
        String keyword = "then";
        int from = 0;
        for (Word word : Words.of(text)) {
            if (!word.quoted() && CLAUSES.contains(word.text())) {
                take(keyword, text.substring(from, word.start()).trim());
                keyword = word.text();
                from = word.end();
            }
        }
        take(keyword, text.substring(from).trim());
    }

    private void take(String keyword, String text) {
        switch (keyword) {
            case "then" -> steps.add(text);
            case "with" -> clauses.merge(keyword, text, (given, own) -> given + "; " + own);
            default -> clauses.put(keyword, text);
        }
    }

    boolean has(String clause) {
        return clauses.containsKey(clause);
    }

    /** A clause as it stands; empty when there is none. */
    String clause(String keyword) {
        return clauses.getOrDefault(keyword, "");
    }

    String title() {
        return steps.stream().map(step -> step.split(" => ")[0]).collect(Collectors.joining(", "));
    }

    /** Plays it; what comes otherwise than the scene says is an error that says both. */
    void play(Windows system) throws Exception {
        List<String> differences;
        try {
            differences = steps.get(0).startsWith(Sweep.KEYWORD) ? new Sweep(this, system).differences()
                    : differences(system);
        } finally {
            RawRegistry.lead();
        }
        String calls = differences.isEmpty() ? "" : Calls.shown(stage).stream()
                .filter(call -> !HOUSEKEEPING.matcher(call).find()).collect(Collectors.joining("\n    "));
        Hooks.reset();
        if (!differences.isEmpty()) {
            throw new AssertionError(Words.shortened(place + " on " + system + "\n    " + line
                    + "\nIt came otherwise than the scene says:\n  - " + String.join("\n  - ", differences)
                            + "\nAll calls of the library, in order:\n    " + calls));
        }
    }

    /** Sets the stage and has Windows do from now on what the scene says. */
    void prepare(Windows system) throws IOException {
        stage.set(Words.of(clause("files")), has("registry"), text("waiting"));
        RawRegistry.lead(has("leads") ? clause("leads").split(" ") : new String[0]);
        for (String call : has("first") ? clause("first").split("; ") : new String[0]) {
            String[] sides = call.split(" => ", 2);
            String outcome = new Native(sides[0], stage).outcome();
            if (sides.length == 2 && !outcome.equals(sides[1])) {
                throw new AssertionError("first " + call + ", but it came to " + outcome);
            }
        }
        Hooks.reset();
        system.use();
        Plan.prepare(clause("with"), system, stage);
    }

    private List<String> differences(Windows system) throws Exception {
        List<String> differences = new ArrayList<>();
        prepare(system);
        String before = stage.files();
        call(differences);
        compare(differences, "on the standard error stream", text("says"), Calls.written());
        if (has("calls")) {
            differences.addAll(new Calls(clause("calls"), system, stage).differences(false));
        }
        compare(differences, "files afterwards", has("leaves") ? sorted(text("leaves")) : before, stage.files());
        compare(differences, "what waits for the next start", text("later"), stage.later());
        if (has("tells") && !Native.message().matches(text("tells"))) {
            compare(differences, "the message", text("tells"), Native.message());
        }
        if (has("open")) {
            compare(differences, "things left open", clause("open"), Integer.toString(Hooks.leftOpen()));
        }
        differences.addAll(Hooks.each(Hooks.complaints()));
        return differences;
    }

    private void call(List<String> differences) {
        List<Native> natives = steps.stream().map(step -> new Native(step.split(" => ")[0], stage)).toList();
        Hooks.arm();
        for (int index = 0; index < natives.size(); ++index) {
            String[] sides = steps.get(index).split(" => ", 2);
            compare(differences, "outcome of " + sides[0], expected(sides[1].trim()),
                    natives.get(index).outcome() + natives.get(index).told());
        }
        Hooks.disarm();
    }

    /** As an outcome is shown: unquoted, when it is a text with blanks. */
    private String expected(String outcome) {
        return stage.shown(stage.real(outcome.matches("'.+'") ? outcome.substring(1, outcome.length() - 1) : outcome));
    }

    /** A clause without its quotes. */
    private String text(String keyword) {
        return clause(keyword).replace("'", "");
    }

    private static String sorted(String files) {
        return files.equals("nothing") ? ""
                : Arrays.stream(files.split(" +")).sorted().collect(Collectors.joining(" "));
    }

    private static void compare(List<String> differences, String what, String expected, String came) {
        if (!expected.equals(came)) {
            differences.add(what + "\n      expected  " + expected + "\n      came      " + came);
        }
    }
}
