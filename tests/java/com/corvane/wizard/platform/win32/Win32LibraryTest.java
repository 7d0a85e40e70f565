package com.corvane.wizard.platform.win32;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.corvane.testing.LoadProbe;
import com.corvane.testing.Native;
import com.corvane.wizard.service.ServiceException;
import com.sun.jna.platform.win32.Advapi32Util;
import java.io.IOException;
import java.lang.module.ModuleDescriptor.Exports;
import java.lang.module.ModuleDescriptor;
import java.lang.module.ModuleFinder;
import java.lang.reflect.Method;
import java.net.URL;
import java.net.URLClassLoader;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.attribute.FileTime;
import java.util.Collections;
import java.util.List;
import java.util.stream.Collectors;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;

/** How the library is found and loaded, in JVMs of its own. */
class Win32LibraryTest {

    private static final String LOADED = "loaded, answers true";
    private static final String PROPERTY = "-Dcorvane.win32.library=";
    static final String BUILT = PROPERTY + System.getProperty("corvane.win32.library");

    /** As this Windows calls the system and the administrators, in its language. */
    static final List<String> RULERS = List.of(Advapi32Util.getAccountBySid("S-1-5-18").fqn,
            Advapi32Util.getAccountBySid("S-1-5-32-544").fqn);

    @TempDir
    Path temporary;

    private Path place(String name) throws IOException {
        return Files.createDirectories(temporary.resolve(name));
    }

    private List<Path> filesIn(String place) throws IOException {
        try (var files = Files.walk(temporary.resolve(place))) {
            return files.filter(Files::isRegularFile).toList();
        }
    }

    @Test
    void copiesThatNothingUsesAreRemoved() throws Exception {
        Path left = Files.createFile(place("tmp/corvane_win32-1").resolve("corvane_win32-1.dll"));
        Path aboutToBeFilled = place("tmp/corvane_win32-2");
        Path old = Files.createFile(place("tmp/corvane_win32-5").resolve("corvane_win32-5.exe"));
        Files.setLastModifiedTime(old.getParent(), FileTime.fromMillis(0));
        List<Path> others = List.of(Files.createFile(place("tmp/corvane_win32-3").resolve("other.dll")),
                Files.createFile(place("tmp/corvane_win32-3.0").resolve("corvane_win32-3.0.dll")));

        int loads = 20;
        assertEquals(Collections.nCopies(loads, LOADED), LoadProbe.load(temporary, Collections.nCopies(loads, "tmp")));
        assertFalse(Files.exists(left.getParent()) || Files.exists(old.getParent()));
        assertTrue(Files.exists(aboutToBeFilled) && filesIn("tmp").containsAll(others));
        int kept = filesIn("tmp").size() - others.size();
        assertTrue(kept >= 1 && kept < loads / 2, kept + " copies of class loaders that are gone");

        assertEquals(LOADED, LoadProbe.load(temporary));
        assertEquals(1, filesIn("tmp").size() - others.size(), "the copy of the last JVM, and no other");
    }

    /** The temporary folder: relative; not given, no path, not there, and with letters that the code page lacks. */
    @Test
    void anotherFolderServesWhereTheTemporaryOneDoesNot() throws Exception {
        String lacking = place("tmp\u65e5\u672c").toString();
        List<String> folders = List.of("tmp/../tmp", "", "a<b>|", "\0", "missing", lacking);

        List<String> complaints = LoadProbe.load(temporary, folders);
        assertEquals(LOADED, complaints.get(0));
        for (String complaint : complaints.subList(1, folders.size())) {
            assertTrue(complaint.startsWith("java.lang.UnsatisfiedLinkError: Cannot unpack")
                    && complaint.contains("corvane.win32.library"), complaint);
        }
        assertTrue(complaints.get(5).contains("code page"), complaints.toString());

        place("local/Temp");
        place("all");
        assertEquals(Collections.nCopies(folders.size(), LOADED), LoadProbe.load(temporary, folders));
        assertEquals(List.of(), filesIn(lacking));
        assertTrue(filesIn("tmp").size() == 1 && !filesIn("local/Temp").isEmpty());
        Files.move(temporary.resolve("local"), temporary.resolve("gone"));
        assertEquals(List.of(LOADED), LoadProbe.load(temporary, List.of("missing")));
        assertEquals(1, filesIn("all").size());
    }

