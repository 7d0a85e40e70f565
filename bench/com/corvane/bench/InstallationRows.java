package com.corvane.bench;

import static com.sun.jna.platform.win32.Advapi32Util.registryGetStringValue;

import com.corvane.wizard.platform.win32.Win32DesktopServiceImpl;
import com.corvane.wizard.platform.win32.Win32FileServiceImpl;
import com.corvane.wizard.platform.win32.Win32SecurityServiceImpl;
import com.corvane.wizard.service.ServiceException;
import com.sun.jna.platform.win32.WinReg;
import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.List;

/**
 * What an installer asks first, and a shortcut that is made over and over.
 *
 * <p>The thread is the one that loaded the library, which has started COM on it for all. The JDK
 * knows the directories from its own start only.
 */
final class InstallationRows implements RowGroup {
    private static final String ROOT = "C:\\";
    private static final String CURRENT_VERSION =
            "SOFTWARE\\Microsoft\\Windows\\CurrentVersion";

    /** Each call of the check leaves a token open: some ten thousand in the run will do. */
    private static final int CHECKS_A_ROUND = 8;

    private final Win32FileServiceImpl files = new Win32FileServiceImpl();
    private final Win32SecurityServiceImpl security = new Win32SecurityServiceImpl();
    private final Win32DesktopServiceImpl desktop = new Win32DesktopServiceImpl();
    private final Path folder = Files.createTempDirectory("corvane-bench");
    private final Path file = Files.createFile(folder.resolve("notes.exe"));

    InstallationRows() throws IOException {}

    @Override
    public List<Row> rows() {
        return List.of(temporaryDirectory(), programsDirectory(), freeSpace(), administrator(),
                owner(), shortcut());
    }

    private Row temporaryDirectory() {
        return new Row("temporary directory", 1,
                Timed.of(files::getTempDirectory),
                Timed.of(RequiredInstallation::temporaryDirectory),
                BareInstallation::temporaryDirectory,
                Timed.of(JnaInstallation::temporaryDirectory),
                null);
    }

    private Row programsDirectory() {
        return new Row("programs directory", 1,
                Timed.of(files::getStandardInstallDirectory),
                Timed.of(RequiredInstallation::programsDirectory),
                BareInstallation::programsDirectory,
                Timed.of(() -> registryGetStringValue(
                        WinReg.HKEY_LOCAL_MACHINE, CURRENT_VERSION, "ProgramFilesDir")),
                null);
    }

    private Row freeSpace() {
        Path root = Path.of(ROOT);
        return new Row("free space", 1,
                Timed.of(() -> files.getPartitionFreeSpace(ROOT)),
                Timed.of(() -> RequiredInstallation.freeSpace(ROOT)),
                calls -> BareInstallation.freeSpace(ROOT, calls),
                Timed.of(() -> JnaInstallation.freeSpace(ROOT)),
                Timed.of(() -> Files.getFileStore(root).getUsableSpace()));
    }

    private Row administrator() {
        return new Row("administrator check", 1,
                Timed.atMost(CHECKS_A_ROUND, Timed.of(security::isCurrentUserAdmin)),
                Timed.atMost(CHECKS_A_ROUND, Timed.of(RequiredInstallation::checkAdministrator)),
                Timed.atMost(CHECKS_A_ROUND, BareInstallation::checkAdministrator),
                Timed.atMost(CHECKS_A_ROUND, Timed.of(JnaInstallation::isAdministrator)),
                null);
    }

    private Row owner() {
        String name = file.toString();
        return new Row("owner of a file", 1,
                Timed.of(() -> files.getFileOwner(name)),
                Timed.of(() -> RequiredInstallation.readOwner(name)),
                calls -> BareInstallation.readOwner(name, calls),
                Timed.of(() -> JnaInstallation.ownerOf(name)),
                Timed.of(() -> Files.getOwner(file).getName()));
    }

    private Row shortcut() {
        String directory = folder.toString();
        String target = file.toString();
        String bare = folder.resolve("bare.lnk").toString();
        String jna = folder.resolve("jna.lnk").toString();
        return new Row("make a shortcut", 1,
                Timed.of(() -> desktop.createDesktopItem(
                        directory, "", "library", target, "", "", directory)),
                Timed.of(() -> RequiredInstallation.makeShortcut(
                        directory, "", "required", target, "", "", directory)),
                calls -> BareInstallation.makeShortcut(bare, target, directory, calls),
                Timed.of(() -> JnaShortcut.make(jna, target, directory)),
                null);
    }

    @Override
    public void close() throws ServiceException {
        files.win32DeleteDirectory(folder.toString(), false, true);
    }
}
