package com.corvane.wizard.platform.win32;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.corvane.testing.Folder;
import com.corvane.testing.Hooks;
import com.corvane.testing.Reboot;
import com.corvane.testing.TestBed;
import com.corvane.wizard.platform.win32.environment.WindowsEnvironment;
import com.corvane.wizard.service.ServiceException;
import com.sun.jna.Callback;
import com.sun.jna.Memory;
import com.sun.jna.NativeLibrary;
import com.sun.jna.Pointer;
import com.sun.nio.file.ExtendedOpenOption;
import java.io.File;
import java.io.IOException;
import java.io.UncheckedIOException;
import java.nio.channels.FileChannel;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.StandardOpenOption;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.Collections;
import java.util.Enumeration;
import java.util.List;
import java.util.concurrent.CountDownLatch;
import java.util.concurrent.FutureTask;
import java.util.concurrent.TimeUnit;
import java.util.stream.Stream;
import org.junit.jupiter.api.AfterEach;
import org.junit.jupiter.api.BeforeEach;
import org.junit.jupiter.api.Tag;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.extension.ExtendWith;
import org.junit.jupiter.api.io.TempDir;

/** What comes of a call after it has returned: in other programs, at the end of the JVM, at the next start. */
@ExtendWith(TestBed.class)
class AfterwardsTest {

    private static final Path JAR = Path.of(System.getProperty("corvane.test.jar"));
    private static final int GWLP_WNDPROC = -4;
    private static final int WM_SETTINGCHANGE = 0x1A;
    private static final int WM_COPYDATA = 0x4A;

    /** There is no blank in its path, and one in that of the folder. */
    @TempDir
    Path temporary;

    private final Folder folder = Folder.named("afterwards");
    private final List<Process> processes = new ArrayList<>();
    private final CountDownLatch over = new CountDownLatch(1);

    /** All is real here. */
    @BeforeEach
    void begin() {
        Hooks.disarm();
    }

    @AfterEach
    void end() throws Exception {
        over.countDown();
        for (Process process : processes) {
            process.destroyForcibly().waitFor();
        }
        Reboot.forget();
        await("that a cleaner ends, whose file is in the folder", this::isCleared);
    }

    private boolean isCleared() {
        try {
            folder.clear();
            return true;
        } catch (UncheckedIOException inUse) {
            return false;
        }
    }

    private Process start(ProcessBuilder process) throws IOException {
        processes.add(process.redirectErrorStream(true).start());
        return processes.get(processes.size() - 1);
    }

    private interface Condition {
        boolean holds() throws Exception;
    }

    private static void await(String what, Condition condition) throws Exception {
        long end = System.nanoTime() + TimeUnit.SECONDS.toNanos(60);
        while (!condition.holds()) {
            assertTrue(System.nanoTime() < end, "waited in vain: " + what);
            Thread.sleep(50);
        }
    }

    /** An installer: each argument is a cleaner's order, names with bars between, a star before a directory's. */
    static final class Installer {

        /** It has the files open until it ends, which it does with its input. */
        public static void main(String[] orders) throws Exception {
            for (String order : orders) {
                List<File> files = new ArrayList<>();
                List<File> trees = new ArrayList<>();
                Stream.of(order.split("\\|")).forEach(name ->
                        (name.startsWith("*") ? trees : files).add(new File(name.replace("*", ""))));
                for (File file : files) {
                    if (file.isFile()) {
                        FileChannel.open(file.toPath(), StandardOpenOption.READ);
                    }
                }
                Win32Cleaner.deleteAfterExit(files, trees);
            }
            System.out.println("handed over");
            System.in.read();
        }
    }

    /** One in a JVM of its own, whose temporary folders are {@code place}, once it has handed over. */
    private Process depart(String place, String... orders) throws Exception {
        String library = "corvane.win32.library";
        ProcessBuilder java = new ProcessBuilder(System.getProperty("java.home") + "\\bin\\java.exe",
                "-XX:+UseSerialGC", "-XX:-UsePerfData", "-Djava.io.tmpdir=" + place,
                "-D" + library + "=" + System.getProperty(library), "-cp",
                JAR + ";" + System.getProperty("java.class.path"), Installer.class.getName());
        java.command().addAll(List.of(orders));
        java.environment().put("LOCALAPPDATA", place);
        java.environment().put("ALLUSERSPROFILE", place);
        Process process = start(java);
        assertEquals("handed over", process.inputReader().readLine());
        return process;
    }

