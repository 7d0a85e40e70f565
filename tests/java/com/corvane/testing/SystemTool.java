package com.corvane.testing;

import java.util.List;

/** A program that comes with the system, run to its end. */
public final class SystemTool {

    private SystemTool() {}

    /** All that it prints. */
    public static List<String> lines(String... command) throws Exception {
        Process process = new ProcessBuilder(command).redirectErrorStream(true).start();
        process.getOutputStream().close();
        List<String> lines = process.inputReader().lines().toList();
        if (process.waitFor() != 0) {
            throw new AssertionError(String.join(" ", command) + ": " + lines);
        }
        return lines;
    }
}
