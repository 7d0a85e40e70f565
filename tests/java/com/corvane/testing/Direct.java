package com.corvane.testing;

/**
 * Calls exported functions of the library as the JVM does, to see what they return when they throw too.
 * Each fails with an error when no exception is pending afterwards; the exception itself is dropped.
 */
public final class Direct {

    private Direct() {}

    /** The text that this native of Win32RegistryServiceImpl returns. */
    public static native String getStringValue(int root, String key, String name, boolean expand);

    /** What a native of Win32RegistryServiceImpl returns, whatever its type: 0, false or null is 0. */
    public static native long result(String method, int root, String key, String name);

    /** What a native of Win32FileServiceImpl returns; of its parameters, the first ones count. */
    public static native int fileResult(String method, String first, String second, boolean last);

    /** The text that a native of Win32FileServiceImpl returns; not all have a parameter. */
    public static native String fileText(String method, String parameter);
}
