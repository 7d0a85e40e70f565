package com.corvane.wizard.platform.win32;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.corvane.testing.Folder;
import com.corvane.testing.LoadProbe;
import com.corvane.testing.Hooks;
import com.corvane.testing.Outcome;
import com.corvane.testing.Plan;
import com.corvane.testing.Reboot;
import com.corvane.testing.TestBed;
import com.corvane.testing.Windows;
import com.corvane.wizard.service.ServiceException;
import com.sun.jna.Memory;
import com.sun.jna.NativeLibrary;
import com.sun.jna.Pointer;
import com.sun.jna.platform.win32.Kernel32;
import java.io.File;
import java.io.IOException;
import java.nio.channels.FileChannel;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.StandardCopyOption;
import java.nio.file.StandardOpenOption;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.Collections;
import java.util.Enumeration;
import java.util.List;
import java.util.concurrent.Callable;
import org.junit.jupiter.api.AfterEach;
import org.junit.jupiter.api.BeforeEach;
import org.junit.jupiter.api.Tag;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.TestInfo;
import org.junit.jupiter.api.Timeout;
import org.junit.jupiter.api.extension.ExtendWith;
import org.junit.jupiter.api.io.TempDir;

/** What comes of a call after it has returned: at the end of the JVM, at the next start. */
@ExtendWith(TestBed.class)
@Timeout(120)
class AfterwardsTest {

    private static final Path JAR = Path.of(System.getProperty("corvane.test.jar"));
    private static final int WM_COPYDATA = 0x4A;

    /** There is no blank in its path, and one in that of the folder. */
    @TempDir
    Path temporary;

    private Folder folder;
    /** What Windows takes for the program where the path to a cleaner has blanks, and no quotes. */
    private final Path foreign = Path.of(System.getProperty("java.io.tmpdir"), "corvane.exe");
    private final List<Process> processes = new ArrayList<>();

    /** All is real here. */
    @BeforeEach
    void begin(TestInfo test) {
        Hooks.disarm();
        Reboot.forget();
        folder = Folder.named("afterwards " + test.getTestMethod().orElseThrow().getName());
    }

    /** The file of a cleaner is in the folder until it ends. */
    @AfterEach
    @Timeout(60)
    void end() throws Exception {
        processes.forEach(Process::destroyForcibly);
        Reboot.forget();
        await(() -> Reboot.isAwaited() || Outcome.thrownBy(folder::clear) == null);
        Files.deleteIfExists(foreign);
    }

    private Process start(ProcessBuilder process) throws IOException {
        processes.add(process.start());
        return processes.get(processes.size() - 1);
    }

