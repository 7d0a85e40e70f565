package com.corvane.testing;

import com.sun.jna.JNIEnv;
import com.sun.jna.Native;
import com.sun.jna.WString;
import java.util.List;
import java.util.stream.IntStream;
import java.util.stream.Stream;

/**
 * The test's hand on everything that the library calls: the functions of Windows (those that it imports
 * and those that it looks up), the C runtime's heap, and JNI. Calls are watched on one thread, between
 * {@link #arm} and {@link #disarm}; all others pass.
 */
public final class Hooks {

    static {
        Native.register(System.getProperty("corvane.test.support"));
    }

    private Hooks() {}

    /** Leads every JNI call of the hooked DLLs past the hooks. Once in a process. */
    static native void hookJvm(JNIEnv current);

    /** Hooks all imports of a loaded DLL. A list of those that the table of functions lacks. */
    static native WString hookLibrary(String dll);

    /** Forgets everything that was prepared, recorded and booked. */
    public static native void reset();

    /** Watches the calling thread from here on. */
    public static native void arm();

    public static native void disarm();

    /** For {@link #fail}: all calls of Windows, and all of JNI, that can fail. */
    public static final String ANY = "any call";
    static final String ANY_OF_JNI = "any JNI call";

    /** For {@link #fail}: the call fails, and the last error is 0. */
    static final int NO_ERROR = -1;

    private static final int FAILS = 0;
    private static final int ANSWERS = 1;
    private static final int FINDS = 2;
    private static final int PROC_NOT_FOUND = 127;

    /** What comes of a call, in the words of {@code Prepared}. */
    private static native void prepare(String call, int kind, int nth, int always, long result, int error);

    /** What the last one that was prepared writes to where an argument points. */
    private static native void writeTo(int argument, byte[] data, int size);

    /**
     * Makes the n-th call of a function fail, from 1, and perhaps those after it: with this error, 0 being the
     * one that fits, or as the JVM would fail it.
     */
    public static void fail(String function, int nth, int error, boolean andAllLater) {
        prepare(function, FAILS, nth, andAllLater ? 1 : 0, 0, error);
    }

    /** In the data of an answer, with a number added: the place so many bytes behind where they are written. */
    static final long HERE = 0x5CE4E00000000L;

    /**
     * Answers one call of a function in Windows' place, or every later one: writes {@code data} to where the
     * arguments with these indexes point and leaves this last error; 0: the last error stays as it is. Answers
     * are used up in order.
     */
    public static void answer(String function, long result, int lastError, boolean always, int[] arguments,
            byte[][] data) {
        prepare(function, ANSWERS, 1, always ? 1 : 0, result, lastError);
        IntStream.range(0, data.length).forEach(at -> writeTo(arguments[at], data[at], data[at].length));
    }

    /** What RegQueryValueEx finds, at its next call or, for the last one given, from then on. */
    static void answerValue(String function, int type, byte[] data) {
        for (int always = 0; always <= 1; ++always) {
            prepare(function, FINDS, 1, always, type, 0);
            writeTo(0, data, data.length);
        }
    }

    /** A function that GetProcAddress does not find, as on a Windows too old for it; it must be asked for. */
    static void hide(String function) {
        fail("GetProcAddress\t" + function, 1, PROC_NOT_FOUND, false);
        fail("GetProcAddress\t" + function, 1, PROC_NOT_FOUND, true);
    }

    /** How many of the calls so far could have been made to fail. */
    public static native int failable(boolean jni);

    /** Which of the calls failed as the n-th of all; -1 when none did. */
    static native int failed();

    /** Whether a table has the function. */
    static native boolean knows(String function);

    /** A list of all calls since the last reset, as the table of functions shows them: a tab before each argument. */
    static native WString calls();

    /** A list of what was prepared and has not come about, in words. */
    static native WString unused();

    /** A list of what is open that must be closed by now, and of what the library did that it must never do. */
    static native WString complaints();

    /** A list, taken apart. */
    static List<String> each(WString list) {
        return Stream.of(list.toString().split("\1")).filter(text -> !text.isEmpty()).toList();
    }

    /** What the last native returned beside its exception, '' for an empty text; empty for null, 0, false. */
    static native WString returned();

    /** How many things are open that the library promises to leave open. */
    static native int leftOpen();

    /** The most things of a kind that were open at once. */
    public static native int peak(String kind);
}
