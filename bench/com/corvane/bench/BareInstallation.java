package com.corvane.bench;

/**
 * The Win32 calls that answer each row's question, made in a loop of C++. Each returns the
 * nanoseconds that its loop took, -1 when a call failed.
 */
final class BareInstallation {
    private BareInstallation() {}

    static native long temporaryDirectory(int calls);

    static native long programsDirectory(int calls);

    static native long freeSpace(String root, int calls);

    /** Leaves a token open in each call, as the library does. */
    static native long checkAdministrator(int calls);

    static native long readOwner(String file, int calls);

    /** Works on a thread that has started COM. */
    static native long makeShortcut(String file, String target, String directory, int calls);
}
