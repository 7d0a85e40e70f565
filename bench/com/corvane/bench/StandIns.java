package com.corvane.bench;

/**
 * Answers in place of Windows, for the time of a {@code try}: the library's system calls return at
 * once with what the rows expect, so that what is left of a call's time is the library's own.
 */
final class StandIns implements AutoCloseable {
    StandIns() {
        if (!swap()) {
            throw new IllegalStateException("the library's imports cannot be replaced");
        }
    }

    @Override
    public void close() {
        swap();
    }

    /** Puts the stand-ins in place of the system's functions, or these back; false on failure. */
    private static native boolean swap();
}
