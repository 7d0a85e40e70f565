package com.corvane.testing;

import java.nio.charset.StandardCharsets;
import java.util.ArrayList;
import java.util.List;

/** One recorded call of the library. */
public final class Call {

    private final int index;
    private final String name;

    private Call(int index, String name) {
        this.index = index;
        this.name = name;
    }

    /** All calls since the last reset, in order. */
    public static List<Call> all() {
        List<Call> calls = new ArrayList<>();
        for (String name : Hooks.callNames()) {
            calls.add(new Call(calls.size(), name));
        }
        return calls;
    }

    /** The calls of one function. */
    public static List<Call> of(String function) {
        return all().stream().filter(call -> call.name.equals(function)).toList();
    }

    /** The only call of one function. */
    public static Call only(String function) {
        List<Call> calls = of(function);
        if (calls.size() != 1) {
            throw new AssertionError(function + " was called " + calls.size() + " times");
        }
        return calls.get(0);
    }

    public String name() {
        return name;
    }

    /** An argument of the size of a pointer; the first has index 0. */
    public long word(int argument) {
        return Hooks.callWords(index)[argument];
    }

    /** A 32-bit argument. */
    public int number(int argument) {
        return (int) word(argument);
    }

    /** What {@link Hooks#capture} kept; null when the argument was a null pointer. */
    public byte[] bytes(int argument) {
        return Hooks.captured(index, argument);
    }

    /** The text that {@link Hooks#captureText} kept; null when the argument was a null pointer. */
    public String text(int argument) {
        byte[] bytes = bytes(argument);
        return bytes == null ? null : new String(bytes, name.endsWith("W") ? StandardCharsets.UTF_16LE : Bytes.ANSI);
    }
}