    static void await(Callable<Boolean> truth) throws Exception {
        while (!truth.call()) {
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
                for (String name : order.split("\\|")) {
                    (name.startsWith("*") ? trees : files).add(new File(name.replace("*", "")));
                    if (new File(name).isFile()) {
                        FileChannel.open(Path.of(name), StandardOpenOption.READ);
                    }
                }
                Win32Cleaner.deleteAfterExit(files, trees);
            }
            System.out.println("handed over");
            System.in.read();
        }
    }

    /** One in a JVM of its own, whose temporary folders are {@code place}, once it has handed over. */
    private Process depart(Path place, String... orders) throws Exception {
        ProcessBuilder java =
                LoadProbe.jvm(place, place, place, Win32LibraryTest.BUILT, Installer.class.getName());
        java.command().addAll(List.of(orders));
        Process process = start(java);
        assertEquals("handed over", process.inputReader().readLine());
        return process;
    }

    private FileChannel inUse(String name) throws IOException {
        return FileChannel.open(Path.of(folder.path(name)), StandardOpenOption.READ, JarCopy.option("NOSHARE_READ"),
                JarCopy.option(JarCopy.DENY_WRITE), JarCopy.option(JarCopy.DENY_DELETE));
    }

    /**
     * Two cleaners, and a third for an installer that is killed, where the path to it has blanks; a link and what is
     * read-only; what another program has in use for a while, and for longer.
     */
    @Test
    @Tag("restart")
    void whatAnInstallerLeavesIsDeletedWhenItHasEnded() throws Exception {
        if (!Reboot.isOver()) {
            leaveToTheCleaners();
        }
        Reboot.now();
        assertEquals("kept kept\\file killed outside outside\\file", String.join(" ", folder.state().keySet()).trim());
    }

    private void leaveToTheCleaners() throws Exception {
        for (String name : List.of("used", "x;y", "al\u00f6ne", "kept\\file", "tree\\read-only", "tree\\a\\b\\c\\file",
                "tree\\used", "other\\locked\\file", "outside\\file", "killed\\file")) {
            folder.file(name, "");
        }
        folder.mark("readonly", "tree\\read-only");
        folder.mark("readonly", "used");
        for (String link : List.of("tree\\link", "link")) {
            Files.createSymbolicLink(Path.of(folder.path(link)), Path.of(folder.path("outside")));
        }
        FileChannel briefly = inUse("tree\\used");
        try (FileChannel longer = inUse("other\\locked\\file")) {
            Process installer = depart(temporary, folder.path("used") + "|" + folder.path("x;y") + "|*"
                    + folder.path("tree") + "|*" + folder.path("link") + "|*" + folder.path("al\u00f6ne") + "|"
                    + folder.path("kept"), "*" + folder.path("other") + "|*C:\\.no corvane");
            Files.copy(Path.of(System.getProperty("corvane.test.child")), foreign, StandardCopyOption.REPLACE_EXISTING);
            Process killed = depart(Path.of(Folder.named("place").path("")), folder.path("killed\\file"));
            Thread.sleep(1000);
            assertTrue(folder.has("tree\\read-only") && folder.has("used") && folder.has("killed\\file"), "they run");
            installer.getOutputStream().close();
            await(() -> !folder.has("tree\\read-only") && !folder.has("used"));
            assertTrue(folder.has("tree\\used") && folder.has("killed\\file"));
            killed.destroyForcibly();
            await(() -> !folder.has("killed\\file"));
            Thread.sleep(3000); // less than a cleaner is patient
            briefly.close();
            await(() -> !folder.has("tree") && Reboot.pending().size() == 3);
            assertTrue(longer.isOpen());
        }
        await(() -> Arrays.stream(temporary.toFile().listFiles()).allMatch(own -> own.list().length == 0));
        assertTrue(folder.has("other\\locked\\file"));
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
        File directory = new File(folder.folder("directory"));
        String program = JAR.resolveSibling("corvane_cleaner.exe").toString();
        Process cleaner = start(new ProcessBuilder(program).directory(directory));
        await(() -> send(null, "").equals("answer 0"));
        Pointer window = user32("FindWindowA", "corvane_cleaner", null);
        assertEquals(0, (int) Pointer.nativeValue(user32("IsWindowVisible", window)));
        user32("PostMessageA", window, 0, null, null); // what is posted goes, too
        assertTrue(directory.delete(), "it uses none");
        String other = Long.toHexString(cleaner.pid());
        for (String hostile : List.of("1" + other + " " + file, "0" + other + " " + file, "1" + parent + file)) {
            assertEquals("answer 0", send(null, hostile), hostile);
        }
        assertEquals("answer 0", send(user32("GetDesktopWindow"), order), "the window of another process");
        assertTrue(cleaner.isAlive() && folder.has("file"));
        Pointer own = user32("CreateWindowExA", 0, "STATIC", null, 0, 0, 0, 0, 0, null, null, null, null);
        assertEquals("answer 1", send(own, order));
        assertSenderIsAWindowOfTheThread();
        user32("DestroyWindow", own);
        await(() -> send(null, order).equals("nobody"));
        assertTrue(cleaner.isAlive() && folder.has("file"), "its parent runs");
    }

    /** The cleaner is one whose thread is this one: so its window is, too. */
    private static void assertSenderIsAWindowOfTheThread() throws Exception {
        Plan.begin(Windows.W10, "Sleep: 0*; CreateFileA=5; WaitForInputIdle: 0; SendMessageA: 0; CreateProcessA: 1, 9 "
                + "q0x6000 q0x6004 n7 n" + Kernel32.INSTANCE.GetCurrentThreadId());
        new Win32SystemUtilServiceImpl().nativeDeleteFilesAfterExit(
                Collections.enumeration(List.of("C:\\t\\a")), null, false, "c");
        String calls = Hooks.calls().toString();
        Hooks.disarm();
        assertTrue(calls.matches("(?s).*SendMessageA\t(?!0\t)(\\w+)\t74\t\\1\t.*"), calls);
    }

    private static void assertCannotBeNamed(String path) {
        List<File> files = List.of(new File(path));
        assertThrows(IllegalArgumentException.class, () -> Win32Cleaner.deleteAfterExit(files, List.of()), path);
        assertThrows(IllegalArgumentException.class, () -> Win32Cleaner.deleteAfterExit(List.of(), files), path);
    }

    @Test
    @SuppressWarnings("unchecked") // a caller of old has raw types
    void whatCannotBeNamedIsRefusedAtOnce() {
        List.of("relative", "C:relative", "\\rooted", "C:\\", "C:\\t\\\u65e5\u672c", "C:\\t\\..\\a", "C:\\t\\.\\a",
                "C:\\t\\...\\a", "C:\\..", "\\\\s\\d\\", "C:\\t;C:\\a", "C:\\t\\a\0", "\\\\s\\d;*C:\\t\\a").forEach(AfterwardsTest::assertCannotBeNamed);
        Enumeration<?> raw = Collections.enumeration(List.of(new File("C:\\t\\a")));
        assertEquals(ServiceException.UNEXPECTED, assertThrows(ServiceException.class, () ->
                new Win32SystemUtilServiceImpl().nativeDeleteFilesAfterExit((Enumeration<String>) raw, null, false, "c"))
                .getCode());
    }

    /** What the code page makes of it is a backslash, and another path. */
    @Test
    @Tag("cp932")
    void aYenSignCannotBeNamed() {
        assertCannotBeNamed("C:\\t\\\u00a5a");
    }

    @Test
    @Tag("restart")
    void commandsRunOnceAtTheNextStart() throws Exception {
        Win32SystemUtilServiceImpl system = new Win32SystemUtilServiceImpl();
        String make = "cmd.exe /c mkdir \"" + folder.path("");
        if (!Reboot.isOver()) {
            List<String> commands = Collections.list(system.systemStartupCommands());
            for (String name : List.of("\\first\"", "\\second\"", "\\third\"")) {
                commands.add(make + name);
                system.addSystemStartupCommand(make + name);
            }
            assertEquals(commands, Collections.list(system.systemStartupCommands()));
            system.removeSystemStartupCommand(commands.get(commands.size() - 2));
        }
        Reboot.now();
        await(() -> folder.has("first") && folder.has("third") && Collections.list(system.systemStartupCommands())
                .stream().noneMatch(command -> command.startsWith(make)));
        assertFalse(folder.has("second"));
    }
}
