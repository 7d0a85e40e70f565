package com.corvane.wizard.platform.win32;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.corvane.testing.LoadProbe;
import java.io.IOException;
import java.net.URLEncoder;
import java.nio.channels.SeekableByteChannel;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.StandardCopyOption;
import java.nio.file.StandardOpenOption;
import java.nio.file.attribute.AclEntry;
import java.nio.file.attribute.AclFileAttributeView;
import java.nio.file.attribute.FileTime;
import java.util.ArrayList;
import java.util.Collections;
import java.util.HashSet;
import java.util.List;
import java.util.Set;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.function.ThrowingConsumer;
import org.junit.jupiter.api.io.TempDir;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.CsvSource;

/** How the library is found and loaded, in JVMs of its own. */
class Win32LibraryTest {

    private static final String LOADED = "loaded, answers true";
    private static final String PROPERTY = "-Dcorvane.win32.library=";
    static final String BUILT = PROPERTY + System.getProperty("corvane.win32.library");

    @TempDir
    Path temporary;

    /** A JVM whose temporary folder, and where the user and all users have theirs, are these. */
    static ProcessBuilder jvm(Path temporary, Path users, Path everybodys, String... arguments) {
        ProcessBuilder process = new ProcessBuilder(System.getProperty("java.home") + "\\bin\\java.exe",
                "-XX:+UseSerialGC", "-XX:-UsePerfData", "-Djava.io.tmpdir=" + temporary, "-cp",
                System.getProperty("corvane.test.jar") + ";" + System.getProperty("java.class.path"));
        process.command().addAll(List.of(arguments));
        process.environment().put("LOCALAPPDATA", users.toString());
        process.environment().put("ALLUSERSPROFILE", everybodys.toString());
        return process.redirectErrorStream(true);
    }

    private Path place(String name) throws IOException {
        return Files.createDirectories(temporary.resolve(name));
    }

    /** What the probe says; no folder but those of this test is there for the library. */
    private List<String> load(List<String> options, List<String> folders) throws Exception {
        ProcessBuilder process = jvm(place("tmp"), temporary.resolve("local"), temporary.resolve("all"));
        process.command().addAll(options);
        process.command().add(LoadProbe.class.getName());
        folders.forEach(folder -> process.command().add("=" + URLEncoder.encode(folder, StandardCharsets.UTF_8)));
        return process.directory(temporary.toFile()).start().inputReader().lines().toList();
    }

    private String load(String... options) throws Exception {
        return String.join("\n", load(List.of(options), List.of()));
    }

    private List<Path> filesIn(String place) throws IOException {
        try (var files = Files.walk(temporary.resolve(place))) {
            return files.filter(Files::isRegularFile).toList();
        }
    }

    @Test
    void copiesThatNothingUsesAreRemoved() throws Exception {
        Path tmp = place("tmp");
        Path left = Files.createFile(place("tmp/corvane_win32-1").resolve("corvane_win32-1.dll"));
        Path aboutToBeFilled = place("tmp/corvane_win32-2");
        Path old = Files.createFile(place("tmp/corvane_win32-5").resolve("corvane_win32-5.exe"));
        Files.setLastModifiedTime(old.getParent(), FileTime.fromMillis(0));
        List<Path> others = List.of(Files.createFile(place("tmp/corvane_win32-3").resolve("other.dll")),
                Files.createFile(place("tmp/corvane_win32-3.0").resolve("corvane_win32-3.0.dll")));

        int loads = 20;
        assertEquals(Collections.nCopies(loads, LOADED), load(List.of(), Collections.nCopies(loads, "tmp")));
        assertFalse(Files.exists(left.getParent()) || Files.exists(old.getParent()));
        assertTrue(Files.exists(aboutToBeFilled) && filesIn("tmp").containsAll(others));
        int kept = filesIn("tmp").size() - others.size();
        assertTrue(kept >= 1 && kept < loads / 2, kept + " copies of class loaders that are gone");

        assertEquals(LOADED, load());
        List<Path> files = new ArrayList<>(filesIn("tmp"));
        files.removeAll(others);
        assertEquals(1, files.size(), "the copy of the last JVM, and no other: " + files);
        Path folder = files.get(0).getParent();
        assertEquals(tmp, folder.getParent());
        List<AclEntry> rights = Files.getFileAttributeView(folder, AclFileAttributeView.class).getAcl();
        assertFalse(rights.isEmpty());
        for (AclEntry entry : rights) {
            assertTrue(entry.principal().equals(Files.getOwner(folder))
                    || entry.principal().getName().matches(".*\\\\(SYSTEM|Administrators)"), rights.toString());
        }
    }

    private Path aside() {
        return temporary.resolve("aside" + System.nanoTime());
    }

    /** Another program of the user puts its own DLL in the place of the copy, or something into it, in every way. */
    private List<ThrowingConsumer<Path>> attacks() throws IOException {
        Path foreign = Files.copy(Path.of(System.getProperty("corvane.test.support")), temporary.resolve("foreign"));
        Path prepared = temporary.resolve("prepared");
        return List.of(
                copy -> {
                    if (!Files.exists(prepared)) {
                        Files.createLink(prepared, foreign);
                    }
                    Files.move(prepared, copy, StandardCopyOption.ATOMIC_MOVE);
                },
                copy -> {
                    Files.move(copy, aside());
                    Files.createLink(copy, foreign);
                },
                copy -> {
                    Files.delete(copy);
                    Files.createLink(copy, foreign);
                },
                copy -> Files.write(copy, new byte[] {'M', 'Z'}, StandardOpenOption.WRITE));
    }

