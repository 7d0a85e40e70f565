package com.corvane.testing;

/**
 * The registry below HKEY_CURRENT_USER as it really is, byte by byte, without the library under test.
 */
public final class RawRegistry {

    /** Where the tests work; the extension makes it anew for every test. */
    public static final String KEY = "Software\\Corvane\\Test Bed";

    private RawRegistry() {}

    public static native void createKey(String key);

    /** Makes a registry link, which leads to another key. */
    public static native void createLink(String key, String target);

    public static native void deleteTree(String key);

    public static native void set(String key, String name, int type, byte[] data);

    /** -1 when there is no such value. */
    public static native int type(String key, String name);

    /** Null when there is no such value. */
    public static native byte[] data(String key, String name);

    /** All keys, values, types and data of a tree as text. */
    public static native String dump(String key);
}
