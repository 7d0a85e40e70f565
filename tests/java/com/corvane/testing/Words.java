package com.corvane.testing;

import java.util.ArrayList;
import java.util.HexFormat;
import java.util.List;
import java.util.regex.Matcher;
import java.util.regex.Pattern;

/** A line of a scene, cut at its blanks; quotes keep what has blanks together. */
final class Words {

    /** One word without its quotes, and where it stands in the line with them. */
    record Word(String text, boolean quoted, int start, int end) {
        boolean is(String other) {
            return !quoted && text.equals(other);
        }
    }

    /** Without the separator that may stand at its end, which is a word of its own. */
    private static final Pattern WORD = Pattern.compile("(?:'[^']*'|[^\\s'])+?(?=[;,]?(?:\\s|$))");
    private static final Pattern REPEATED = Pattern.compile("(?:\\(([^()]+)\\)|(.))\\*(\\d+)");
    private static final Pattern OFTEN = Pattern.compile("(?s)(.{1,200}?)\\1{19,}");

    private Words() {}

    static List<Word> of(String line) {
        return WORD.matcher(line).results().map(found -> new Word(found.group().replace("'", ""),
                found.group().contains("'"), found.start(), found.end())).toList();
    }

    /** The parts between these separators. */
    static List<List<Word>> parts(List<Word> words, String separator) {
        List<List<Word>> parts = new ArrayList<>(List.of(new ArrayList<>()));
        for (Word word : words) {
            if (word.is(separator)) {
                parts.add(new ArrayList<>());
            } else {
                parts.get(parts.size() - 1).add(word);
            }
        }
        parts.removeIf(List::isEmpty);
        return parts;
    }

    /** "x*3" stands for "xxx", "(ab)*2" for "abab", and U+2400 for a NUL. */
    static String spelledOut(String text) {
        return REPEATED.matcher(text)
                .replaceAll(found -> Matcher.quoteReplacement(
                        (found.group(1) != null ? found.group(1) : found.group(2))
                                .repeat(Integer.parseInt(found.group(3)))))
                .replace('\u2400', '\0');
    }

    /** Written so again, where something stands there twenty times or more. */
    static String shortened(String text) {
        return OFTEN.matcher(text).replaceAll(found -> Matcher.quoteReplacement(
                "(" + found.group(1) + ")*" + found.group().length() / found.group(1).length()));
    }

    /** "x0102" as bytes. */
    static byte[] bytes(String text) {
        return HexFormat.of().parseHex(spelledOut(text).substring(1).replace("_", ""));
    }

    /** Decimal or hexadecimal, with a sign or not. */
    static long number(String text) {
        return text.startsWith("0x") ? Long.parseUnsignedLong(text.substring(2), 16) : Long.parseLong(text);
    }
}
