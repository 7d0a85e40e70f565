package com.corvane.wizard.platform.win32;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.corvane.testing.LoadProbe;
import com.corvane.testing.Outcome;
import com.sun.jna.platform.win32.Advapi32Util;
import java.io.IOException;
import java.nio.channels.SeekableByteChannel;
import java.nio.charset.StandardCharsets;
import java.nio.file.FileSystems;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.StandardCopyOption;
import java.nio.file.StandardOpenOption;
import java.nio.file.attribute.AclEntry;
import java.nio.file.attribute.AclEntryFlag;
import java.nio.file.attribute.AclEntryType;
import java.nio.file.attribute.AclFileAttributeView;
import java.nio.file.attribute.UserPrincipal;
import java.util.ArrayList;
import java.util.Collections;
import java.util.EnumSet;
import java.util.HashSet;
import java.util.List;
import java.util.Set;
import java.util.stream.Stream;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.Timeout;
import org.junit.jupiter.api.function.ThrowingConsumer;
import org.junit.jupiter.api.io.TempDir;

/** Others who want a library of theirs to be loaded with the installer's rights. */
class LoadAttackTest {

    /** Which of the attacks changes the copy itself. */
    private static final int WRITING = 3;

    @TempDir
    Path temporary;

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
    void noForeignLibraryIsLoadedInPlaceOfTheCopy() throws Exception {
        Files.createDirectories(temporary.resolve("local/Temp"));
        Path tmp = Files.createDirectory(temporary.resolve("tmp"));
        List<ThrowingConsumer<Path>> attacks = new ArrayList<>(attacks());
        attacks.add(copy -> {
            Files.move(copy.getParent(), aside());
            Files.createDirectory(copy.getParent());
            Files.createLink(copy, temporary.resolve("foreign"));
        });
        attacks.add(copy -> {
            Path prepared = Files.createDirectory(aside());
            Files.createLink(prepared.resolve(copy.getFileName()), temporary.resolve("foreign"));
            Files.move(copy.getParent(), aside());
            Files.createSymbolicLink(copy.getParent(), prepared);
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
        List<String> outcomes = LoadProbe.load(temporary, Collections.nCopies(20, "tmp"));
        attacker.interrupt();
        attacker.join();
        assertEquals(Collections.nCopies(20, "loaded, answers true"), outcomes);
        assertFalse(met.isEmpty(), "the attacker met no copy");
    }

    /** What is looked for by its name is looked for beside java.exe, in the current directory and on the PATH, too. */
    @Test
    void noPlantedLibraryIsLoaded() throws Exception {
        Path home = Path.of(System.getProperty("java.home"));
        Path own = temporary.resolve("java");
        try (Stream<Path> all = Files.walk(home)) {
            for (Path file : (Iterable<Path>) all::iterator) {
                Files.copy(file, own.resolve(home.relativize(file).toString()));
            }
        }
        Path path = Files.createDirectories(temporary.resolve("tmp"));
        ProcessBuilder process = LoadProbe.jvmIn(temporary, "-Dcorvane.test.user=nobody", LoadProbe.class.getName());
        process.command().set(0, own.resolve("bin\\java.exe").toString());
        process.environment().put("PATH", path + ";" + System.getenv("PATH"));
        String said = LoadProbe.said(process);
        assertTrue(said.contains("deleteUser"), said);
        for (Path place : List.of(own.resolve("bin"), temporary, path)) {
            for (String name : List.of("corvane_win32", "netapi32", "netmsg", "ntdll", "advapi32", "shell32")) {
                Files.copy(Path.of(System.getProperty("corvane.test.support")), place.resolve(name + ".dll"));
            }
        }
        assertEquals(said, LoadProbe.said(process));
    }

    /** While the copy is held nobody else changes it; what was written before that is found. */
    @Test
    void theCopyIsHeldAndCompared() throws Exception {
        byte[] content = "library".getBytes(StandardCharsets.UTF_8);
        Path file = temporary.resolve("file");
        List<ThrowingConsumer<Path>> attacks = attacks();
        try (SeekableByteChannel held = JarCopy.unpack(file, content)) {
            for (ThrowingConsumer<Path> attack : attacks) {
                assertThrows(IOException.class, () -> attack.accept(file));
            }
            JarCopy.requireContent(held, content);
        }
        try (SeekableByteChannel held = JarCopy.holdContent(file)) {
            assertThrows(IOException.class, () -> attacks.get(WRITING).accept(file));
            JarCopy.requireContent(held, content);
        }
        assertThrows(IOException.class, () -> JarCopy.unpack(file, content), "what is there is not taken over");
        Path another = temporary.resolve("..").resolve(temporary.getFileName()).resolve("new");
        assertThrows(IOException.class, () -> JarCopy.unpack(another, content), "its folder has another name");
        for (String found : new String[] {"Library", "librar", "libraryy", ""}) {
            Files.writeString(file, found);
            try (SeekableByteChannel changed = Files.newByteChannel(file)) {
                assertThrows(IOException.class, () -> JarCopy.requireContent(changed, content), found);
            }
        }
    }

    /** In the moment before the copy is opened for good; and when that, or its use, has failed nothing stays there. */
    @Test
    @Timeout(120)
    void whatIsWrittenInTheMiddleIsFound() throws Exception {
        Throwable failure = null;
        while (failure == null || !failure.getMessage().contains("changed the copy")) {
            Path folder = CopyFolder.create(temporary);
            Path copy = CopyFolder.copyIn(folder, Win32Library.FILE);
            Thread writer = new Thread(() -> {
                while (!Thread.interrupted()) {
                    Outcome.thrownBy(() -> Files.writeString(copy, "Library", StandardOpenOption.WRITE));
                }
            });
            writer.start();
            failure = Outcome.thrownBy(() -> JarCopy.<IOException>useIn(folder, copy,
                    "library".getBytes(StandardCharsets.UTF_8), (file, held) -> {
                        writer.interrupt();
                        throw new IOException("used");
                    }));
            writer.interrupt();
            writer.join();
            assertTrue(!failure.getMessage().equals("used") || !Files.exists(folder), "it stays");
        }
    }

    /** Its folder is closed from its first moment, and one that others may enter is not used in its place. */
    @Test
    void aPlaceOpenToEverybodyHandsNoRightsDown() throws Exception {
        UserPrincipal everyone = FileSystems.getDefault().getUserPrincipalLookupService()
                .lookupPrincipalByName(Advapi32Util.getAccountBySid("S-1-1-0").fqn);
        Set<UserPrincipal> owner = Set.of(Files.getOwner(temporary));
        setRights(CopyFolder.entries(AclEntryType.ALLOW, owner));
        List<UserPrincipal> named = rights(temporary).stream().map(AclEntry::principal).toList();
        assertFalse(CopyFolder.closedRights(temporary, owner).stream().map(AclEntry::principal)
                .allMatch(named::contains), "all users are denied, whom the place does not name");
        setRights(CopyFolder.entries(AclEntryType.ALLOW, Set.of(everyone)));
        for (AclEntry entry : rights(CopyFolder.createClosed(temporary, owner))) {
            assertFalse(entry.principal().equals(everyone) && entry.type() == AclEntryType.ALLOW, entry.toString());
            if (entry.principal().equals(everyone)) {
                break;
            }
        }
        Path folder = CopyFolder.create(temporary);
        Path file = Files.createFile(folder.resolve("file"));
        CopyFolder.requireClosed(folder, file);
        assertThrows(IOException.class, () -> CopyFolder.requireClosed(temporary, file));
        assertThrows(IOException.class, () -> CopyFolder.requireClosed(folder, folder.resolve("none")), "its owner");
        for (Path other : List.of(temporary, folder.resolve("../" + folder.getFileName()))) {
            assertThrows(IOException.class, () -> JarCopy.<RuntimeException>useIn(
                    other, folder.resolve("new" + other.getNameCount()), new byte[0], (copy, held) -> {}), other.toString());
        }
        for (AclEntry entry : rights(folder)) {
            assertTrue(entry.principal().equals(Files.getOwner(folder))
                    || Win32LibraryTest.RULERS.contains(entry.principal().getName()), entry.toString());
        }
    }

    /** Asked of entries that nobody has stored: Wine keeps neither their order nor another owner. */
    @Test
    void whoMayEnterAFolder() {
        UserPrincipal one = () -> "one";
        UserPrincipal other = () -> "other";
        AclEntry mine = CopyFolder.entries(AclEntryType.ALLOW, Set.of(one)).get(0);
        AclEntry open = CopyFolder.entries(AclEntryType.ALLOW, Set.of(other)).get(0);
        AclEntry denied = CopyFolder.entries(AclEntryType.DENY, Set.of(other)).get(0);
        assertEquals(EnumSet.of(AclEntryFlag.FILE_INHERIT, AclEntryFlag.DIRECTORY_INHERIT), mine.flags());
        assertTrue(CopyFolder.isClosed(one, List.of(denied, mine), Set.of(one)));
        assertFalse(CopyFolder.isClosed(one, List.of(open, mine), Set.of(one)));
        assertFalse(CopyFolder.isClosed(other, List.of(mine), Set.of(one)));
        assertFalse(CopyFolder.isClosed(one, List.of(), Set.of(one)));
        AclEntry nothing = AclEntry.newBuilder(open).setPermissions().build();
        AclEntry inherited = AclEntry.newBuilder(nothing).setFlags(AclEntryFlag.INHERIT_ONLY).build();
        assertTrue(CopyFolder.isClosed(one, List.of(nothing, mine), Set.of(one)));
        assertFalse(CopyFolder.isClosed(one, List.of(inherited, mine), Set.of(one)));
    }

    private void setRights(List<AclEntry> rights) throws IOException {
        Files.getFileAttributeView(temporary, AclFileAttributeView.class).setAcl(rights);
    }

    private static List<AclEntry> rights(Path folder) throws IOException {
        return Files.getFileAttributeView(folder, AclFileAttributeView.class).getAcl();
    }
}
