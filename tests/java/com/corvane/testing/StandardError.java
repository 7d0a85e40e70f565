package com.corvane.testing;

import com.sun.jna.Memory;
import com.sun.jna.NativeLibrary;
import com.sun.jna.Pointer;

/**
 * What the library writes to the standard error stream of its C runtime. The stream alone gets another
 * buffer: the handle below it is the JVM's too.
 */
public final class StandardError {

    private static final NativeLibrary RUNTIME = NativeLibrary.getInstance("msvcrt");
    private static final int STREAM_SIZE = 48;
    private static final int FULL = 0;
    private static final int NONE = 4;

    private StandardError() {}

    /** What is written there while the action runs. */
    public static String during(Outcome.Action action) throws Exception {
        Pointer stream = RUNTIME.getFunction("__iob_func").invokePointer(new Object[0]).share(2 * STREAM_SIZE);
        Memory buffer = new Memory(1 << 12);
        buffer.clear();
        RUNTIME.getFunction("setvbuf").invokeInt(new Object[] {stream, buffer, FULL, (int) buffer.size()});
        try {
            action.run();
            return buffer.getString(0);
        } finally {
            RUNTIME.getFunction("setvbuf").invokeInt(new Object[] {stream, null, NONE, 0});
        }
    }
}
