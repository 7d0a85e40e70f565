package com.corvane.bench;

/**
 * The Win32 calls that a careful program in C++ makes for each row. It knows that no file is
 * read-only or in use, so it asks for no attributes first and leaves nothing to a reboot. Those
 * that measure return the nanoseconds that their loop took, -1 when a call failed.
 */
final class BareFiles {
    private BareFiles() {}

    static native long copyAll(String[] sources, String[] targets);

    static native long deleteAll(String[] files);

    static native long deleteTree(String directory);

    static native long setTimes(String file, long time, int calls);

    static native long readAttributes(String file, int calls);

    /** Makes files of {@code size} bytes; false when one cannot be made. Not measured. */
    static native boolean makeFiles(String[] files, int size);
}
