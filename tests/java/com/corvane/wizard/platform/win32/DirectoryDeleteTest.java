package com.corvane.wizard.platform.win32;

import static com.corvane.testing.Outcome.assertFails;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.corvane.testing.Bytes;
import com.corvane.testing.Call;
import com.corvane.testing.FileUser;
import com.corvane.testing.Folder;
import com.corvane.testing.Hooks;
import com.corvane.testing.Outcome;
import com.corvane.testing.Reboot;
import com.corvane.testing.StandardError;
import com.corvane.testing.TestBed;
import com.corvane.testing.Windows;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.Arrays;
import java.util.List;
import java.util.Set;
import org.junit.jupiter.api.BeforeEach;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.extension.ExtendWith;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.EnumSource;

/** Deleting a directory with what is in it. */
@ExtendWith(TestBed.class)
class DirectoryDeleteTest {

    private static final int DIRECTORY = 0x10;
    private static final int REPARSE_POINT = 0x400;
    private static final int JUNCTION = 0xA0000003;
    private static final int CLOUD_FILE = 0x9000001A;

    private final Win32FileServiceImpl files = new Win32FileServiceImpl();
    private final Folder folder = Folder.named("tree");

    @BeforeEach
    void nothingWaits() {
        Reboot.forget();
    }

    private int delete(String path) throws Exception {
        return files.win32DeleteDirectory(path, false, true);
    }

    /** The changes and searches of a call in order: name and path, without the letter of the family. */
    private List<String> calls(Windows system) {
        Set<String> wanted = Set.of("FindFirstFile", "DeleteFile", "RemoveDirectory", "FindClose");
        return Call.all().stream()
                .filter(call -> wanted.contains(call.name().replaceFirst("[AW]$", "")))
                .map(call -> shown(system, call)).toList();
    }

    private String shown(Windows system, Call call) {
        String name = call.name().replaceFirst(system.function("") + "$", "");
        return name.equals("FindClose") ? name : name + " " + call.text(0).replace(folder.path(""), "");
    }

