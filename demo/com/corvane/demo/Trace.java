package com.corvane.demo;

import java.io.IOException;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.NoSuchFileException;
import java.nio.file.Path;

/** A file that a program leaves which was started by somebody else, and ends sometime. */
final class Trace {
    private Trace() {}

    /** Waits for the file, removes it, and returns its text without the line break. */
    static String take(Path file) throws Exception {
        String text = Waiting.forAnswer(taken -> !taken.isEmpty(), () -> taken(file));
        if (text.isEmpty()) {
            throw new NoSuchFileException(file.toString());
        }
        return text;
    }

    /** Empty as long as the program has the file open or not made it yet. */
    private static String taken(Path file) {
        try {
            String text = new String(Files.readAllBytes(file), StandardCharsets.UTF_8).trim();
            if (!text.isEmpty()) {
                Files.delete(file);
            }
            return text;
        } catch (IOException e) {
            return "";
        }
    }
}
