package com.corvane.demo;

import java.io.IOException;
import java.nio.file.FileVisitOption;
import java.nio.file.FileVisitResult;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.Paths;
import java.nio.file.SimpleFileVisitor;
import java.nio.file.attribute.BasicFileAttributes;
import java.util.ArrayList;
import java.util.Collections;
import java.util.EnumSet;
import java.util.List;
import java.util.stream.Collectors;
import java.util.stream.Stream;

/** Where installations leave traces: every folder, and every file with size and last write. */
final class DiskListing {
    static final String FOLDER = "folder ";
    static final String FILE = "file ";

    private DiskListing() {}

    static List<String> lines() throws IOException {
        List<String> lines = new ArrayList<>();
        for (Path place : places()) {
            lines.addAll(below(place, Integer.MAX_VALUE));
        }
        // A folder of a person's own may be a link to anywhere.
        for (Path desktop : Shortcut.desktops()) {
            lines.addAll(below(desktop, 1));
        }
        return lines;
    }

    private static List<Path> places() {
        List<Path> places = Host.isWine() ? Stream.of("ProgramFiles", "SystemRoot")
                .map(System::getenv).map(Paths::get).collect(Collectors.toList())
                : new ArrayList<>(Collections.singletonList(Product.ROOT));
        places.add(Paths.get(System.getProperty("java.io.tmpdir")));
        places.addAll(Shortcut.startMenus());
        return places;
    }

    private static List<String> below(Path place, int depth) throws IOException {
        List<String> lines = new ArrayList<>();
        Files.walkFileTree(place, EnumSet.noneOf(FileVisitOption.class), depth, new SimpleFileVisitor<Path>() {
            @Override
            public FileVisitResult preVisitDirectory(Path path, BasicFileAttributes attributes) {
                lines.add(FOLDER + path);
                return FileVisitResult.CONTINUE;
            }

            @Override
            public FileVisitResult visitFile(Path path, BasicFileAttributes attributes) {
                lines.add(attributes.isDirectory() ? FOLDER + path
                        : FILE + path + ' ' + attributes.size() + ' ' + attributes.lastModifiedTime());
                return FileVisitResult.CONTINUE;
            }

            /** What is not there; and some folders of Windows let nobody in. */
            @Override
            public FileVisitResult visitFileFailed(Path path, IOException failure) {
                return FileVisitResult.CONTINUE;
            }
        });
        return lines;
    }
}
