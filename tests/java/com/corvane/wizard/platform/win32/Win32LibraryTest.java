package com.corvane.wizard.platform.win32;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.corvane.testing.LoadProbe;
import java.io.File;
import java.io.IOException;
import java.net.URLEncoder;
import java.nio.channels.SeekableByteChannel;
import java.nio.charset.StandardCharsets;
import java.nio.file.DirectoryStream;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.StandardCopyOption;
import java.nio.file.StandardOpenOption;
import java.nio.file.attribute.AclEntry;
import java.nio.file.attribute.AclFileAttributeView;
import java.util.ArrayList;
import java.util.Collections;
import java.util.HashSet;
import java.util.List;
import java.util.Set;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;

/** How the library is found and loaded, in JVMs of its own. */
class Win32LibraryTest {

    private static final String LOADED = "loaded, answers true";

    @TempDir
    Path temporary;

    private Path place(String name) throws IOException {
        return Files.createDirectories(temporary.resolve(name));
    }

    /** Runs the probe; no folder but those of this test is there for the library. */
    private String load(List<String> options, List<String> folders) throws Exception {
        String java = System.getProperty("java.home") + "\\bin\\java.exe";
        Path classes = Path.of(LoadProbe.class.getProtectionDomain().getCodeSource().getLocation().toURI());
        ProcessBuilder process = new ProcessBuilder(java, "-XX:+UseSerialGC", "-XX:-UsePerfData",
                "-Djava.io.tmpdir=" + place("tmp"), "-cp",
                System.getProperty("corvane.test.jar") + File.pathSeparator + classes);
        process.environment().put("LOCALAPPDATA", temporary.resolve("local").toString());
        process.environment().put("ALLUSERSPROFILE", temporary.resolve("all").toString());
        process.command().addAll(options);
        process.command().add(LoadProbe.class.getName());
        folders.forEach(folder -> process.command().add("=" + URLEncoder.encode(folder, StandardCharsets.UTF_8)));
        Process child = process.directory(temporary.toFile()).redirectErrorStream(true).start();
        String output = new String(child.getInputStream().readAllBytes()).trim();
        child.waitFor();
        return output;
    }

    private String load(String... options) throws Exception {
        return load(List.of(options), List.of());
    }

