package com.corvane.demo;

import static com.corvane.wizard.platform.win32.Win32FileServiceImpl.PARTITION_FIXED;
import static com.corvane.wizard.platform.win32.Win32FileServiceImpl.PARTITION_UNKNOWN;

import com.corvane.wizard.platform.win32.Win32FileServiceImpl;
import java.io.File;
import java.io.IOException;
import java.nio.file.FileStore;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.Paths;
import java.util.Arrays;
import java.util.Collections;
import java.util.stream.IntStream;
import java.util.stream.Stream;

/** The drives, above all the one that Windows is on; checked against the JDK. */
final class DriveScenes {
    private static final int FORMAT_UNKNOWN = -30010;
    private static final int SPACE_UNKNOWN = -30004;
    private static final int PATH_NOT_FOUND = 3;

    /** Others use the drive meanwhile. */
    private static final double TOLERANCE = 0.01;

    private static final int LONGEST_NAME = 255;

    private final Win32FileServiceImpl files = new Win32FileServiceImpl();
    private final String drive = Product.FOLDER.getRoot().toString();

    void play(Stage stage) throws Exception {
        String[] roots = Stream.of(File.listRoots()).map(File::getPath).toArray(String[]::new);
        stage.scene("The drives");
        stage.gives("all of them", roots, files::getPartitionNames);
        showDrive(stage);
        failOnPurpose(stage, missingDrive(roots));
    }

    private void showDrive(Stage stage) throws Exception {
        FileStore store = Files.getFileStore(Paths.get(drive));
        stage.gives("the kind of " + drive + " (1: a fixed drive)", PARTITION_FIXED,
                () -> files.getPartitionType(drive));
        stage.gives("its format", store.type(), () -> files.getPartitionFormat(drive));
        stage.gives("its free space (the JDK says about the same)", true, () -> isAbout(
                store.getUsableSpace(), files.getPartitionFreeSpace(drive)));
        stage.tells(files.getPartitionFreeSpace(drive) + " bytes");
        stage.gives("takes names of " + LONGEST_NAME + " characters (one was tried)",
                takesLongName(), () -> files.supportsLongFileNames(drive));
    }

    private static boolean isAbout(long expected, long bytes) {
        return Math.abs(bytes - expected) <= expected * TOLERANCE;
    }

    private static boolean takesLongName() throws IOException {
        String name = String.join("", Collections.nCopies(LONGEST_NAME, "n"));
        Path file = Paths.get(System.getProperty("java.io.tmpdir"), name);
        return Files.deleteIfExists(Files.createFile(file));
    }

    private void failOnPurpose(Stage stage, String missing) {
        stage.scene("A drive that is not there");
        stage.gives("the kind of " + missing + " (-1: none)", PARTITION_UNKNOWN,
                () -> files.getPartitionType(missing));
        stage.refuses("its format", FORMAT_UNKNOWN, PATH_NOT_FOUND,
                () -> files.getPartitionFormat(missing));
        stage.refuses("its free space", SPACE_UNKNOWN, PATH_NOT_FOUND,
                () -> files.getPartitionFreeSpace(missing));
    }

    private static String missingDrive(String[] roots) {
        return IntStream.rangeClosed('D', 'Z').mapToObj(letter -> (char) letter + ":\\")
                .filter(root -> !Arrays.asList(roots).contains(root)).findFirst().get();
    }
}
