package com.corvane.testing;

/**
 * The test's hand on everything that the library calls: the functions of Windows (those that it imports
 * and those that it looks up), the C runtime's heap, and JNI. Calls are watched on one thread, between
 * {@link #arm} and {@link #disarm}; all others pass.
 */
public final class Hooks {

    static {
        System.load(System.getProperty("corvane.test.support"));
    }

    private Hooks() {}

    /** Leads every JNI call of the hooked DLLs past the hooks. Once in a process. */
    static native void hookJni();

    /** Hooks all imports of a loaded DLL. Returns those that the table of functions lacks. */
    static native String[] hookImports(String dll);

    /** Forgets everything that was prepared, recorded and booked. */
    public static native void reset();

    /** Watches the calling thread from here on. */
    public static native void arm();

    public static native void disarm();

    /** What GetVersionEx tells: see {@link Windows}. */
    static native void version(int platform, int major, int minor, boolean knowsLongRecord, boolean tells);

    /** For {@link #fail}: all calls of Windows, and all of JNI, that can fail. */
    public static final String ANY = "any call";
    static final String ANY_OF_JNI = "any JNI call";

    /** For {@link #fail}: the call fails, and the last error is 0. */
    static final int NO_ERROR = -1;

    /**
     * Makes the n-th call of a function fail, from 1, and perhaps those after it: with this error, 0 being the
     * one that fits, or as the JVM would fail it.
     */
    public static native void fail(String function, int nth, int error, boolean andAllLater);

    /** In the data of an answer, with a number added: the place so many bytes behind where they are written. */
    static final long HERE = 0x5CE4E00000000L;

    /**
     * Answers one call of a function in Windows' place, or every later one: writes {@code data} to where the
     * arguments with these indexes point and leaves this last error; 0: the last error stays as it is. Answers
     * are used up in order.
     */
    public static native void answer(String function, long result, int lastError, boolean always, int[] arguments,
            byte[][] data);

    /** What RegQueryValueEx finds, at its next call or, for the last one given, from then on. */
    static native void answerValue(String function, int type, byte[] data);

    /** The address of these data in memory of their own, which stays. */
    static native long keep(byte[] data);

    /** The file that LoadLibraryExA loads for a name. */
    static native void answerModule(String name, String file);

    /** A function that GetProcAddress does not find, as on a Windows too old for it. */
    static native void hide(String function);

    /** How many of the calls so far could have been made to fail. */
    public static native int failable(boolean jni);

    /** Which of the calls failed as the n-th of all; -1 when none did. */
    static native int failed();

    /** Whether a table has the function. */
    static native boolean knows(String function);

    /** All calls since the last reset as the tables of functions show them: a tab before each argument. */
    static native String[] shownCalls();

    /** What was prepared and has not come about, in words. */
    static native String[] unused();

    /** What is open that must be closed by now, and what the library did that it must never do, in words. */
    static native String[] complaints();

    /** What the last native returned beside its exception, '' for an empty text; empty for null, 0, false. */
    static native String returned();

    /** How many things are open that the library promises to leave open. */
    static native int leftOpen();

    /** The most things of a kind that were open at once. */
    public static native int peak(String kind);
}
