package com.corvane.testing;

/** The library's bridge, called directly where none of its natives shows all of it. */
public final class Bridge {

    private Bridge() {}

    public static void load() {
        System.load(System.getProperty("corvane.test.bridge"));
    }

    /** A bit for each: isWindows9x, isWindowsNT, isWindowsME, isWindows2000, isWindowsXPOrLater. */
    public static native int predicates();

    public static native void raise(int code);

    public static native void raiseWithMessage(int code, int message);

    public static native void raiseSevere(int code, int message);

    public static native void raiseNotSupported();

    /** Raises with one code, then by every routine with another. */
    public static native void raiseTwice(int first, int second);

    public static native String errorText(int code, int message);

    /** The first units of a JniString's buffer; null when it has none. */
    public static native byte[] copyWide(String text, int units);

    /** A JniAnsiString's buffer; null when it has none. */
    public static native byte[] copyAnsi(String text);

    /**
     * Calls a method of the target: 0 for a String, 1 for an Object (whose text is the answer), 2 with the
     * int -7, 3 with nothing, 4 with the text "text\u00E9". The answer, or the message of an internal error.
     */
    public static native String callMethod(Object target, int call, String name);

    /** GetACP, looked up by name; the negative last error when it is not found. */
    public static native int lookedUpCodePage();
}