    private static void watch(Windows system) {
        Hooks.reset();
        system.use();
        for (String function : new String[] {"FindFirstFile", "DeleteFile", "RemoveDirectory"}) {
            Hooks.captureText(system.function(function), 0);
        }
        Hooks.arm();
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void subDirectoriesGoFirstAndFilesOnceTheirSearchIsOver(Windows system) throws Exception {
        for (String end : new String[] {"", "\\", "/"}) {
            folder.file("d/a", "");
            folder.file("d/sub/b", "");
            folder.file("d/z", "");
            watch(system);
            assertEquals(0, delete(folder.path("d") + end));
            String prefix = "\\d" + (end.isEmpty() ? "\\" : end);
            assertEquals(List.of("FindFirstFile " + prefix + "*", "FindFirstFile " + prefix + "sub\\*", "FindClose",
                    "DeleteFile " + prefix + "sub\\b", "RemoveDirectory " + prefix + "sub", "FindClose",
                    "DeleteFile " + prefix + "a", "DeleteFile " + prefix + "z", "RemoveDirectory \\d" + end),
                    calls(system));
            assertFalse(folder.has("d"));
        }
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void pathsAndFlagsThatDeleteLess(Windows system) throws Exception {
        folder.file("d/file", "");
        folder.file("d/sub/b", "kept");
        watch(system);
        for (String nothing : new String[] {null, ""}) {
            assertFails(-30020, 3, () -> delete(nothing));
            assertFails(-30020, 3, () -> files.win32DeleteDirectory(nothing, false, false));
        }
        assertEquals(List.of(), calls(system));
        assertFails(-30020, 145, () -> files.win32DeleteDirectory(folder.path("d"), true, true));
        assertTrue(folder.has("d/file"));
        assertFails(-30020, 145, () -> files.win32DeleteDirectory(folder.path("d"), false, false));
        assertFalse(folder.has("d/file"));
        assertEquals("kept", folder.content("d/sub/b"));
        assertEquals(0, files.win32DeleteDirectory(folder.path("d\\sub"), false, false));
        assertFalse(folder.has("d/sub"));
        assertEquals(0, files.win32DeleteDirectory(folder.path("d"), true, false));
        assertFalse(folder.has("d"));
        assertFails(-30020, 3, () -> delete(folder.path("d")));
        String file = folder.file("file", "kept");
        assertTrue(Outcome.of(() -> delete(file)).hasCode(-30020));
        assertEquals("kept", folder.content("file"));
        assertEquals(List.of(), Reboot.pending());
    }

    /** With a separator behind it, it would be the root: Windows is not even asked. */
    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void nothingIsDeletedOrMadeByADriveAlone(Windows system) throws Exception {
        Win32DesktopServiceImpl desktop = new Win32DesktopServiceImpl();
        String file = folder.file("file", "kept");
        // The code page of Windows 9x makes a colon of the last one.
        for (String drive : List.of("Q:", "q: ", "Q:...", "\\\\.\\Q:", "\\\\?\\Q:", "//./Q:", "\\??\\Q:",
                "\\\\.\\/Volume{1}", "\\\\?\\GLOBALROOT\\Device\\HarddiskVolume1", "\\\\.\\Q:.", "Q\uFF1A")) {
            if (!system.isAnsi() && drive.equals("Q\uFF1A")) {
                continue;
            }
            watch(system);
            assertFails(-30017, 3, () -> files.win32CopyFile(file, drive, true));
            assertFails(-30018, 3, () -> files.win32MoveFile(file, drive, true));
            assertFails(-30018, 3, () -> files.win32MoveFile(drive, file, true));
            assertFails(-30019, 3, () -> files.win32DeleteFile(drive));
            assertFails(-30020, 3, () -> delete(drive));
            assertFails(-30020, 3, () -> files.win32DeleteDirectory(drive, true, true));
            assertTrue(Outcome.of(() -> files.isDirectoryWritable(drive)).hasCode(0x80070057));
            assertFails(-80000, 3, () -> desktop.createDesktopFolder(drive, "a"));
            assertFails(-80001, 3, () -> desktop.removeDesktopFolder(drive, "a"));
            assertFails(-80002, 3, () -> desktop.createDesktopItem(drive, "a", "n", "t", "", "", ""));
            assertFails(-80003, 3, () -> desktop.removeDesktopItem(drive, "", "n"));
            assertEquals(List.of(), Call.all().stream().map(Call::name)
                    .filter(name -> name.matches("(Copy|Create|Delete|Find|Move|Remove|.etFile).*[AW]")).toList());
        }
        for (String root : List.of("Q:\\", "Q:/", "\\\\?\\Q:\\", "Q:.", "\\\\host\\share", "Q:\\d\\q:", "\\\\.\\NUL")) {
            watch(system);
            assertTrue(Outcome.of(() -> delete(root)).hasCode(-30020));
            assertEquals(1, calls(system).size(), root);
        }
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void onlyTheWayToAFileInUseStays(Windows system) throws Exception {
        for (String file : new String[] {"a/first", "b/deep/locked", "b/deep/other", "b/clean/x", "c/last", "z"}) {
            folder.file("d/" + file, "content");
        }
        folder.setAttributes("d/z", Folder.READ_ONLY + Folder.HIDDEN);
        folder.setAttributes("d/c", Folder.READ_ONLY);
        FileUser.opens(folder.path("d\\b\\deep\\locked"), FileUser.WITH_READERS).during(() -> {
            watch(system);
            Hooks.fail("GetShortPathNameA", 1, 5);
            assertEquals(1, delete(folder.path("d")));
        });
        assertEquals(Set.of("", "d", "d\\b", "d\\b\\deep", "d\\b\\deep\\locked"), folder.state().keySet());
        String locked = folder.path("d\\b\\deep\\locked");
        if (system.isAnsi()) {
            assertEquals("[Rename]\nNUL=" + locked + "\n", Files.readString(Reboot.WIN_INIT));
        } else {
            assertEquals(List.of(locked), Reboot.pending());
        }
    }

    /** The directory waits, and what is above it stays; a later success changes nothing about the result. */
    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void aDirectoryInUseWaitsToo(Windows system) throws Exception {
        folder.folder("d/a");
        folder.file("d/b/file", "");
        watch(system);
        Hooks.fail(system.function("RemoveDirectory"), 1, 32);
        Hooks.fail("GetShortPathNameA", 1, 5);
        assertEquals(1, delete(folder.path("d")));
        assertEquals(Set.of("", "d", "d\\a"), folder.state().keySet());
        watch(system);
        Hooks.fail(system.function("RemoveDirectory"), 2, 5);
        Hooks.fail("GetShortPathNameA", 1, 5);
        assertEquals(1, delete(folder.path("d")), "the given directory itself");
        assertTrue(folder.has("d"));
        List<String> waits = List.of(folder.path("d\\a"), folder.path("d"));
        if (!system.isAnsi()) {
            assertEquals(waits, Reboot.pending());
        }
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void theFirstErrorEndsTheWalk(Windows system) throws Exception {
        folder.file("d/a", "found before");
        folder.file("d/sub/1", "fails");
        folder.file("d/sub/2", "left alone");
        folder.file("d/z", "found never");
        watch(system);
        Hooks.fail(system.function("DeleteFile"), 1, 33);
        Hooks.fail(system.function("DeleteFile"), 2, 1450);
        String said = StandardError.during(() -> assertFails(-30020, 33, () -> delete(folder.path("d"))));
        assertEquals("it knows its locked", said);
        assertEquals(Set.of("", "d", "d\\a", "d\\sub", "d\\sub\\1", "d\\sub\\2", "d\\z"), folder.state().keySet());
        // What was found already goes although a sub-directory has failed.
        watch(system);
        Hooks.fail(system.function("FindFirstFile"), 2, 21);
        assertFails(-30020, 21, () -> delete(folder.path("d")));
        assertEquals(Set.of("", "d", "d\\sub", "d\\sub\\1", "d\\sub\\2", "d\\z"), folder.state().keySet());
        watch(system);
        Hooks.fail(system.function("RemoveDirectory"), 1, 145);
        assertFails(-30020, 145, () -> delete(folder.path("d")));
        assertEquals(Set.of("", "d", "d\\sub", "d\\z"), folder.state().keySet());
        // A file that waits, and then an error: the error is told.
        folder.file("d/sub/1", "waits");
        folder.file("d/sub/2", "fails");
        watch(system);
        Hooks.fail(system.function("DeleteFile"), 1, 5);
        Hooks.fail(system.function("DeleteFile"), 2, 2);
        assertFails(-30020, 2, () -> delete(folder.path("d")));
        assertTrue(folder.has("d/z"));
    }

    /** A record of a search, of both families, with one entry. */
    private static byte[] found(Windows system, String name, int attributes, int tag) {
        byte[] record = new byte[system.isAnsi() ? 320 : 592];
        System.arraycopy(Bytes.number(attributes), 0, record, 0, 4);
        System.arraycopy(Bytes.number(tag), 0, record, 36, 4);
        byte[] text = system.encode(name);
        System.arraycopy(text, 0, record, 44, text.length);
        return record;
    }

    private List<String> deleteWithEntry(Windows system, int tag, boolean recursive) throws Exception {
        watch(system);
        String first = system.function("FindFirstFile");
        Hooks.answer(first, 0x1234, 1, found(system, "entry", DIRECTORY + REPARSE_POINT, tag));
        Hooks.answer(first, 0x5678, 1, found(system, ".", DIRECTORY, 0));
        for (int nth = 1; nth <= 2; ++nth) {
            Hooks.fail(system.function("FindNextFile"), nth, 18);
            Hooks.answer("FindClose", 1);
            Hooks.answer(system.function("RemoveDirectory"), 1);
        }
        assertEquals(0, files.win32DeleteDirectory(folder.path(""), false, recursive));
        return calls(system);
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void aLinkIsRemovedAndNotFollowed(Windows system) throws Exception {
        // A tag of 0 is an unknown link.
        for (int tag : new int[] {JUNCTION, 0xA000000C, 0}) {
            assertEquals(List.of("FindFirstFile \\*", "FindClose", "RemoveDirectory \\entry", "RemoveDirectory "),
                    deleteWithEntry(system, tag, true));
        }
        assertEquals(List.of("FindFirstFile \\*", "FindFirstFile \\entry\\*", "FindClose", "RemoveDirectory \\entry",
                "FindClose", "RemoveDirectory "), deleteWithEntry(system, CLOUD_FILE, true));
        assertEquals(List.of("FindFirstFile \\*", "FindClose", "RemoveDirectory "),
                deleteWithEntry(system, JUNCTION, false));
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void deepTreesAndManyFiles(Windows system) throws Exception {
        String deep = "d" + "/n".repeat(59);
        folder.file(deep + "/file", "");
        Hooks.reset();
        system.use();
        Hooks.arm();
        assertEquals(0, delete(folder.path("d")));
        assertFalse(folder.has("d"));
        assertEquals(60, Hooks.peakSearches());
        int count = system.isAnsi() ? 500 : 10_000;
        for (int number = 0; number < 40; ++number) {
            folder.folder("d/" + number);
        }
        for (int number = 0; number < count; ++number) {
            folder.bare("d/" + number % 40, Integer.toString(number));
        }
        Hooks.disarm();
        assertEquals(0, delete(folder.path("d")));
        assertFalse(folder.has("d"));
    }

    @Test
    void namesOutsideTheCodePageAreNames() throws Exception {
        String[] names = {"\u65E5\u672C\u8A9E", "\u0413\u0434\u0435", "a\u0301", "x".repeat(200)};
        Arrays.stream(names).forEach(name -> folder.file("d/" + name + "/" + name, ""));
        Windows.W10.use();
        assertEquals(0, delete(folder.path("d")));
        assertFalse(Files.exists(Path.of(folder.path("d"))));
    }
}
