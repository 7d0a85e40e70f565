package com.corvane.testing;

import com.corvane.testing.Words.Word;
import com.sun.jna.Native;
import com.sun.jna.Pointer;
import java.io.ByteArrayOutputStream;
import java.util.Comparator;
import java.util.HashMap;
import java.util.List;
import java.util.Map;
import java.util.regex.Matcher;
import java.util.regex.Pattern;

/** What a scene has Windows do: fail, answer otherwise than it is, or lack a function. */
public final class Plan {

    private static final int NOT_FOUND = 127;
    private static final Pattern FAILURE = Pattern.compile("([\\w:]+?)(?:#(\\d+))?=(\\w+)(\\*?)");
    private static final Pattern ANSWER = Pattern.compile("(\\w+)(?:/(\\d+))?(\\*?)");

    private final Windows system;
    private final Stage stage;
    private final Map<String, Long> addresses = new HashMap<>();

    private Plan(Windows system, Stage stage) {
        this.system = system;
        this.stage = stage;
    }

    /** Watches the calling thread from here on; the library is on this system, which does as a scene would say. */
    public static void begin(Windows system, String clause) {
        Hooks.reset();
        system.use();
        prepare(clause, system, new Stage(""));
        Hooks.arm();
    }

    /** Puts each entry in its place. Values are found when no other answer is left. */
    static void prepare(String clause, Windows system, Stage stage) {
        Words.parts(Words.of(clause), ";").stream().sorted(Comparator.comparing(entry -> entry.get(0).is("value")))
                .forEach(new Plan(system, stage)::put);
    }

    private void put(List<Word> entry) {
        String first = entry.get(0).text();
        String name = entry.size() == 1 ? "" : entry.get(1).text();
        Matcher failure = FAILURE.matcher(first);
        if (first.equals("no")) {
            String call = "GetProcAddress\t" + fullName(name, system);
            // The first must be asked for.
            List.of(false, true).forEach(andAllLater -> Hooks.fail(call, 1, NOT_FOUND, andAllLater));
        } else if (first.equals("memory")) {
            byte[] data = data(entry.subList(2, entry.size()), !system.isAnsi());
            addresses.put(name, Native.malloc(data.length));
            new Pointer(addresses.get(name)).write(0, data, 0, data.length);
        } else if (first.equals("value")) {
            byte[] data = data(entry.subList(2, entry.size()), !system.isAnsi());
            // The next query finds it, and all later ones of which nothing else is said.
            for (boolean always : new boolean[] {false, true}) {
                Hooks.answer(system.function("RegQueryValueEx"), Words.number(name), 0, always);
                Hooks.writeTo(Hooks.FOUND, data, data.length);
            }
        } else if (failure.matches()) {
            fail(failure);
        } else if (first.endsWith(":")) {
            answer(fullName(first.substring(0, first.length() - 1), system), Words.parts(entry, ","));
        } else {
            throw new AssertionError("not understood in \"with\": " + first);
        }
    }

    /** The name in the tables: with the letter of this system's family, where it has one. */
    static String fullName(String name, Windows system) {
        for (String candidate : List.of(name, system.function(name), name + "W", name + "A")) {
            if (Hooks.knows(candidate)) {
                return candidate;
            }
        }
        throw new AssertionError("no function that the tests know: " + name);
    }

    private void fail(Matcher failure) {
        int nth = failure.group(2) == null ? 1 : Integer.parseInt(failure.group(2));
        int error = failure.group(3).equals("none") ? Hooks.NO_ERROR : (int) Words.number(failure.group(3));
        Hooks.fail(fullName(failure.group(1), system), nth, error, !failure.group(4).isEmpty());
    }

    private void answer(String function, List<List<Word>> parts) {
        Matcher result = ANSWER.matcher(parts.get(0).get(1).text());
        if (!result.matches()) {
            throw new AssertionError("not understood as an answer of " + function + ": " + parts.get(0).get(1).text());
        }
        int error = result.group(2) == null ? 0 : Integer.parseInt(result.group(2));
        Hooks.answer(function, Words.number(result.group(1)), error, !result.group(3).isEmpty());
        for (List<Word> write : parts.subList(1, parts.size())) {
            byte[] data = data(write.subList(1, write.size()), function.endsWith("W"));
            Hooks.writeTo(Integer.parseInt(write.get(0).text()), data, data.length);
        }
    }

    /** What the words say, one after the other. */
    private byte[] data(List<Word> words, boolean wide) {
        ByteArrayOutputStream bytes = new ByteArrayOutputStream();
        words.forEach(word -> bytes.writeBytes(data(word, wide)));
        return bytes.toByteArray();
    }

    private byte[] data(Word word, boolean wide) {
        String text = word.text();
        if (word.quoted()) {
            String whole = stage.real(text);
            return wide ? Bytes.utf16(whole) : whole.getBytes(Bytes.ANSI);
        }
        return switch (text.charAt(0)) {
            case 'n' -> Bytes.number((int) Words.number(text.substring(1)));
            case 'q' -> Bytes.word(Words.number(text.substring(1)));
            case 'r' -> Bytes.word(Hooks.HERE + Words.number(text.substring(1)));
            case 'x' -> Words.bytes(text);
            case '@' -> Bytes.word(addresses.get(text.substring(1)));
            case 'z' -> new byte[Integer.parseInt(text.substring(1))];
            default -> throw new AssertionError("not understood as data: " + text);
        };
    }
}