    @Test
    void thePropertyNamesTheFile() throws Exception {
        assertEquals(LOADED, LoadProbe.load(temporary, BUILT));
        assertEquals(List.of(), filesIn("tmp"), "nothing is unpacked");
        String complaint = LoadProbe.load(temporary, PROPERTY + "no such file.dll");
        assertTrue(complaint.contains("corvane.win32.library") && complaint.contains("no such file.dll"), complaint);
        complaint = LoadProbe.said(LoadProbe.jvmIn(temporary, PROPERTY + "no such file.dll",
                AfterwardsTest.Installer.class.getName(), "C:\\t\\a"));
        assertTrue(complaint.startsWith("Exception in thread \"main\" java.lang.UnsatisfiedLinkError: The"), complaint);
        assertTrue(LoadProbe.load(temporary, "-Dos.arch=aarch64").contains("needs a 64-bit Windows JVM"));
        Files.copy(Path.of(System.getProperty("corvane.win32.library")), temporary.resolve("own.dll"));
        assertEquals(LOADED, LoadProbe.load(temporary, PROPERTY + "own.dll"), "from the current directory");
    }

    /** The property names a file that the loader of this JVM's classes has, so that another one is refused. */
    @Test
    void everyClassOfNativesLoadsTheLibrary() throws Exception {
        Win32Library.load();
        URL[] jar = {Path.of(System.getProperty("corvane.test.jar")).toUri().toURL()};
        for (Class<?> type : Native.NATIVES.values().stream().map(Method::getDeclaringClass).distinct().toList()) {
            try (URLClassLoader another = new URLClassLoader(jar, null)) {
                assertThrows(UnsatisfiedLinkError.class, () -> Class.forName(type.getName(), true, another), type::getName);
            }
        }
    }

    /** A place may let the file be written and not be loaded. */
    @Test
    void thePlacesAreTriedInTheirTurn() {
        String said = assertThrows(IOException.class, () -> UnpackedFile.<RuntimeException>use(Win32Library.FILE,
                (file, held) -> {
                    throw new UnsatisfiedLinkError("refused");
                })).getMessage();
        assertTrue(said.matches("(?s)(.*refused){2,}.*"), said);
        assertThrows(ServiceException.class, () -> UnpackedFile.<ServiceException>use(Win32Library.FILE,
                (file, held) -> {
                    throw new ServiceException(-70007);
                }), "what is no matter of the place");
    }

    @Test
    void asAModuleItOffersAllItsPackages() {
        ModuleDescriptor module = ModuleFinder.of(Path.of(System.getProperty("corvane.test.jar")))
                .find("com.corvane.win32").orElseThrow().descriptor();
        assertEquals(module.packages(), module.exports().stream().map(Exports::source).collect(Collectors.toSet()));
        assertTrue(module.requires().stream().anyMatch(needed -> needed.name().equals("jdk.unsupported")));
    }

    /** It is not on a thread that has started it otherwise, and nothing is begun; that it is started is no failure. */
    @Test
    void whereComCannotBeStartedNoShortcutIsMade() throws Exception {
        // JNA needs random numbers, which the JVM lacks under Wine 10 without this.
        String random = "-Djava.net.preferIPv4Stack=true";
        String said = LoadProbe.load(temporary, BUILT, random, "-Dcorvane.test.com=multithreaded");
        assertTrue(said.startsWith(LOADED) && said.contains("ServiceException: -80002")
                && said.endsWith(" (2147549446)"), said);
        assertFalse(Files.exists(temporary.resolve("tmp/group")));
        said = LoadProbe.load(temporary, BUILT, random, "-Dcorvane.test.com=as the library does");
        assertTrue(Files.isRegularFile(temporary.resolve("tmp/group/n.lnk")), said);
    }

    @Test
    void anotherSystemIsToldWhatIsMissing() {
        Win32Library.requireWindows("Windows Server 2022", "amd64");
        String message = assertThrows(UnsatisfiedLinkError.class,
                () -> Win32Library.requireWindows("Linux", "amd64")).getMessage();
        assertTrue(message.matches(".*64-bit Windows.*Linux.*amd64.*"), message);
    }
}
