package com.corvane.testing;

/**
 * The test's hand on everything that the library calls: the functions of Windows (those that it imports
 * and those that it looks up), the C runtime's heap, and JNI. Calls are watched on one thread, between
 * {@link #arm} and {@link #disarm}; all others pass.
 */
public final class Hooks {

    private Hooks() {}

    /** Loads the DLL of these natives. */
    public static void load() {
        System.load(System.getProperty("corvane.test.support"));
    }

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

    /**
     * Makes the n-th call of one function fail, from 1, and perhaps those after it: with this error, 0 being the
     * one that fits, or as the JVM would fail it.
     */
    private static native void fail(String function, int nth, int error, boolean andAllLater);

    /** The same for all JNI or all other calls that can fail. */
    static void failNth(boolean jni, int nth, boolean andAllLater) {
        fail(jni ? "any JNI call" : "any call", nth, 0, andAllLater);
    }

    /** Makes every call of Windows fail from the n-th on: the power is gone. */
    public static void failFrom(int nth) {
        failNth(false, nth, true);
    }

    /** For {@link #fail}: the call fails, and the last error is 0. */
    public static final int NO_ERROR = -1;

    static void fail(boolean jni, String function, int nth, int error) {
        fail(function, nth, error, false);
    }

    public static void fail(String function, int nth, int error) {
        fail(function, nth, error, false);
    }

    public static void failJni(String function, int nth) {
        fail(function, nth, 0, false);
    }

    /** In the data of an answer, with a number added: the place so many bytes behind where they are written. */
    static final long HERE = 0x5CE4E00000000L;

    /**
     * Answers one call of a function in Windows' place, or every later one: writes {@code data} to where the
     * arguments with these indexes point and leaves this last error; 0: the last error stays as it is. Answers
     * are used up in order.
     */
    private static native void answer(String function, long result, int lastError, boolean always, int[] arguments,
            byte[][] data);

    public static void answer(String function, long result, int lastError, int[] arguments, byte[][] data) {
        answer(function, result, lastError, false, arguments, data);
    }

    public static void answer(String function, long result) {
        answer(function, result, 0, new int[0], new byte[0][]);
    }

    public static void answer(String function, long result, int argument, byte[] data) {
        answer(function, result, 0, new int[] {argument}, new byte[][] {data});
    }

    public static void answer(String function, long result, int[] arguments, byte[]... data) {
        answer(function, result, 0, arguments, data);
    }

    /** Refuses one call with this error, as with a buffer that is too small, and says so in an argument. */
    public static void refuse(String function, int lastError, int[] arguments, byte[]... data) {
        answer(function, 0, lastError, arguments, data);
    }

    static void answerAlways(String function, long result) {
        answer(function, result, 0, true, new int[0], new byte[0][]);
    }

    static void failAlways(String function, int error) {
        fail(function, 1, error, true);
    }

    /** What RegQueryValueEx finds, at its next call or, for the last one given, from then on. */
    public static native void answerValue(int type, byte[] data);

    /** The address of these data in memory of their own, which stays. */
    static native long keep(byte[] data);

    /** The file that LoadLibraryExA loads for a name. */
    public static native void answerModule(String name, String file);

    /** A function that GetProcAddress does not find, as on a Windows too old for it. */
    public static native void hide(String function);

    /** How many of the calls so far could have been made to fail. */
    public static native int failable(boolean jni);

    /** Which of the calls {@link #failNth} hit; -1 when none. */
    static native int failed();

    /** 1 for a function of Windows, 2 for one of JNI, 0 for one that no table has. */
    static native int kind(String function);

    /** All calls since the last reset as the tables of functions show them: a tab before each argument. */
    static native String[] shownCalls();

    /** What was prepared and has not come about, in words. */
    static native String[] unused();

    /** What the last native returned beside its exception, '' for an empty text; empty for null, 0, false. */
    public static native String returned();

    /** What is open that must be closed by now. */
    public static native String[] unbalanced();

    /** What the library did that it must never do. */
    public static native String[] violations();

    /** How many things are open that the library promises to leave open. */
    public static native int leftOpen();

    public static native int peakLocalReferences();

    /** The most searches for files that were open at once. */
    public static native int peakSearches();
}
