package com.corvane.bench;

import java.io.IOException;
import java.nio.file.FileVisitResult;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.SimpleFileVisitor;
import java.nio.file.attribute.BasicFileAttributeView;
import java.nio.file.attribute.BasicFileAttributes;
import java.nio.file.attribute.DosFileAttributes;
import java.nio.file.attribute.FileTime;

/** The rows' work through java.nio.file. */
final class JdkFiles {
    private JdkFiles() {}

    static void copyAll(Path[] sources, Path[] targets) throws IOException {
        for (int i = 0; i < sources.length; i++) {
            Files.copy(sources[i], targets[i]);
        }
    }

    static void deleteAll(Path[] files) throws IOException {
        for (Path file : files) {
            Files.delete(file);
        }
    }

    static void deleteTree(Path directory) throws IOException {
        Files.walkFileTree(directory, new SimpleFileVisitor<>() {
            @Override
            public FileVisitResult visitFile(Path file, BasicFileAttributes attributes)
                    throws IOException {
                Files.delete(file);
                return FileVisitResult.CONTINUE;
            }

            @Override
            public FileVisitResult postVisitDirectory(Path walked, IOException failure)
                    throws IOException {
                Files.delete(walked);
                return FileVisitResult.CONTINUE;
            }
        });
    }

    static void setTimes(Path file, FileTime time) throws IOException {
        Files.getFileAttributeView(file, BasicFileAttributeView.class).setTimes(time, time, time);
    }

    static void readAttributes(Path file) throws IOException {
        Files.readAttributes(file, DosFileAttributes.class);
    }
}
