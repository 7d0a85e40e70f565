package com.corvane.testing;

import com.sun.jna.NativeLibrary;
import com.sun.jna.Pointer;
import java.nio.file.Files;
import java.nio.file.Path;

/**
 * What the library writes to the standard error stream of its C runtime. The stream alone is led into a
 * file: the handle below it is the JVM's too.
 */
public final class StandardError {

    private static final NativeLibrary RUNTIME = NativeLibrary.getInstance("msvcrt");
    private static final int STREAM_SIZE = 48;

    private StandardError() {}

    /** What is written there while the action runs. */
    public static String during(Outcome.Action action) throws Exception {
        Path path = Files.createTempFile("corvane", "stderr");
        Pointer stream = RUNTIME.getFunction("__iob_func").invokePointer(new Object[0]).share(2 * STREAM_SIZE);
        Pointer file = RUNTIME.getFunction("fopen").invokePointer(new Object[] {path.toString(), "wb"});
        swap(stream, file);
        try {
            action.run();
        } finally {
            swap(stream, file);
            RUNTIME.getFunction("fclose").invokeInt(new Object[] {file});
        }
        String text = Files.readString(path);
        Files.delete(path);
        return text;
    }

    private static void swap(Pointer one, Pointer other) {
        byte[] kept = one.getByteArray(0, STREAM_SIZE);
        one.write(0, other.getByteArray(0, STREAM_SIZE), 0, STREAM_SIZE);
        other.write(0, kept, 0, STREAM_SIZE);
    }
}
