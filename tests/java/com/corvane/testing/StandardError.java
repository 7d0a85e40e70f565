package com.corvane.testing;

import java.nio.file.Files;
import java.nio.file.Path;

/** What the library writes to the standard error stream of the process. */
public final class StandardError {

    private StandardError() {}

    /** What is written there while the action runs. */
    public static String during(Outcome.Action action) throws Exception {
        Path file = Path.of(System.getProperty("java.io.tmpdir"), "corvane-stderr.txt");
        redirect(file.toString());
        try {
            action.run();
        } finally {
            restore();
        }
        String text = Files.readString(file);
        Files.delete(file);
        return text;
    }

    private static native void redirect(String file);

    private static native void restore();
}
