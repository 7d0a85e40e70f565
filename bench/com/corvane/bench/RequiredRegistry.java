package com.corvane.bench;

/**
 * The calls of Windows and of JNI that the library owes its callers in each row of {@link RegistryRows},
 * made by a plain native method: besides the bare calls the copies of texts, the questions which
 * Windows this is, guards, look-ups and sizes. What the library takes longer is its own. A call
 * that fails throws an IllegalStateException.
 */
final class RequiredRegistry {
    private RequiredRegistry() {}

    static native String readString(String key, String name);

    static native int readNumber(String key, String name);

    static native byte[] readBytes(String key, String name);

    static native String[] listNames(String key);

    static native void writeString(String key, String name, String text);

    static native void testKey(String key);
}
