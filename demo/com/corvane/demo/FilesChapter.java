package com.corvane.demo;

import static com.corvane.demo.Product.FOLDER;
import static com.corvane.demo.Product.HELP;
import static com.corvane.demo.Product.NOTES;
import static com.corvane.demo.Product.PROGRAM;
import static com.corvane.demo.Product.WORDS;
import static com.corvane.demo.Product.installed;
import static com.corvane.demo.Product.onMedium;

import com.corvane.util.FileAttributes;
import com.corvane.wizard.platform.win32.Win32FileServiceImpl;
import com.corvane.wizard.service.ServiceException;
import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.Paths;
import java.time.Instant;
import java.util.Arrays;
import java.util.stream.Stream;

/** The files of a small product: copied, given times and attributes, moved, and removed again. */
final class FilesChapter implements Chapter {
    /** To the microsecond: an older JDK reads no more of a time. */
    private static final Instant RELEASED = Instant.parse("2024-02-29T12:34:56.789123Z");
    private static final Instant TRANSLATED = Instant.parse("2025-12-31T23:59:59Z");

    private static final int NOT_COPIED = -30017;
    private static final int DIRECTORY_NOT_DELETED = -30020;

    private final Win32FileServiceImpl files = new Win32FileServiceImpl();

    @Override
    public String name() {
        return "Files: a small product in " + FOLDER;
    }

    @Override
    public void run(Stage stage) throws Exception {
        try {
            install(stage);
            giveTimes(stage);
            giveAttributes(stage);
            moveAndDelete(stage);
            failOnPurpose(stage);
            askTheSystem(stage);
        } finally {
            cleanUp(stage);
        }
    }

    private void install(Stage stage) {
        stage.scene("Copies (0: done)");
        stage.does("make the medium, in the temporary folder", () -> Product.makeMedium(1));
        stage.does("make the product's folders", Product::makeFolders);
        Stream.of(PROGRAM, NOTES, WORDS, HELP).forEach(name -> {
            stage.gives("copy " + name, 0, () -> copy(name, false));
            stage.gives("it is the same, byte for byte", true, () -> isTheSame(name));
        });
    }

    private int copy(String name, boolean overwrite) throws ServiceException {
        return files.win32CopyFile(onMedium(name), installed(name), overwrite);
    }

    private static boolean isTheSame(String name) throws IOException {
        byte[] copy = Files.readAllBytes(FOLDER.resolve(name));
        return Arrays.equals(Files.readAllBytes(Paths.get(onMedium(name))), copy);
    }

    private void giveTimes(Stage stage) {
        long released = FileTimes.of(RELEASED);
        stage.scene("Times");
        stage.does("set the three times of " + PROGRAM,
                () -> files.win32SetFileTimes(installed(PROGRAM), released, released, released));
        stage.gives("its last write", RELEASED, () -> FileTimes.lastWrite(installed(PROGRAM)));
        stage.gives("its last access", RELEASED, () -> FileTimes.lastAccess(installed(PROGRAM)));
        stage.does("set the last write of " + HELP,
                () -> files.win32SetFileModified(installed(HELP), FileTimes.of(TRANSLATED)));
        stage.gives("its last write", TRANSLATED, () -> FileTimes.lastWrite(installed(HELP)));
        // Not every file system stores a time of creation that it is given.
        stage.does("set the creation of " + HELP,
                () -> files.win32SetFileCreated(installed(HELP), released));
        stage.gives("its last write is as it was", TRANSLATED,
                () -> FileTimes.lastWrite(installed(HELP)));
    }

    private void giveAttributes(Stage stage) {
        Path words = FOLDER.resolve(WORDS);
        stage.scene("Attributes");
        stage.does("make " + WORDS + " read-only and archived", () -> setReadOnly(WORDS));
        stage.gives("it may be written", false, () -> isWriteable(WORDS));
        stage.gives("it is read-only, as the JDK sees it", true,
                () -> Files.getAttribute(words, "dos:readonly"));
        String answer = stage.run("attrib", installed(WORDS));
        stage.gives("the letter R (read-only) is shown", true,
                () -> answer.substring(0, answer.indexOf(":\\")).contains("R"));
        stage.does("set its last write", () -> files.win32SetFileModified(
                installed(WORDS), FileTimes.of(TRANSLATED)));
        stage.gives("it may be written now", false, () -> isWriteable(WORDS));
        stage.gives("copy " + WORDS + " over it", 0, () -> copy(WORDS, true));
        stage.gives("it may be written, like its source", true, () -> isWriteable(WORDS));
    }

    private void setReadOnly(String name) throws ServiceException {
        FileAttributes attributes = new FileAttributes();
        attributes.setAttributeState(FileAttributes.ARCHIVE, true);
        files.setFileAttributes(installed(name), attributes);
    }

    private boolean isWriteable(String name) throws ServiceException {
        return files.getFileAttributes(installed(name))
                .getAttributeState(FileAttributes.OWNER_WRITEABLE);
    }

    private void moveAndDelete(Stage stage) {
        stage.scene("A file that moves, and one that goes");
        stage.gives("move " + WORDS, 0, () -> files.win32MoveFile(
                installed(WORDS), installed("spelling.dic"), false));
        stage.gives("delete " + HELP, 0, () -> files.win32DeleteFile(installed(HELP)));
        String product = FOLDER.getFileName() + "\\";
        String[] left = {
            product, product + "help\\", product + "help\\french\\", product + NOTES,
            product + PROGRAM, product + "spelling.dic"
        };
        stage.gives("what there is now", left, Product::listing);
    }

    private void failOnPurpose(Stage stage) {
        stage.scene("Steps that must fail");
        stage.refuses("copy " + NOTES + " again, without leave to overwrite", NOT_COPIED,
                () -> copy(NOTES, false));
        stage.refuses("remove the folder alone, which is not empty", DIRECTORY_NOT_DELETED,
                () -> files.win32DeleteDirectory(FOLDER.toString(), true, false));
    }

    private void askTheSystem(Stage stage) {
        stage.scene("The same files as the system's own tool shows them");
        String answer = stage.run("cmd", "/c", "dir", FOLDER.toString());
        stage.gives("all of them are shown", true,
                () -> Stream.of(PROGRAM, NOTES, "spelling.dic", "help").allMatch(answer::contains));
    }

    private void cleanUp(Stage stage) {
        stage.scene("Clean up");
        for (Path folder : new Path[] {Product.ROOT, Product.MEDIUM}) {
            stage.gives("delete " + folder.getFileName() + " and all below it", 0,
                    () -> files.win32DeleteDirectory(folder.toString(), false, true));
            stage.gives("the folder is still there", false, () -> Files.exists(folder));
        }
    }
}
