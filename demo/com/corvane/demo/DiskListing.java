package com.corvane.demo;

import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.Paths;
import java.nio.file.attribute.BasicFileAttributes;
import java.util.ArrayList;
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
        List<Path> places = Stream.of("ProgramFiles", "SystemRoot")
                .map(System::getenv).map(Paths::get).collect(Collectors.toList());
        places.add(Paths.get(System.getProperty("java.io.tmpdir")));
        places.addAll(Shortcut.startMenus());
        return places;
    }

    private static List<String> below(Path place, int depth) throws IOException {
        List<String> lines = new ArrayList<>();
        try (Stream<Path> all = Files.walk(place, depth)) {
            for (Path path : (Iterable<Path>) all::iterator) {
                lines.add(line(path));
            }
        }
        return lines;
    }

    private static String line(Path path) throws IOException {
        BasicFileAttributes attributes = Files.readAttributes(path, BasicFileAttributes.class);
        return attributes.isDirectory() ? FOLDER + path
                : FILE + path + ' ' + attributes.size() + ' ' + attributes.lastModifiedTime();
    }
}
