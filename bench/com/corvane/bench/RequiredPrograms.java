package com.corvane.bench;

import java.io.OutputStream;

/**
 * The calls of Windows and of JNI that the library owes its callers in each row of {@link ProgramRows},
 * made by a plain native method. A call that fails throws an IllegalStateException.
 */
final class RequiredPrograms {
    private RequiredPrograms() {}

    /** Looks for output every tenth of a second, and hands over each byte by a call. */
    static native void run(String commandLine, OutputStream output, OutputStream errors);

    static native String readVariable(String name);

    static native void setVariable(String name, String value);
}
