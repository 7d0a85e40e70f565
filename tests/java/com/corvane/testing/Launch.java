package com.corvane.testing;

import java.io.IOException;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.List;
import java.util.Optional;
import java.util.concurrent.TimeUnit;

/** How a program was started: where it stands itself, its command line and its working directory. */
public record Launch(String program, String commandLine, String directory) {

    private static final Path RECORDER = Path.of(System.getProperty("corvane.test.recorder"));
    private static final long LIMIT_SECONDS = 60;

    /** Puts a program there that records its start. */
    public static String place(String program) throws IOException {
        Files.createDirectories(Path.of(program).getParent());
        return Files.copy(RECORDER, Path.of(program)).toString();
    }

    /** Opens a file as a person does, by the shell, and waits until this program has started and ended. */
    public static Launch ofOpening(String file, String program) throws Exception {
        SystemTool.lines("cmd.exe", "/c", "start", "", file);
        Path record = Path.of(program + ".started");
        await(record);
        List<String> lines = Files.readString(record, StandardCharsets.UTF_16LE).lines().toList();
        awaitEnd(Long.parseLong(lines.get(3)));
        return new Launch(lines.get(0), lines.get(1), lines.get(2));
    }

    private static void await(Path file) throws InterruptedException {
        long end = System.nanoTime() + TimeUnit.SECONDS.toNanos(LIMIT_SECONDS);
        while (!Files.exists(file)) {
            if (System.nanoTime() > end) {
                throw new AssertionError("waited in vain for " + file);
            }
            Thread.sleep(20);
        }
    }

    /** As long as it runs, its files and its working directory are in use. */
    private static void awaitEnd(long process) throws Exception {
        Optional<ProcessHandle> running = ProcessHandle.of(process);
        if (running.isPresent()) {
            running.get().onExit().get(LIMIT_SECONDS, TimeUnit.SECONDS);
        }
    }
}
