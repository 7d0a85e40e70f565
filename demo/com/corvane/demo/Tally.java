package com.corvane.demo;

import java.io.IOException;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.Paths;

/** The steps of the parts, all as expected; kept in a file from one part to the next. */
final class Tally {
    private static final Path FILE = Paths.get("corvane-demo-steps.txt");
    private static final String NOTHING = "0 0";

    private final int part;
    private final int partsBefore;
    private final int stepsBefore;

    private Tally(int part, String[] before) {
        this.part = part;
        partsBefore = Integer.parseInt(before[0]);
        stepsBefore = Integer.parseInt(before[1]);
    }

    /**
     * Takes what the parts before the given one have left, the first of which is 0. The file goes:
     * a part that fails leaves none.
     */
    static Tally takenBy(int part) throws IOException {
        boolean isLeft = part > 0 && Files.exists(FILE);
        String before = isLeft ? new String(Files.readAllBytes(FILE), StandardCharsets.UTF_8)
                : NOTHING;
        Files.deleteIfExists(FILE);
        return new Tally(part, before.split(" "));
    }

    /** Whether each of the parts before has come out as expected, one after the other. */
    boolean isWhole() {
        return partsBefore == part;
    }

    int with(int steps) {
        return stepsBefore + steps;
    }

    /** For the next part. */
    void leave(int steps) throws IOException {
        if (isWhole()) {
            String line = part + 1 + " " + with(steps);
            Files.write(FILE, line.getBytes(StandardCharsets.UTF_8));
        }
    }
}
