package com.corvane.testing;

import com.corvane.testing.Words.Word;
import java.util.ArrayList;
import java.util.HashMap;
import java.util.List;
import java.util.Map;
import java.util.stream.Collectors;
import java.util.stream.IntStream;

/** The calls that a scene names: all of each function that it names at all, in order. */
final class Calls {

    private static final List<String> NOTHING_MORE = List.of("(nothing more)");

    private final Stage stage;
    private final List<List<String>> expected = new ArrayList<>();
    /** By the whole name of a function, the name in the scene. */
    private final Map<String, String> names = new HashMap<>();

    Calls(String clause, Windows system, Stage stage) {
        this.stage = stage;
        for (List<Word> entry : Words.parts(Words.of(clause), ";")) {
            boolean none = entry.get(0).is("no");
            String name = entry.get(none ? 1 : 0).text();
            names.put(Plan.fullName(name, system), name);
            if (!none) {
                expected.add(entry.stream().map(word -> word.text().isEmpty() ? "''" : word.text()).toList());
            }
        }
    }

    /** All calls of the library, as the tables of functions show them. */
    static List<String> shown(Stage stage) {
        return Hooks.each(Hooks.calls()).stream().map(call -> stage.shown(call.replace('\t', ' '))).toList();
    }

    /** What the C runtime wrote to the standard error stream, a letter a call; other output shows as its calls. */
    static String written() {
        return Hooks.each(Hooks.calls()).stream().filter(call -> call.matches("(fputw?c|fwrite|vfprintf|fwprintf)\t.*"))
                .map(call -> call.matches("fputc\t\\d+\tstderr")
                        ? Character.toString(Integer.parseInt(call.split("\t")[1])) : call)
                .collect(Collectors.joining());
    }

    /** Nothing, or what was expected beside what came; none of them may be right, too. */
    List<String> differences(boolean mayBeNone) {
        List<List<String>> came = came();
        List<String> table = new ArrayList<>();
        for (int row = 0; row < Math.max(expected.size(), came.size()); ++row) {
            List<String> wanted = row < expected.size() ? expected.get(row) : NOTHING_MORE;
            List<String> call = row < came.size() ? came.get(row) : NOTHING_MORE;
            boolean fits = fits(wanted, call);
            table.add((fits ? "as it must be  " : "expected       ") + String.join(" ", wanted));
            if (!fits) {
                table.add("came           " + String.join(" ", call));
            }
        }
        boolean fits = table.stream().allMatch(line -> line.startsWith("as it must be"));
        return fits || mayBeNone && came.isEmpty() ? List.of()
                : List.of("the calls that the scene names\n      " + String.join("\n      ", table));
    }

    private List<List<String>> came() {
        List<List<String>> came = new ArrayList<>();
        for (String call : Hooks.each(Hooks.calls())) {
            List<String> words = new ArrayList<>(List.of(stage.shown(call).split("\t", -1)));
            String name = names.get(words.get(0));
            if (name != null) {
                words.set(0, name);
                came.add(words);
            }
        }
        return came;
    }

    /** The last arguments may be left out. */
    private boolean fits(List<String> wanted, List<String> call) {
        return wanted.size() <= call.size()
                && IntStream.range(0, wanted.size()).allMatch(at -> fits(wanted.get(at), call.get(at)));
    }

    private boolean fits(String wanted, String came) {
        if (wanted.equals("&")) {
            return !came.equals("0") && !came.equals("null");
        }
        String real = stage.shown(stage.real(wanted));
        return (real.matches("x[0-9A-F_]+") ? real.replace("_", "") : real).equals(came)
                || isNumber(wanted) && isNumber(came) && Words.number(wanted) == Words.number(came);
    }

    private static boolean isNumber(String text) {
        return text.matches("-?\\d{1,18}|0x[0-9A-Fa-f]{1,16}");
    }
}
