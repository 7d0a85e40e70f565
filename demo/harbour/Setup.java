package harbour;

import com.corvane.wizard.platform.win32.*;
import com.corvane.wizard.platform.win32.win32service.*;
import com.corvane.wizard.service.ServiceException;
import java.io.IOException;
import java.nio.channels.FileChannel;
import java.nio.file.*;
import java.util.*;
import java.util.concurrent.TimeoutException;
import java.util.stream.Stream;

/** Installs or upgrades Harbour Notes, whose files are in "product" beside this jar. With "remove", removes it. */
public final class Setup {
    private static final String NAME = "Harbour Notes";
    private static final String SERVICE = "HarbourWatch";
    private static final int MACHINE = Win32RegistryServiceImpl.HKEY_LOCAL_MACHINE;
    private static final String ENTRY = "Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\" + NAME;

    private static final int RUNNING = NTServiceStatus.SERVICE_RUNNING;
    private static final int STOPPED = NTServiceStatus.SERVICE_STOPPED;
    private static final int AT_REBOOT = Win32FileServiceImpl.DONE_AT_REBOOT;
    private static final int RESTART_NEEDED = 3010; // an exit code, as installers for Windows have it

    private final Win32FileServiceImpl files = new Win32FileServiceImpl();
    private final Win32DesktopServiceImpl desktop = new Win32DesktopServiceImpl();
    private final Win32ServiceImpl services = new Win32ServiceImpl();
    private final Win32RegistryServiceImpl registry = new Win32RegistryServiceImpl();
    private final Win32ProductServiceImpl programs = new Win32ProductServiceImpl();
    private final Win32SystemUtilServiceImpl system = new Win32SystemUtilServiceImpl();

    private final Path folder = Paths.get(files.getStandardInstallDirectory(), NAME);
    private final Path own = folder.resolve("setup");
    private final Path product = folder.resolve("program");
    private final Path watch = product.resolve("watch.exe");
    private final Path before = Paths.get(folder + ".before");
    private final String lastStep = files.getLibraryDirectory() + "\\cmd.exe /c rd /s /q \"" + folder + '"';

    private final Deque<Step> undo = new ArrayDeque<>();
    private boolean restart;

    private interface Step {
        void run() throws Exception;
    }

    private Setup() throws ServiceException {}

    public static void main(String[] arguments) {
        int exitCode = 1;
        try {
            Win32Library.load();
            Setup setup = new Setup();
            if (Arrays.asList(arguments).contains("remove")) {
                setup.remove();
            } else {
                setup.install(jarOf(Setup.class).resolveSibling("product"));
            }
            exitCode = setup.restart ? RESTART_NEEDED : 0;
        } catch (Exception | UnsatisfiedLinkError e) {
            e.printStackTrace(); // also what failed while it was undone
        }
        System.exit(exitCode);
    }

    private void install(Path medium) throws Exception {
        boolean isNew = !services.serviceExists(SERVICE);
        boolean runs = isNew || state() != STOPPED;
        String version = checkedVersion(medium);
        try {
            enterProduct();
            if (runs && !isNew) {
                undo.push(() -> bringTo(RUNNING));
                bringTo(STOPPED);
            }
            copy(medium, product);
            if (isNew) {
                undo.push(this::removeService);
                makeService();
            }
            if (runs && !restart) {
                undo.push(() -> bringTo(STOPPED));
                bringTo(RUNNING);
            }
            makeShortcuts();
            registry.setStringValue(MACHINE, ENTRY, "DisplayVersion", false, version);
        } catch (Exception e) {
            if (allWell(undo, e)) {
                allWell(Collections.singleton(() -> delete(before)), e);
            }
            throw e;
        }
        delete(before);
    }

    /** Changes nothing. */
    private String checkedVersion(Path medium) throws Exception {
        WindowsFixedFileInfo brought = services.getFixedFileInfo(medium.resolve("watch.exe").toString());
        WindowsFixedFileInfo installed = services.getFixedFileInfo(watch.toString());
        if (brought == null) {
            throw new IllegalStateException("No product in " + medium);
        } else if (installed != null && numberOf(installed) > numberOf(brought)) {
            throw new IllegalStateException("There is a newer version: " + installed.getFileVersion());
        } else if (isRestartDue()) {
            throw new IllegalStateException("Windows must be restarted first, to end an upgrade or a removal");
        }
        return brought.getFileVersion();
    }

    private static long numberOf(WindowsFixedFileInfo info) {
        return (long) info.getFileVersionMS() << Integer.SIZE | Integer.toUnsignedLong(info.getFileVersionLS());
    }

    /** What waits for it would put an older file in the place of a newer one, or remove the new product. */
    private boolean isRestartDue() throws Exception {
        try (Stream<Path> all = Files.exists(product) ? Files.walk(product) : Stream.empty()) {
            return all.anyMatch(path -> path.toString().endsWith(".use_on_reboot"))
                    || Collections.list(system.systemStartupCommands()).contains(lastStep);
        }
    }

    /** From here on the list of programs can start what removes all that follows. */
    private void enterProduct() throws Exception {
        makeFolder(folder);
        makeFolder(own);
        for (Class<?> type : new Class<?>[] {Setup.class, Win32Library.class}) {
            copy(jarOf(type), own.resolve(type.getSimpleName() + ".jar"));
        }
        if (!registry.keyExists(MACHINE, ENTRY)) {
            undo.push(() -> programs.win32UnregisterUninstaller(NAME, NAME));
        }
        String java = System.getProperty("java.home") + "\\bin\\javaw.exe";
        programs.win32RegisterUninstaller(NAME, NAME,
                '"' + java + "\" -cp \"" + own + "\\*\" " + Setup.class.getName() + " remove");
    }

