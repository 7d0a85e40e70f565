package com.corvane.wizard.platform.win32;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.corvane.testing.Departing;
import com.corvane.testing.Folder;
import com.corvane.testing.Hooks;
import com.corvane.testing.Reboot;
import com.corvane.testing.TestBed;
import com.corvane.wizard.platform.win32.environment.WindowsEnvironment;
import com.corvane.wizard.service.ServiceException;
import com.sun.nio.file.ExtendedOpenOption;
import java.io.BufferedReader;
import java.io.File;
import java.io.IOException;
import java.nio.channels.FileChannel;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.StandardOpenOption;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.Collections;
import java.util.Enumeration;
import java.util.List;
import java.util.concurrent.TimeUnit;
import org.junit.jupiter.api.AfterEach;
import org.junit.jupiter.api.BeforeEach;
import org.junit.jupiter.api.Tag;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.extension.ExtendWith;
import org.junit.jupiter.api.io.TempDir;

/** What comes of a call after it has returned: in other programs, at the end of the JVM, at the next start. */
@ExtendWith(TestBed.class)
class AfterwardsTest {

    private static final String WINDOW_USER = System.getProperty("corvane.test.window");

    /** There is no blank in its path, and one in that of the folder. */
    @TempDir
    Path temporary;

    private final Folder folder = Folder.named("afterwards");
    private final List<Process> processes = new ArrayList<>();

    /** All is real here. */
    @BeforeEach
    void begin() {
        Hooks.disarm();
    }

    @AfterEach
    void end() throws Exception {
        for (Process process : processes) {
            process.destroyForcibly().waitFor();
        }
        Reboot.forget();
        folder.clear();
    }

    private Process start(ProcessBuilder process) throws IOException {
        processes.add(process.redirectErrorStream(true).start());
        return processes.get(processes.size() - 1);
    }

    /** An installer in a JVM of its own, whose temporary folders are {@code place}, once it has handed over. */
    private Process depart(String place, String... orders) throws Exception {
        Path classes = Path.of(Departing.class.getProtectionDomain().getCodeSource().getLocation().toURI());
        String library = "corvane.win32.library";
        ProcessBuilder java = new ProcessBuilder(System.getProperty("java.home") + "\\bin\\java.exe",
                "-XX:+UseSerialGC", "-XX:-UsePerfData", "-Djava.io.tmpdir=" + place,
                "-D" + library + "=" + System.getProperty(library), "-cp",
                System.getProperty("corvane.test.jar") + File.pathSeparator + classes, Departing.class.getName());
        java.command().addAll(List.of(orders));
        java.environment().put("LOCALAPPDATA", place);
        java.environment().put("ALLUSERSPROFILE", place);
        Process process = start(java);
        assertEquals("handed over", process.inputReader().readLine());
        return process;
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

    private FileChannel inUse(String name) throws IOException {
        return FileChannel.open(Path.of(folder.path(name)), StandardOpenOption.READ, ExtendedOpenOption.NOSHARE_READ,
                ExtendedOpenOption.NOSHARE_WRITE, ExtendedOpenOption.NOSHARE_DELETE);
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
            assertTrue(longer.isOpen() && folder.has("tree\\read-only") && folder.has("used") && folder.has("x;y"), "it still runs");
            installer.getOutputStream().close();
            await("the tree's files", () -> !folder.has("tree\\read-only") && !folder.has("used"));
            assertTrue(folder.has("tree\\used"));
            briefly.close();
            await("the tree", () -> !folder.has("tree"));
            await("what the next start does", () -> Reboot.pending().size() == 3);
        }
        assertEquals(List.of("", "kept", "kept\\file", "other", "other\\locked", "other\\locked\\file", "outside",
                "outside\\file"), List.copyOf(folder.state().keySet()));
        await("the cleaners' own ends", () -> Arrays.stream(temporary.toFile().listFiles())
                .allMatch(own -> own.list().length == 0));
        Reboot.now();
        assertEquals(List.of("", "kept", "kept\\file", "outside", "outside\\file"), List.copyOf(folder.state().keySet()));
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

    private String send(Process cleaner, String who, String message) throws Exception {
        return start(new ProcessBuilder(WINDOW_USER, "sends", Long.toString(cleaner.pid()), who, message))
                .inputReader().readLine();
    }

    /** From whom it may not come is refused, and so is what is no order; the one that is right is the last. */
    @Test
    void theCleanerObeysItsParentAlone() throws Exception {
        String file = folder.file("file", "");
        String parent = Long.toHexString(ProcessHandle.current().pid());
        Process cleaner = start(new ProcessBuilder(new File(System.getProperty("corvane.test.jar")).getParent()
                + "\\corvane_cleaner.exe"));
        await("its window", () -> send(cleaner, "none", "").startsWith("answer"));
        for (String hostile : List.of("1own " + file, "0own " + file, "1" + parent + file, "2" + parent + " " + file,
                parent + " " + file)) {
            assertEquals("answer 0", send(cleaner, "none", hostile), hostile);
        }
        assertEquals("answer 0", send(cleaner, "own", "1" + parent + " " + file));
        assertTrue(cleaner.isAlive() && folder.has("file"));
        assertEquals("answer 1", send(cleaner, "none", "1" + parent + " " + file));
        await("that it has no window", () -> send(cleaner, "none", "1" + parent + " " + file).startsWith("nobody"));
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
        List<String> before = Collections.list(system.systemStartupCommands());
        List<String> commands = new ArrayList<>();
        for (String name : List.of("first", "second", "third")) {
            commands.add("cmd.exe /c mkdir \"" + folder.path(name) + "\"");
            system.addSystemStartupCommand(commands.get(commands.size() - 1));
        }
        List<String> added = Collections.list(system.systemStartupCommands());
        added.removeAll(before);
        assertEquals(commands, added);
        system.removeSystemStartupCommand(commands.get(1));
        Reboot.now();
        await("the commands", () -> folder.has("first") && folder.has("third"));
        await("that they are gone", () -> !system.systemStartupCommands().hasMoreElements());
        assertFalse(folder.has("second"));
    }

    /** Every window is told. One that hangs costs its three seconds, and so does that for its input methods. */
    @Test
    void windowsAreToldOfAVariable() throws Exception {
        WindowsEnvironment variables = new WindowsEnvironment();
        BufferedReader listener = start(new ProcessBuilder(WINDOW_USER, "listens")).inputReader();
        BufferedReader hanging = start(new ProcessBuilder(WINDOW_USER, "hangs")).inputReader();
        assertEquals("ready ready", listener.readLine() + " " + hanging.readLine());
        long begin = System.nanoTime();
        variables.winNTSetEnvironmentVariable("CORVANE", "%SystemRoot%", false);
        long seconds = TimeUnit.NANOSECONDS.toSeconds(System.nanoTime() - begin);
        variables.winNTSetEnvironmentVariable("CORVANE", null, false);
        assertEquals("changed Environment", listener.readLine());
        assertTrue(seconds < 9, seconds + " seconds");
    }
}
