package com.corvane.testing;

import java.io.IOException;
import java.util.List;

/** Another process that has a file in use until it is told to end. */
public final class FileUser {

    /** The program: a copy of it that runs is itself a file in use. */
    public static final String PROGRAM = System.getProperty("corvane.test.user");

    /** How the file is shared with others. */
    public static final int WITH_READERS = 1;
    public static final int WITH_READERS_AND_DELETERS = 5;

    private final Process process;

    private FileUser(List<String> command) throws IOException {
        process = new ProcessBuilder(command).redirectErrorStream(true).start();
        String said = process.inputReader().readLine();
        if (!"ready".equals(said)) {
            throw new AssertionError(command + ": " + said);
        }
    }

    /** Has a file open. */
    public static FileUser opens(String file, int sharing) throws IOException {
        return new FileUser(List.of(PROGRAM, Integer.toString(sharing), file));
    }

    /** Runs a copy of the program. */
    public static FileUser runs(String copy) throws IOException {
        return new FileUser(List.of(copy));
    }

    /** Ends it after the action. */
    public void during(Outcome.Action action) throws Exception {
        try {
            action.run();
        } finally {
            end();
        }
    }

    public void end() throws Exception {
        process.getOutputStream().close();
        process.waitFor();
    }
}
