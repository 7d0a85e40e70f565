package com.corvane.demo;

import static com.corvane.demo.HarbourWatch.PROGRAM;
import static com.corvane.demo.Product.installed;

import com.corvane.wizard.platform.win32.Win32ServiceImpl;
import com.corvane.wizard.platform.win32.WindowsFixedFileInfo;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.Paths;

/**
 * What files tell of their versions, by which an installer knows whether what it brings is newer
 * than what is there.
 */
final class VersionChapter implements Chapter {
    static final Path SYSTEM_DLL =
            Paths.get(System.getenv("SystemRoot"), "system32", "kernel32.dll");

    private static final int NO_SHORT_PATH = -1200015;
    private static final int FILE_NOT_FOUND = 2;

    private final Win32ServiceImpl services = new Win32ServiceImpl();

    @Override
    public String name() {
        return "Version: what files tell of themselves";
    }

    @Override
    public void run(Stage stage) throws Exception {
        showVersions(stage);
        showShortPath(stage);
    }

    private void showVersions(Stage stage) throws Exception {
        stage.scene("Versions (the bytes of the files say the same)");
        for (Path file : new Path[] {SYSTEM_DLL, Paths.get(installed(PROGRAM))}) {
            stage.gives("version of " + file.getFileName(), VersionRecord.versionOf(file),
                    () -> infoOf(file.toString()).getFileVersion());
        }
        stage.gives("it is a library, as it says (2)", WindowsFixedFileInfo.TYPE_LIBRARY,
                () -> infoOf(SYSTEM_DLL.toString()).getFileType());
        stage.gives("version of " + Product.NOTES + ", which has none", null,
                () -> infoOf(installed(Product.NOTES)));
    }

    private WindowsFixedFileInfo infoOf(String file) {
        return services.getFixedFileInfo(file);
    }

    private void showShortPath(Stage stage) throws Exception {
        String path = installed(PROGRAM);
        String shortPath = services.getShortPath(path);
        stage.scene("The short path of " + path);
        stage.tells(shortPath);
        stage.gives("it leads to the same file, as the JDK sees it", true,
                () -> Files.isSameFile(Paths.get(path), Paths.get(shortPath)));
        stage.refuses("that of a file that is not there", NO_SHORT_PATH, FILE_NOT_FOUND,
                () -> services.getShortPath(installed("no such file.txt")));
    }
}
