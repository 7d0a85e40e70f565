package com.corvane.testing;

import com.sun.jna.JNIEnv;
import com.sun.jna.Native;
import com.sun.jna.WString;
import java.util.List;
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

    /** Hooks all that a loaded DLL calls, and its natives. A list of imports that the table of functions lacks. */
    static native WString hook(JNIEnv current, String dll);

    /** Forgets everything that was prepared, recorded and booked. */
    public static native void reset();

    /** Watches the calling thread from here on. */
    public static native void arm();

    public static native void disarm();

    /** For {@link #fail}: all calls that can fail, of Windows and of JNI. */
    public static final String ANY = "any call";

    /** For {@link #fail}: the call fails, and the last error is 0. */
    static final int NO_ERROR = -1;

    /**
     * Makes the n-th call of a function fail, from 1, and perhaps those after it: with this error, 0 being the
     * one that fits, or as the JVM would fail it. Arguments may follow the function, as calls are shown.
     */
    public static native void fail(String call, int nth, int error, boolean andAllLater);

    /**
     * Answers one call of a function in Windows' place, or every later one, and leaves this last error; 0: it
     * stays as it is. Answers are used up in order.
     */
    public static native void answer(String call, long result, int lastError, boolean always);

    /** For {@link #writeTo}: the data are those of a registry value, which is found; the result is its type. */
    static final int FOUND = -1;

    /** The last answer writes these data to where an argument points. */
    public static native void writeTo(int argument, byte[] data, int size);

    /** In these data, with a number added: the place so many bytes behind where they are written. */
    static final long HERE = 0x5CE4E00000000L;

    /** How many of the calls so far could have been made to fail. */
    public static native int failable();

    /** Which of the calls failed as the n-th of all; -1 when none did. */
    static native int failed();

    /** Whether a table has the function. */
    static native boolean knows(String function);

    /** A list of all calls since the last reset, as the table of functions shows them: a tab before each argument. */
    public static native WString calls();

    /** A list of what must never be done, what was prepared in vain, and what is open that must be closed by now. */
    static native WString complaints();

    /** A list, taken apart. */
    static List<String> each(WString list) {
        return Stream.of(list.toString().split("\1")).filter(text -> !text.isEmpty()).toList();
    }

    /** What the last native returned beside its exception, '' for an empty text; empty for null, 0, false. */
    static native WString returned();

    /** How many things are open that the library promises to leave open. */
    static native int leftOpen();
}
