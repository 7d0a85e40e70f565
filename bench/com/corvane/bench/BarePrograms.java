package com.corvane.bench;

/**
 * The Win32 calls that do each row's work, made in a loop of C++. Each returns the nanoseconds that
 * its loop took, -1 when a call failed.
 */
final class BarePrograms {
    private BarePrograms() {}

    /** Reads the program's output until its end, which no caller in Java sees. */
    static native long run(String commandLine, int calls);

    static native long readVariable(String name, int calls);

    static native long setVariable(String name, String value, int calls);
}
