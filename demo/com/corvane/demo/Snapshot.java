package com.corvane.demo;

import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.Paths;
import java.util.List;
import java.util.SortedSet;
import java.util.TreeSet;
import java.util.stream.Collectors;
import java.util.stream.Stream;

/**
 * The registry and the disk at one time, a line for each key, value, file and folder, without what
 * {@link OwnChanges} leaves out. It is taken past the library, and kept in a file meanwhile.
 */
final class Snapshot {
    /** What a line of {@link #changesTo} begins with that has come. */
    static final String NEW = "+ ";

    private static final Path FILE = Paths.get("corvane-demo-before.txt");

    private final SortedSet<String> lines;

    private Snapshot(Stream<String> lines) {
        this.lines = lines.collect(Collectors.toCollection(TreeSet::new));
    }

    static Snapshot take() throws IOException, InterruptedException {
        SortedSet<String> all = new TreeSet<>(DiskListing.lines());
        for (String root : RegistryExport.ROOTS) {
            all.addAll(RegistryExport.lines(root));
        }
        return new Snapshot(all.stream().filter(line -> !OwnChanges.contain(line)));
    }

    void save() throws IOException {
        Files.write(FILE, lines);
    }

    static Snapshot saved() throws IOException {
        return new Snapshot(Files.readAllLines(FILE).stream());
    }

    static void forget() throws IOException {
        Files.delete(FILE);
    }

    /** Each of the parts that are compared has something. */
    boolean isWhole() {
        return Stream.of("[HKEY_LOCAL_MACHINE\\S", "[HKEY_CURRENT_USER\\",
                        DiskListing.FOLDER, Host.isWine() ? DiskListing.FILE : "")
                .allMatch(part -> lines.stream().anyMatch(line -> line.startsWith(part)));
    }

    /** What is only in one of the two, marked with the sign of its coming or going. */
    List<String> changesTo(Snapshot after) {
        return Stream.concat(
                        linesWithout(after).map("- "::concat),
                        after.linesWithout(this).map(NEW::concat))
                .collect(Collectors.toList());
    }

    private Stream<String> linesWithout(Snapshot other) {
        return lines.stream().filter(line -> !other.lines.contains(line)).filter(OwnChanges::areSeenIn);
    }
}