    private FileChannel inUse(String name) throws IOException {
        return FileChannel.open(Path.of(folder.path(name)), StandardOpenOption.READ, ExtendedOpenOption.NOSHARE_READ,
                ExtendedOpenOption.NOSHARE_WRITE, ExtendedOpenOption.NOSHARE_DELETE);
    }

    private void assertLeft(String names) {
        assertEquals(names, String.join(" ", folder.state().keySet()).trim());
    }

    /** Two cleaners; a link and what is read-only; what another program has in use for a while, and for longer. */
    @Test
    void whatAnInstallerLeavesIsDeletedWhenItHasEnded() throws Exception {
        for (String name : List.of("used", "x;y", "kept\\file", "tree\\read-only", "tree\\a\\b\\c\\file", "tree\\used",
                "other\\locked\\file", "outside\\file")) {
            folder.file(name, "");
        }
        folder.setAttributes("tree\\read-only", 1);
        folder.setAttributes("used", 1);
        Files.createSymbolicLink(Path.of(folder.path("tree\\link")), Path.of(folder.path("outside")));
        Files.createSymbolicLink(Path.of(folder.path("link")), Path.of(folder.path("outside")));
        FileChannel briefly = inUse("tree\\used");
        try (FileChannel longer = inUse("other\\locked\\file")) {
            Process installer = depart(temporary.toString(), folder.path("used") + "|" + folder.path("x;y") + "|*"
                    + folder.path("tree") + "|*" + folder.path("link"),
                    "*" + folder.path("other") + "|" + folder.path("kept"));
            Thread.sleep(1000);
            assertTrue(folder.has("tree\\read-only") && folder.has("used") && folder.has("x;y"), "it still runs");
            installer.getOutputStream().close();
            await("the tree's files", () -> !folder.has("tree\\read-only") && !folder.has("used"));
            assertTrue(folder.has("tree\\used"));
            briefly.close();
            await("the tree", () -> !folder.has("tree"));
            await("what the next start does", () -> Reboot.pending().size() == 3);
            assertTrue(longer.isOpen());
        }
        assertLeft("kept kept\\file other other\\locked other\\locked\\file outside outside\\file");
        await("the cleaners' own ends", () -> Arrays.stream(temporary.toFile().listFiles())
                .allMatch(own -> own.list().length == 0));
        Reboot.now();
        assertLeft("kept kept\\file outside outside\\file");
    }

    /** It waits for one that is killed, too; and where the path to it has blanks it is started all the same. */
    @Test
    void anInstallerThatIsKilledIsCleanedUpAfter() throws Exception {
        folder.file("tree\\file", "");
        Process installer = depart(folder.folder("place"), "*" + folder.path("tree"));
        Thread.sleep(1000);
        assertTrue(folder.has("tree\\file"));
        installer.destroyForcibly().waitFor();
        await("the tree", () -> !folder.has("tree"));
    }

    private static Pointer user32(String function, Object... arguments) {
        return NativeLibrary.getInstance("user32").getFunction(function).invokePointer(arguments);
    }

    /** What the cleaner answers to a message that names this window as its sender. */
    private static String send(Pointer sender, String message) {
        Memory text = new Memory(message.length() + 1L);
        text.setString(0, message);
        Memory data = new Memory(24);
        data.setLong(0, 0);
        data.setLong(8, text.size());
        data.setPointer(16, text);
        Pointer window = user32("FindWindowA", "corvane_cleaner", null);
        return window == null ? "nobody"
                : "answer " + Pointer.nativeValue(user32("SendMessageA", window, WM_COPYDATA, sender, data));
    }

    /** From whom it may not come is refused, and so is what is no order; the one that is right is the last. */
    @Test
    void theCleanerObeysItsParentAlone() throws Exception {
        String file = folder.file("file", "");
        String parent = Long.toHexString(ProcessHandle.current().pid());
        String order = "1" + parent + " " + file;
        Process cleaner = start(new ProcessBuilder(JAR.resolveSibling("corvane_cleaner.exe").toString()));
        await("its window", () -> send(null, "").equals("answer 0"));
        String other = Long.toHexString(cleaner.pid());
        for (String hostile : List.of("1" + other + " " + file, "0" + other + " " + file, "1" + parent + file,
                "2" + parent + " " + file, parent + " " + file)) {
            assertEquals("answer 0", send(null, hostile), hostile);
        }
        assertEquals("answer 0", send(user32("GetDesktopWindow"), order), "the window of another process");
        assertTrue(cleaner.isAlive() && folder.has("file"));
        assertEquals("answer 1", send(null, order));
        await("that it has no window", () -> send(null, order).equals("nobody"));
        assertTrue(cleaner.isAlive() && folder.has("file"), "its parent runs");
    }