    @Test
    void noForeignLibraryIsLoaded() throws Exception {
        place("local/Temp");
        Path tmp = place("tmp");
        List<ThrowingConsumer<Path>> attacks = new ArrayList<>(attacks());
        attacks.add(copy -> {
            Files.move(copy.getParent(), aside());
            Files.createDirectory(copy.getParent());
            Files.createLink(copy, temporary.resolve("foreign"));
        });
        Set<String> met = new HashSet<>();
        Thread attacker = new Thread(() -> {
            while (!Thread.currentThread().isInterrupted()) {
                for (String name : tmp.toFile().list()) {
                    met.add(name);
                    for (ThrowingConsumer<Path> attack : attacks) {
                        try {
                            attack.accept(tmp.resolve(name).resolve(name + ".dll"));
                        } catch (Throwable failure) {
                            // and again
                        }
                    }
                }
            }
        });
        attacker.setDaemon(true);
        attacker.start();
        List<String> outcomes = load(List.of(), Collections.nCopies(20, "tmp"));
        attacker.interrupt();
        attacker.join();
        assertEquals(Collections.nCopies(20, LOADED), outcomes);
        assertFalse(met.isEmpty(), "the attacker met no copy");
    }

    /** While the copy is held nobody else changes it; what was written before that is found. */
    @Test
    void theCopyIsHeldAndCompared() throws Exception {
        byte[] content = "library".getBytes(StandardCharsets.UTF_8);
        Path file = temporary.resolve("file");
        try (SeekableByteChannel held = JarCopy.unpack(file, content)) {
            for (ThrowingConsumer<Path> attack : attacks()) {
                assertThrows(IOException.class, () -> attack.accept(file));
            }
            JarCopy.requireContent(held, content);
        }
        assertThrows(IOException.class, () -> JarCopy.unpack(file, content), "what is there is not taken over");
        for (String found : new String[] {"Library", "librar", "libraryy", ""}) {
            Files.writeString(file, found);
            try (SeekableByteChannel changed = Files.newByteChannel(file)) {
                assertThrows(IOException.class, () -> JarCopy.requireContent(changed, content), found);
            }
        }
    }

    /** The temporary folder: relative; not given, no path, not there, and with letters that the code page lacks. */
    @Test
    void anotherFolderServesWhereTheTemporaryOneDoesNot() throws Exception {
        String lacking = place("tmp\u65e5\u672c").toString();
        List<String> folders = List.of("tmp", "", "a<b>|", "\0", "missing", lacking);

        List<String> complaints = load(List.of(), folders);
        assertEquals(LOADED, complaints.get(0));
        for (String complaint : complaints.subList(1, folders.size())) {
            assertTrue(complaint.startsWith("java.lang.UnsatisfiedLinkError: Cannot unpack")
                    && complaint.contains("corvane.win32.library"), complaint);
        }
        assertTrue(complaints.get(5).contains("code page"), complaints.toString());

        place("local/Temp");
        assertEquals(Collections.nCopies(folders.size(), LOADED), load(List.of(), folders));
        assertEquals(List.of(), filesIn(lacking));
        assertTrue(filesIn("tmp").size() == 1 && !filesIn("local").isEmpty());
        place("all");
        Files.move(temporary.resolve("local"), temporary.resolve("gone"));
        assertEquals(List.of(LOADED), load(List.of(), List.of("missing")));
        assertEquals(1, filesIn("all").size());
    }

    @Test
    void thePropertyNamesTheFile() throws Exception {
        assertEquals(LOADED, load(BUILT));
        assertEquals(List.of(), filesIn("tmp"), "nothing is unpacked");
        String complaint = load(PROPERTY + "no such file.dll");
        assertTrue(complaint.contains("corvane.win32.library") && complaint.contains("no such file.dll"), complaint);
    }

    /** It is not on a thread that has started it otherwise, and nothing is begun; that it is started is no failure. */
    @Test
    void whereComCannotBeStartedNoShortcutIsMade() throws Exception {
        String said = load(BUILT, "-Dcorvane.test.com=multithreaded");
        assertTrue(said.startsWith(LOADED) && said.contains("ServiceException: -80002")
                && said.endsWith(" (2147549446)"), said);
        assertFalse(Files.exists(temporary.resolve("tmp/group")));
        said = load(BUILT, "-Dcorvane.test.com=as the library does");
        assertTrue(Files.isRegularFile(temporary.resolve("tmp/group/n.lnk")), said);
    }

    @ParameterizedTest
    @CsvSource({"Linux, amd64", "Windows 10, x86", "Windows 11, aarch64"})
    void anotherSystemIsToldWhatIsMissing(String name, String architecture) {
        Win32Library.requireWindows("Windows Server 2022", "amd64");
        String message = assertThrows(UnsatisfiedLinkError.class,
                () -> Win32Library.requireWindows(name, architecture)).getMessage();
        assertTrue(message.matches(".*64-bit Windows.*" + name + ".*" + architecture + ".*"), message);
    }
}