    private List<String> loadIn(List<String> folders) throws Exception {
        return load(List.of(), folders).lines().toList();
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
        List<Path> others = List.of(Files.createFile(place("tmp/corvane_win32-3").resolve("other.dll")),
                Files.createFile(place("tmp/corvane_win32-3.0").resolve("corvane_win32-3.0.dll")));

        int loads = 20;
        assertEquals(Collections.nCopies(loads, LOADED), loadIn(Collections.nCopies(loads, "tmp")));
        assertFalse(Files.exists(left.getParent()));
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

    private interface Attempt {
        Object run() throws IOException;
    }

    private static boolean succeeds(Attempt attempt) {
        try {
            attempt.run();
            return true;
        } catch (IOException e) {
            return false;
        }
    }

    /** Puts another DLL wherever a copy appears, as long as it runs, in every way that a user's program can. */
    private static final class Attacker extends Thread {

        private final Path place;
        private final Path foreign;
        private final Path prepared;
        private final Set<Path> met = new HashSet<>();
        private volatile boolean ended;

        Attacker(Path place) throws IOException {
            setDaemon(true);
            this.place = place;
            prepared = place.resolveSibling("prepared");
            foreign = Files.copy(Path.of(System.getProperty("corvane.test.support")), aside());
        }

        private Path aside() {
            return place.resolveSibling("aside" + System.nanoTime());
        }

        @Override
        public void run() {
            while (!ended) {
                try (DirectoryStream<Path> entries = Files.newDirectoryStream(place)) {
                    for (Path entry : entries) {
                        met.add(entry);
                        String name = entry.getFileName().toString();
                        attack(entry, name.endsWith(".dll") ? entry : entry.resolve(name + ".dll"));
                    }
                } catch (IOException | RuntimeException e) {
                    // and again
                }
            }
        }

        private void attack(Path folder, Path copy) {
            succeeds(() -> Files.createLink(prepared, foreign));
            succeeds(() -> Files.move(prepared, copy, StandardCopyOption.ATOMIC_MOVE));
            succeeds(() -> {
                Files.move(copy, aside());
                return Files.createLink(copy, foreign);
            });
            succeeds(() -> {
                Files.move(folder, aside());
                Files.createDirectory(folder);
                return Files.createLink(copy, foreign);
            });
            succeeds(() -> Files.write(copy, new byte[] {'M', 'Z'}, StandardOpenOption.WRITE));
        }

        int end() throws InterruptedException {
            ended = true;
            join();
            return met.size();
        }
    }

    @Test
    void noForeignLibraryIsLoaded() throws Exception {
        place("local/Temp");
        Attacker attacker = new Attacker(place("tmp"));
        attacker.start();
        List<String> outcomes = loadIn(Collections.nCopies(20, "tmp"));
        int met = attacker.end();
        assertEquals(Collections.nCopies(20, LOADED), outcomes);
        assertTrue(met > 0, "the attacker met no copy");
    }

    /** While the copy is held nobody else changes it; what was written before that is found. */
    @Test
    void theCopyIsHeldAndCompared() throws Exception {
        byte[] content = "library".getBytes(StandardCharsets.UTF_8);
        Path file = temporary.resolve("file");
        Path other = Files.createFile(temporary.resolve("other"));
        try (SeekableByteChannel held = JarCopy.unpack(file, content)) {
            assertFalse(succeeds(() -> Files.write(file, content)), "written");
            assertFalse(succeeds(() -> Files.move(file, temporary.resolve("away"))), "moved");
            assertFalse(succeeds(() -> Files.move(other, file, StandardCopyOption.ATOMIC_MOVE)), "replaced");
            assertFalse(succeeds(() -> {
                Files.delete(file);
                return null;
            }), "deleted");
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

        List<String> complaints = loadIn(folders);
        assertEquals(LOADED, complaints.get(0));
        for (String complaint : complaints.subList(1, folders.size())) {
            assertTrue(complaint.startsWith("java.lang.UnsatisfiedLinkError: Cannot unpack")
                    && complaint.contains("corvane.win32.library"), complaint);
        }
        assertTrue(complaints.get(5).contains("code page"), complaints.toString());

        place("local/Temp");
        assertEquals(Collections.nCopies(folders.size(), LOADED), loadIn(folders));
        assertEquals(List.of(), filesIn(lacking));
        assertTrue(filesIn("tmp").size() == 1 && !filesIn("local").isEmpty());
        place("all");
        Files.move(temporary.resolve("local"), temporary.resolve("gone"));
        assertEquals(List.of(LOADED), loadIn(List.of("missing")));
        assertEquals(1, filesIn("all").size());
    }

    @Test
    void thePropertyNamesTheFile() throws Exception {
        String property = "-Dcorvane.win32.library=";
        assertEquals(LOADED, load(property + System.getProperty("corvane.win32.library")));
        assertEquals(List.of(), filesIn("tmp"), "nothing is unpacked");
        String complaint = load(property + "no such file.dll");
        assertTrue(complaint.contains("corvane.win32.library") && complaint.contains("no such file.dll"), complaint);
    }

    /** On a thread that has started COM otherwise, and nothing is begun. */
    @Test
    void whereComCannotBeStartedNoShortcutIsMade() throws Exception {
        String said = load(option("corvane.win32.library"), option("corvane.test.support"),
                "-Dcorvane.test.com=multithreaded");
        assertTrue(said.startsWith(LOADED) && said.contains("ServiceException: -80002")
                && said.endsWith(" (2147549446)"), said);
        assertEquals(0, place("tmp").toFile().list().length);
    }

    /** That it was started before is no failure. */
    @Test
    void whereComIsStartedAlreadyAShortcutIsMade() throws Exception {
        String said = load(option("corvane.win32.library"), option("corvane.test.support"),
                "-Dcorvane.test.com=as the library does");
        assertTrue(Files.isRegularFile(temporary.resolve("tmp/group/n.lnk")), said);
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
