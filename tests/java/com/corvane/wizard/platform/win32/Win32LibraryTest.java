package com.corvane.wizard.platform.win32;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.corvane.testing.LoadProbe;
import java.io.File;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.attribute.FileTime;
import java.time.Duration;
import java.time.Instant;
import java.util.List;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;

/** How the library is found and loaded, in JVMs of its own. */
class Win32LibraryTest {

    @TempDir
    Path temporary;

    private String load(String... options) throws Exception {
        String java = System.getProperty("java.home") + "\\bin\\java.exe";
        Path classes = Path.of(LoadProbe.class.getProtectionDomain().getCodeSource().getLocation().toURI());
        ProcessBuilder process = new ProcessBuilder(java, "-XX:+UseSerialGC", "-XX:-UsePerfData",
                "-Djava.io.tmpdir=" + temporary, "-cp",
                System.getProperty("corvane.test.jar") + File.pathSeparator + classes);
        process.command().addAll(List.of(options));
        process.command().add(LoadProbe.class.getName());
        Process child = process.redirectErrorStream(true).start();
        String output = new String(child.getInputStream().readAllBytes()).trim();
        child.waitFor();
        return output;
    }

    @Test
    void theCopyInTheJarIsUnpackedAndOldCopiesRemoved() throws Exception {
        Path stale = Files.createFile(temporary.resolve("corvane_win32-1.dll"));
        Files.setLastModifiedTime(stale, FileTime.from(Instant.now().minus(Duration.ofDays(2))));
        Path recent = Files.createFile(temporary.resolve("corvane_win32-2.dll"));
        Path other = Files.createFile(temporary.resolve("other-3.dll"));
        Files.setLastModifiedTime(other, FileTime.from(Instant.now().minus(Duration.ofDays(2))));

        assertEquals("loaded, answers true", load());
        assertFalse(Files.exists(stale));
        assertTrue(Files.exists(recent) && Files.exists(other));
        assertEquals(3, temporary.toFile().list().length, "one copy");
    }

    @Test
    void thePropertyNamesTheFile() throws Exception {
        String property = "-Dcorvane.win32.library=";
        assertEquals("loaded, answers true", load(property + System.getProperty("corvane.win32.library")));
        assertEquals(0, temporary.toFile().list().length, "nothing is unpacked");
        String complaint = load(property + "no such file.dll");
        assertTrue(complaint.contains("corvane.win32.library") && complaint.contains("no such file.dll"), complaint);
    }

    /** On a thread that has started COM otherwise, and nothing is begun. */
    @Test
    void whereComCannotBeStartedNoShortcutIsMade() throws Exception {
        String said = load(option("corvane.win32.library"), option("corvane.test.support"),
                "-Dcorvane.test.com=multithreaded");
        assertTrue(said.startsWith("loaded, answers true") && said.contains("ServiceException: -80002")
                && said.endsWith(" (2147549446)"), said);
        assertEquals(0, temporary.toFile().list().length);
    }

    /** That it was started before is no failure. */
    @Test
    void whereComIsStartedAlreadyAShortcutIsMade() throws Exception {
        String said = load(option("corvane.win32.library"), option("corvane.test.support"),
                "-Dcorvane.test.com=as the library does");
        assertTrue(temporary.resolve("group").resolve("n.lnk").toFile().isFile(), said);
    }

    private static String option(String property) {
        return "-D" + property + "=" + System.getProperty(property);
    }

    @Test
    void anotherSystemIsToldWhatIsMissing() {
        Win32Library.requireWindows("Windows Server 2022", "amd64");
        String[][] systems = {{"Linux", "amd64"}, {"Windows 10", "x86"}, {"Windows 11", "aarch64"}};
        for (String[] system : systems) {
            String message = assertThrows(UnsatisfiedLinkError.class,
                    () -> Win32Library.requireWindows(system[0], system[1])).getMessage();
            assertTrue(message.contains("64-bit Windows") && message.contains(system[0])
                    && message.contains(system[1]), message);
        }
    }
}
