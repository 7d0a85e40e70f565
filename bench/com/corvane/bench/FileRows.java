package com.corvane.bench;

import com.corvane.wizard.platform.win32.Win32FileServiceImpl;
import com.corvane.wizard.service.ServiceException;
import com.sun.jna.platform.win32.WinBase.FILETIME;
import java.io.IOException;
import java.nio.file.Path;
import java.nio.file.attribute.FileTime;
import java.time.Instant;
import java.util.Date;
import java.util.List;
import java.util.stream.Stream;

/** Work on files of 4 KB, none of which is in use. */
final class FileRows implements RowGroup {
    private static final Instant TIME = Instant.parse("2024-02-29T12:34:56Z");

    private final Win32FileServiceImpl files = new Win32FileServiceImpl();
    private final Workshop shop = new Workshop();

    FileRows() throws IOException {}

    @Override
    public List<Row> rows() {
        return List.of(copying(), deleting(), deletingTree(), settingTimes(), readingAttributes());
    }

    private Row copying() {
        String[] sources = shop.sources();
        String[] copies = shop.copies();
        Path[] sourcePaths = pathsOf(sources);
        Path[] copyPaths = pathsOf(copies);
        return new Row("copy 1,000 files", Workshop.FILES,
                Timed.on(shop::deleteCopies, Timed.of(() -> copyAll(sources, copies))),
                Timed.on(shop::deleteCopies,
                        Timed.of(() -> copyAllRequired(sources, copies))),
                Timed.on(shop::deleteCopies, calls -> BareFiles.copyAll(sources, copies)),
                Timed.on(shop::deleteCopies, Timed.of(() -> JnaFiles.copyAll(sources, copies))),
                Timed.on(shop::deleteCopies,
                        Timed.of(() -> JdkFiles.copyAll(sourcePaths, copyPaths))));
    }

    private Row deleting() {
        String[] passing = shop.passing();
        Path[] paths = pathsOf(passing);
        return new Row("delete 1,000 files", Workshop.FILES,
                Timed.on(shop::makePassing, Timed.of(() -> deleteAll(passing))),
                Timed.on(shop::makePassing, Timed.of(() -> deleteAllRequired(passing))),
                Timed.on(shop::makePassing, calls -> BareFiles.deleteAll(passing)),
                Timed.on(shop::makePassing, Timed.of(() -> JnaFiles.deleteAll(passing))),
                Timed.on(shop::makePassing, Timed.of(() -> JdkFiles.deleteAll(paths))));
    }

    private Row deletingTree() {
        String tree = shop.tree();
        return new Row("delete a tree of 10,000", Workshop.TREE_FILES,
                Timed.on(shop::makeTree,
                        Timed.of(() -> files.win32DeleteDirectory(tree, false, true))),
                Timed.on(shop::makeTree, Timed.of(() -> RequiredFiles.deleteTree(tree))),
                Timed.on(shop::makeTree, calls -> BareFiles.deleteTree(tree)),
                Timed.on(shop::makeTree, Timed.of(() -> JnaFiles.deleteTree(tree))),
                Timed.on(shop::makeTree, Timed.of(() -> JdkFiles.deleteTree(Path.of(tree)))));
    }

    private Row settingTimes() {
        String file = shop.sources()[0];
        Path path = Path.of(file);
        FILETIME fileTime = new FILETIME(Date.from(TIME));
        long time = fileTime.toDWordLong().longValue();
        FileTime nioTime = FileTime.from(TIME);
        return new Row("set three times", 1,
                Timed.of(() -> files.win32SetFileTimes(file, time, time, time)),
                Timed.of(() -> RequiredFiles.setTimes(file, time)),
                calls -> BareFiles.setTimes(file, time, calls),
                Timed.of(() -> JnaFiles.setTimes(file, fileTime)),
                Timed.of(() -> JdkFiles.setTimes(path, nioTime)));
    }

    private Row readingAttributes() {
        String file = shop.sources()[0];
        Path path = Path.of(file);
        return new Row("read attributes", 1,
                Timed.of(() -> files.getFileAttributes(file)),
                Timed.of(() -> RequiredFiles.readAttributes(file)),
                calls -> BareFiles.readAttributes(file, calls),
                Timed.of(() -> JnaFiles.readAttributes(file)),
                Timed.of(() -> JdkFiles.readAttributes(path)));
    }

    private void copyAll(String[] sources, String[] copies) throws ServiceException {
        for (int i = 0; i < sources.length; i++) {
            files.win32CopyFile(sources[i], copies[i], true);
        }
    }

    private void deleteAll(String[] passing) throws ServiceException {
        for (String file : passing) {
            files.win32DeleteFile(file);
        }
    }

    private static void copyAllRequired(String[] sources, String[] copies) {
        for (int i = 0; i < sources.length; i++) {
            RequiredFiles.copy(sources[i], copies[i]);
        }
    }

    private static void deleteAllRequired(String[] passing) {
        for (String file : passing) {
            RequiredFiles.delete(file);
        }
    }

    private static Path[] pathsOf(String[] files) {
        return Stream.of(files).map(Path::of).toArray(Path[]::new);
    }

    @Override
    public void close() throws ServiceException {
        shop.close();
    }
}
