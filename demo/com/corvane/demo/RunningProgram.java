package com.corvane.demo;

import java.io.IOException;
import java.nio.file.Paths;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;
import java.util.stream.Stream;

/** A program that runs until it is closed; it waits for a line that never comes. */
final class RunningProgram implements AutoCloseable {
    private final Process process;

    private RunningProgram(List<String> command) throws IOException {
        process = new ProcessBuilder(command).start();
        if (process.getInputStream().read() < 0) { // what it prints when it is ready
            throw new IOException(command.get(0) + " ended at once");
        }
    }

    /** The product's own: Windows' command interpreter under another name, asking for a line. */
    static RunningProgram ofProduct() throws IOException {
        return new RunningProgram(
                Arrays.asList(Product.installed(Product.PROGRAM), "/c", "set", "/p", "line=?"));
    }

    /** One that has files of the product open; see {@link FileHolder}. */
    static RunningProgram holding(String... names) throws IOException {
        List<String> command = new ArrayList<>(Arrays.asList(
                Paths.get(System.getProperty("java.home"), "bin", "java").toString(),
                "-XX:-UsePerfData", // which would leave files in the temporary folder
                "-cp", System.getProperty("java.class.path"), FileHolder.class.getName()));
        Stream.of(names).map(Product::installed).forEach(command::add);
        return new RunningProgram(command);
    }

    boolean isRunning() {
        return process.isAlive();
    }

    @Override
    public void close() {
        try {
            process.destroyForcibly().waitFor();
        } catch (InterruptedException e) {
            Thread.currentThread().interrupt();
        }
    }
}
