package com.corvane.bench;

import com.corvane.wizard.platform.win32.Win32FileServiceImpl;
import com.corvane.wizard.service.ServiceException;
import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.stream.IntStream;
import java.util.stream.Stream;

/** The files that the rows work on, in a temporary folder of their own. */
final class Workshop implements AutoCloseable {
    static final int FILES = 1000;
    static final int TREE_FILES = 10_000;

    private static final int SIZE = 4096;
    private static final int FILES_A_FOLDER = 100;

    private final Path folder = Files.createTempDirectory("corvane-bench");

    /** Files that are there all the time. */
    private final String[] sources = paths("sources", FILES);

    /** Files that are deleted and then copied anew. */
    private final String[] copies = paths("copies", FILES);

    /** Files that are made and then deleted. */
    private final String[] passing = paths("passing", FILES);

    /** Empty files, two folders deep in a tree that is made and then deleted. */
    private final String[] treeFiles = IntStream.range(0, TREE_FILES / FILES_A_FOLDER)
            .mapToObj(i -> "tree\\%d\\%d".formatted(i / 10, i % 10))
            .flatMap(name -> Stream.of(paths(name, FILES_A_FOLDER)))
            .toArray(String[]::new);

    Workshop() throws IOException {
        make(sources, SIZE);
        make(copies, SIZE);
        make(passing, SIZE);
    }

    private String[] paths(String name, int count) {
        return IntStream.range(0, count)
                .mapToObj(i -> folder.resolve(name).resolve("file%03d.dat".formatted(i)).toString())
                .toArray(String[]::new);
    }

    private static void make(String[] files, int size) throws IOException {
        var folders = Stream.of(files).map(Path::of).map(Path::getParent).distinct().toList();
        for (Path folder : folders) {
            Files.createDirectories(folder);
        }
        check(BareFiles.makeFiles(files, size));
    }

    private static void check(boolean done) throws IOException {
        if (!done) {
            throw new IOException("the files to work on cannot be made or deleted");
        }
    }

    String[] sources() {
        return sources;
    }

    String[] copies() {
        return copies;
    }

    String[] passing() {
        return passing;
    }

    String tree() {
        return folder.resolve("tree").toString();
    }

    void deleteCopies() throws IOException {
        check(BareFiles.deleteAll(copies) >= 0);
    }

    void makePassing() throws IOException {
        check(BareFiles.makeFiles(passing, SIZE));
    }

    void makeTree() throws IOException {
        make(treeFiles, 0);
    }

    @Override
    public void close() throws ServiceException {
        new Win32FileServiceImpl().win32DeleteDirectory(folder.toString(), false, true);
    }
}
