package com.corvane.testing;

import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.HashMap;
import java.util.List;
import java.util.Map;
import java.util.regex.MatchResult;
import java.util.regex.Matcher;
import java.util.regex.Pattern;
import java.util.stream.IntStream;
import org.junit.jupiter.api.DynamicContainer;
import org.junit.jupiter.api.DynamicTest;

/** A file of scenes; docs/architecture.md says how one is read. */
final class SceneFile {

    private static final Pattern LET = Pattern.compile("let (\\w+) = (.*)");
    private static final Pattern NAME = Pattern.compile("\\$([A-Z][A-Z0-9_]*)\\b");
    /** What is chosen may itself have braces: {a|{b}}. */
    private static final Pattern CHOICE = Pattern.compile("\\{((?:[^{}]|\\{\\w+\\})*\\|(?:[^{}]|\\{\\w+\\})*)\\}");

    /** What stands below one heading. */
    record Section(String heading, List<Scene> scenes) {
        DynamicContainer tests() {
            List<DynamicTest> tests = new ArrayList<>();
            for (Scene scene : scenes) {
                for (Windows system : scene.systems) {
                    tests.add(DynamicTest.dynamicTest(scene.title() + " on " + system, () -> scene.play(system)));
                }
            }
            return DynamicContainer.dynamicContainer(heading, tests);
        }
    }

    private final Path file;
    private final Map<String, String> lets = new HashMap<>();
    private final Map<String, String> ofFile = new HashMap<>();
    private final Map<String, String> ofSection = new HashMap<>();
    final List<Section> sections = new ArrayList<>();

    SceneFile(Path file) throws IOException {
        this.file = file;
        List<String> lines = Files.readAllLines(file);
        for (int first = 0; first < lines.size(); ++first) {
            int number = first + 1;
            StringBuilder line = new StringBuilder(lines.get(first));
            while (first + 1 < lines.size() && lines.get(first + 1).startsWith("  ")) {
                line.append(' ').append(lines.get(++first).trim());
            }
            read(number, line.toString().trim());
        }
    }

    private void read(int number, String line) {
        Matcher let = LET.matcher(line);
        if (line.startsWith("#")) {
            ofSection.clear();
            sections.add(new Section(line.substring(1).trim(), new ArrayList<>()));
        } else if (let.matches()) {
            lets.put(let.group(1), full(let.group(2)));
        } else if (Scene.CLAUSES.contains(line.split(" ")[0])) {
            String[] parts = full(line).split(" ", 2);
            (sections.isEmpty() ? ofFile : ofSection).put(parts[0], parts.length == 1 ? "" : parts[1]);
        } else if (!line.isEmpty()) {
            Map<String, String> given = new HashMap<>(ofFile);
            given.putAll(ofSection);
            String place = file.getFileName() + ":" + number;
            for (String choice : choices(full(line))) {
                sections.get(sections.size() - 1).scenes().add(new Scene(place, choice, given));
            }
        }
    }

    /** With all names replaced. */
    private String full(String line) {
        return NAME.matcher(line).replaceAll(name -> {
            if (!lets.containsKey(name.group(1))) {
                throw new AssertionError(file.getFileName() + ": no \"let\" for " + name.group());
            }
            return Matcher.quoteReplacement(lets.get(name.group(1)));
        });
    }

    /** A line with {a|b} is two lines; the first of each such choice go together, and so on. */
    private static List<String> choices(String line) {
        List<Integer> counts = CHOICE.matcher(line).results().map(choice -> parts(choice).length).distinct().toList();
        if (counts.size() > 1) {
            throw new AssertionError("choices of different lengths: " + line);
        }
        return IntStream.range(0, counts.isEmpty() ? 1 : counts.get(0)).mapToObj(at -> CHOICE.matcher(line)
                .replaceAll(choice -> Matcher.quoteReplacement(parts(choice)[at]))).toList();
    }

    private static String[] parts(MatchResult choice) {
        return choice.group(1).split("\\|", -1);
    }
}