    @Test
    @SuppressWarnings("unchecked") // a caller of old has raw types
    void whatCannotBeNamedIsRefusedAtOnce() {
        for (String path : List.of("relative", "C:relative", "\\rooted", "C:\\", "C:\\t\\\u65e5\u672c", "C:\\t\\..\\a",
                "C:\\t;C:\\a", "C:\\t\\a\0", "\\\\s\\d;*C:\\t\\a")) {
            List<File> files = List.of(new File(path));
            assertThrows(IllegalArgumentException.class, () -> Win32Cleaner.deleteAfterExit(files, List.of()), path);
            assertThrows(IllegalArgumentException.class, () -> Win32Cleaner.deleteAfterExit(List.of(), files), path);
        }
        Enumeration<?> raw = Collections.enumeration(List.of(new File("C:\\t\\a")));
        assertEquals(ServiceException.UNEXPECTED, assertThrows(ServiceException.class, () ->
                new Win32SystemUtilServiceImpl().nativeDeleteFilesAfterExit((Enumeration<String>) raw, null, false, "c"))
                .getCode());
    }

    /** What the code page makes of it is a backslash, and another path. */
    @Test
    @Tag("cp932")
    void aYenSignCannotBeNamed() {
        List<File> files = List.of(new File("C:\\t\\\u00a5a"));
        assertThrows(IllegalArgumentException.class, () -> Win32Cleaner.deleteAfterExit(files, List.of()));
    }

    @Test
    void commandsRunOnceAtTheNextStart() throws Exception {
        Win32SystemUtilServiceImpl system = new Win32SystemUtilServiceImpl();
        List<String> commands = Collections.list(system.systemStartupCommands());
        for (String name : List.of("first", "second", "third")) {
            commands.add("cmd.exe /c mkdir \"" + folder.path(name) + "\"");
            system.addSystemStartupCommand(commands.get(commands.size() - 1));
        }
        assertEquals(commands, Collections.list(system.systemStartupCommands()));
        system.removeSystemStartupCommand(commands.get(commands.size() - 2));
        Reboot.now();
        await("the commands", () -> folder.has("first") && folder.has("third"));
        await("that they are gone", () -> !system.systemStartupCommands().hasMoreElements());
        assertFalse(folder.has("second"));
    }

    private interface WindowProcedure extends Callback {
        Pointer callback(Pointer window, int message, Pointer first, Pointer second);
    }

    /** Makes a window on a thread of its own, which looks for messages after each pause; adds what it is told. */
    private void makeWindow(List<String> told, long pause) throws Exception {
        CountDownLatch ready = new CountDownLatch(1);
        WindowProcedure procedure = (window, message, first, second) -> {
            if (message == WM_SETTINGCHANGE && second != null) {
                told.add(second.getString(0));
            }
            return user32("DefWindowProcA", window, message, first, second);
        };
        new Thread(new FutureTask<>(() -> {
            Pointer window = user32("CreateWindowExA", 0, "STATIC", "", 0, 0, 0, 0, 0, null, null, null, null);
            user32("SetWindowLongPtrA", window, GWLP_WNDPROC, procedure);
            ready.countDown();
            while (!over.await(pause, TimeUnit.MILLISECONDS)) {
                user32("PeekMessageA", new Memory(64), null, 0, 0, 0);
            }
            return user32("DestroyWindow", window);
        })).start();
        assertTrue(ready.await(9, TimeUnit.SECONDS));
    }

    /** Every window is told. One that hangs costs its three seconds, and so does that for its input methods. */
    @Test
    void windowsAreToldOfAVariable() throws Exception {
        WindowsEnvironment variables = new WindowsEnvironment();
        List<String> told = Collections.synchronizedList(new ArrayList<>());
        makeWindow(told, 10);
        makeWindow(told, Long.MAX_VALUE);
        long begin = System.nanoTime();
        variables.winNTSetEnvironmentVariable("CORVANE", "%SystemRoot%", false);
        long seconds = TimeUnit.NANOSECONDS.toSeconds(System.nanoTime() - begin);
        variables.winNTSetEnvironmentVariable("CORVANE", null, false);
        assertEquals(List.of("Environment", "Environment"), told);
        assertTrue(seconds < 9, seconds + " seconds");
    }
}