    private static Path jarOf(Class<?> type) throws Exception {
        return Paths.get(type.getProtectionDomain().getCodeSource().getLocation().toURI());
    }

    /** What is there is kept aside first, so that it can come back. */
    private void copy(Path source, Path target) throws Exception {
        if (Files.isDirectory(source)) {
            makeFolder(target);
            try (DirectoryStream<Path> entries = Files.newDirectoryStream(source)) {
                for (Path entry : entries) {
                    copy(entry, target.resolve(entry.getFileName()));
                }
            }
        } else if (Files.exists(target)) {
            Path kept = before.resolve(folder.relativize(target));
            Files.createDirectories(kept.getParent());
            files.win32CopyFile(target.toString(), kept.toString(), true);
            undo.push(() -> bringBack(target, kept));
            replace(target, source);
        } else {
            undo.push(() -> delete(target));
            replace(target, source);
        }
    }

    private void makeFolder(Path path) throws IOException {
        if (!Files.exists(path)) {
            undo.push(() -> delete(path));
            Files.createDirectory(path);
        }
    }

    private void replace(Path target, Path source) throws ServiceException {
        restart |= files.win32CopyFile(source.toString(), target.toString(), true) == AT_REBOOT;
    }

    /** A new file that only waits has left the old one as it was. */
    private void bringBack(Path target, Path kept) throws ServiceException {
        Path waiting = Paths.get(target + ".use_on_reboot");
        if (Files.exists(waiting)) {
            delete(waiting);
        } else {
            replace(target, kept);
        }
    }

    private void delete(Path path) throws ServiceException {
        if (Files.exists(path)) {
            restart |= AT_REBOOT == (Files.isDirectory(path)
                    ? files.win32DeleteDirectory(path.toString(), false, true)
                    : files.win32DeleteFile(path.toString()));
        }
    }

    private void makeService() throws ServiceException {
        NTServiceConfig config = new NTServiceConfig("Harbour Watch",
                NTServiceConfig.quotedCommand(watch.toString(), '"' + folder.resolve("watch.log").toString() + '"'));
        config.setStartType(NTServiceConfig.SERVICE_AUTO_START);
        services.createNTService(SERVICE, config);
        services.changeWin2kServiceDescription(SERVICE, "Keeps an eye on the harbour.");
        Win2kServiceFailureActions onFailure = new Win2kServiceFailureActions();
        onFailure.addAction(new Win2kSCAction(Win2kSCAction.SC_ACTION_RESTART, 60_000));
        services.changeWin2kServiceFailureActions(SERVICE, onFailure);
    }

    private int state() throws ServiceException {
        return services.queryNTServiceStatus(SERVICE).getCurrentState();
    }

    private void bringTo(int state) throws Exception {
        if (state == RUNNING && state() == STOPPED) {
            services.startNTService(SERVICE, null);
        } else if (state == STOPPED && state() != STOPPED) {
            services.controlNTService(SERVICE, Win32ServiceImpl.SERVICE_CONTROL_STOP);
        }
        for (int tenths = 0; state() != state || state == STOPPED && isInUse(watch); tenths++) {
            if (tenths == 300) {
                throw new TimeoutException("The service stays in the state " + state());
            }
            Thread.sleep(100);
        }
    }

    /** The process of a service ends a moment after it has said that it is stopped. */
    private static boolean isInUse(Path file) {
        try {
            FileChannel.open(file, StandardOpenOption.WRITE).close();
            return false;
        } catch (IOException e) {
            return e.getClass() == FileSystemException.class; // other reasons have classes of their own
        }
    }

    private void removeService() throws Exception {
        if (services.serviceExists(SERVICE)) {
            try {
                bringTo(STOPPED);
            } finally {
                services.deleteNTService(SERVICE);
            }
        }
    }

    /** An upgrade leaves them as the user has them. */
    private void makeShortcuts() throws ServiceException {
        if (!registry.valueExists(MACHINE, ENTRY, "DisplayVersion")) {
            String notes = product.resolve("notes.exe").toString();
            undo.push(this::removeShortcuts);
            desktop.createDesktopItem("$AllUsersPrograms$", "Harbour", NAME, notes, "", notes, product.toString());
            desktop.createDesktopItem("$AllUsersDesktop$", "", NAME, notes, "", notes, product.toString());
        }
    }

    private void removeShortcuts() throws ServiceException {
        desktop.removeDesktopItem("$AllUsersDesktop$", "", NAME);
        desktop.removeDesktopItem("$AllUsersPrograms$", "Harbour", NAME);
    }

    private void remove() throws Exception {
        Exception failure = new IllegalStateException("Not all could be removed; try again");
        if (!allWell(Arrays.asList(this::removeShortcuts, this::removeService, this::removeFiles), failure)) {
            throw failure;
        }
        programs.win32UnregisterUninstaller(NAME, NAME);
    }

    /** What is in use goes at the next start of Windows; what this program itself uses, when it has ended. */
    private void removeFiles() throws Exception {
        delete(product);
        delete(before);
        if (restart) {
            system.addSystemStartupCommand(lastStep);
        }
        Path rest = restart ? own : folder;
        Win32Cleaner.deleteAfterExit(Collections.emptyList(), Collections.singleton(rest.toFile()));
    }

    /** Goes on whatever fails, and tells it beside the failure. */
    private static boolean allWell(Iterable<Step> steps, Exception failure) {
        for (Step step : steps) {
            try {
                step.run();
            } catch (Exception e) {
                failure.addSuppressed(e);
            }
        }
        return failure.getSuppressed().length == 0;
    }
}
