package com.corvane.bench;

/**
 * Answers in place of Windows, for the time of a {@code try}: the system calls of the library and
 * those made beside it return at once with what the rows expect, so that the system's time is in
 * neither.
 */
final class StandIns implements AutoCloseable {
    StandIns() {
        if (!swap()) {
            throw new IllegalStateException("the imports cannot be replaced");
        }
    }

    @Override
    public void close() {
        swap();
    }

    /** Puts the stand-ins in place of the system's functions, or these back; false on failure. */
    private static native boolean swap();
}
