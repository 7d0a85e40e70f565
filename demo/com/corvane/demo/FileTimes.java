package com.corvane.demo;

import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Paths;
import java.nio.file.attribute.BasicFileAttributes;
import java.time.Duration;
import java.time.Instant;

/** Windows' times of files: the library takes them as they are, so that no bit of one is lost. */
final class FileTimes {
    private static final Instant ZERO = Instant.parse("1601-01-01T00:00:00Z");

    private FileTimes() {}

    /** The 100-nanosecond intervals since Windows' zero. */
    static long of(Instant time) {
        Duration since = Duration.between(ZERO, time);
        return since.getSeconds() * 10_000_000 + since.getNano() / 100;
    }

    static Instant lastWrite(String file) throws IOException {
        return attributesOf(file).lastModifiedTime().toInstant();
    }

    static Instant lastAccess(String file) throws IOException {
        return attributesOf(file).lastAccessTime().toInstant();
    }

    private static BasicFileAttributes attributesOf(String file) throws IOException {
        return Files.readAttributes(Paths.get(file), BasicFileAttributes.class);
    }
}
