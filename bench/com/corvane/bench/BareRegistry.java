package com.corvane.bench;

/**
 * The Win32 calls that the library makes for each row, made in the same order in a loop of C++.
 * Each returns the nanoseconds that its loop took, -1 when a call failed.
 */
final class BareRegistry {
    private BareRegistry() {}

    static native long readString(int calls);

    static native long readNumber(int calls);

    static native long readBytes(int calls);

    static native long listNames(int calls);

    static native long writeString(int calls);

    static native long testKey(int calls);
}
