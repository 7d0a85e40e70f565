package com.corvane.demo;

import static com.corvane.demo.HarbourWatch.NAME;
import static com.corvane.demo.HarbourWatch.PROGRAM;
import static com.corvane.demo.Product.installed;
import static com.corvane.demo.Product.onMedium;

import com.corvane.wizard.platform.win32.Win32FileServiceImpl;
import com.corvane.wizard.platform.win32.Win32ServiceImpl;
import com.corvane.wizard.platform.win32.WindowsFixedFileInfo;
import com.corvane.wizard.platform.win32.win32service.NTServiceStatus;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.Paths;

/**
 * What files tell of their versions, by which an installer knows whether what it brings is newer
 * than what is there; and the upgrade of the service that {@link ServiceChapter} has made.
 */
final class VersionChapter implements Chapter {
    private static final Path SYSTEM_DLL =
            Paths.get(System.getenv("SystemRoot"), "system32", "kernel32.dll");

    private static final int NO_SHORT_PATH = -1200015;
    private static final int FILE_NOT_FOUND = 2;

    private final Win32ServiceImpl services = new Win32ServiceImpl();
    private final Win32FileServiceImpl files = new Win32FileServiceImpl();

    @Override
    public String name() {
        return "Version: only what is newer replaces the service's program";
    }

    @Override
    public void run(Stage stage) throws Exception {
        showVersions(stage);
        showShortPath(stage);
        keep(stage);
        upgrade(stage);
        stage.gives("delete the medium", 0, () -> files.win32DeleteDirectory(
                Product.MEDIUM.toString(), false, true));
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

    private void keep(Stage stage) {
        stage.scene("A medium with the version that is there");
        stage.gives("its " + PROGRAM + " is newer, so it is taken", false, this::isNewer);
    }

    private boolean isNewer() {
        return Long.compareUnsigned(numberOf(onMedium(PROGRAM)), numberOf(installed(PROGRAM))) > 0;
    }

    /** The four numbers as one. */
    private long numberOf(String file) {
        WindowsFixedFileInfo info = infoOf(file);
        return (long) info.getFileVersionMS() << Integer.SIZE
                | Integer.toUnsignedLong(info.getFileVersionLS());
    }

    private void upgrade(Stage stage) throws Exception {
        String configuration = services.queryNTServiceConfig(NAME).toString();
        stage.scene("A medium with version 2; the service stops for it");
        stage.does("make it", () -> HarbourWatch.makeMedium(2));
        stage.gives("its " + PROGRAM + " is newer, so it is taken", true, this::isNewer);
        stage.does("stop the service", HarbourWatch::stop);
        stage.gives("its program is in use, as the JDK sees it", false,
                HarbourWatch::isProgramInUse);
        stage.gives("copy " + PROGRAM + " (0: done now, without a reboot)", 0,
                () -> files.win32CopyFile(onMedium(PROGRAM), installed(PROGRAM), true));
        stage.gives("its version", "2.0.0.0", () -> infoOf(installed(PROGRAM)).getFileVersion());
        stage.does("start the service", () -> services.startNTService(NAME, null));
        stage.gives("its state (4: running)", NTServiceStatus.SERVICE_RUNNING,
                () -> HarbourWatch.stateOnceIn(NTServiceStatus.SERVICE_RUNNING));
        stage.gives("its configuration is as it was", configuration,
                () -> services.queryNTServiceConfig(NAME).toString());
    }
}
