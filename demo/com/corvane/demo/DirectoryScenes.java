package com.corvane.demo;

import com.corvane.wizard.platform.win32.Win32FileServiceImpl;
import java.io.IOException;
import java.nio.file.AccessDeniedException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.Paths;
import java.util.stream.Stream;

/** Where things go; checked against the environment that Windows gives every program. */
final class DirectoryScenes {
    private static final Path TEMP = Paths.get(System.getProperty("java.io.tmpdir"));
    private static final Path WINDOWS = Paths.get(System.getenv("SystemRoot"));
    private static final Path COMMON = Paths.get(System.getenv("CommonProgramFiles"));

    private static final int INVALID_ARGUMENT = 0x80070057;

    private final Win32FileServiceImpl files = new Win32FileServiceImpl();

    void play(Stage stage) throws IOException {
        Path data = canMakeFileIn(COMMON) ? COMMON : Paths.get(System.getenv("APPDATA"));
        stage.scene("The standard directories");
        isAt(stage, "temporary files", TEMP, files::getTempDirectory);
        isAt(stage, "Windows", WINDOWS, files::win32GetWindowsDirectory);
        isAt(stage, "Windows' libraries", WINDOWS.resolve("system32"), files::getLibraryDirectory);
        isAt(stage, "programs", Paths.get(System.getenv("ProgramFiles")),
                files::getStandardInstallDirectory);
        isAt(stage, "the shared directory", COMMON, files::win32GetCommonDirectory);
        isAt(stage, "product data: the shared directory, if writable", data,
                files::win32GetVPDDirectory);
        tryOut(stage);
    }

    /** As a path, which has neither upper and lower case nor a separator at its end. */
    private static void isAt(Stage stage, String what, Path place, Stage.Question question) {
        stage.gives(what, place, () -> Paths.get((String) question.ask()));
    }

    private static boolean canMakeFileIn(Path directory) throws IOException {
        try {
            Files.delete(Files.createTempFile(directory, "try", ""));
            return true;
        } catch (AccessDeniedException e) {
            return false;
        }
    }

    private void tryOut(Stage stage) throws IOException {
        stage.scene("Where files can be made");
        long before = countIn(TEMP);
        stage.gives("in " + TEMP, true, () -> files.isDirectoryWritable(TEMP.toString()));
        stage.gives("files that the trial has left", 0L, () -> countIn(TEMP) - before);
        stage.gives("in a directory that is not there", false,
                () -> files.isDirectoryWritable(TEMP.resolve("not there").toString()));
        stage.refuses("in a directory without a name", INVALID_ARGUMENT,
                () -> files.isDirectoryWritable(""));
    }

    private static long countIn(Path directory) throws IOException {
        try (Stream<Path> all = Files.list(directory)) {
            return all.count();
        }
    }
}
