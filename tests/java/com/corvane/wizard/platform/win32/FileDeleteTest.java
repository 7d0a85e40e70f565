package com.corvane.wizard.platform.win32;

import static com.corvane.testing.Outcome.assertFails;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;

import com.corvane.testing.Bytes;
import com.corvane.testing.Call;
import com.corvane.testing.Folder;
import com.corvane.testing.Hooks;
import com.corvane.testing.Reboot;
import com.corvane.testing.StandardError;
import com.corvane.testing.TestBed;
import com.corvane.testing.Windows;
import java.nio.file.Files;
import java.util.List;
import org.junit.jupiter.api.BeforeEach;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.extension.ExtendWith;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.EnumSource;

/** Deleting a file, or one directory; and the lines that Windows 9x finds in WinInit.Ini. */
@ExtendWith(TestBed.class)
class FileDeleteTest {

    private static final String GUARD = "GetFileAttributes target";
    private static final String LATER = "MoveFileEx target null 4";
    private static final String LOOK_UP = "GetProcAddress MoveFileExW";

    private final Win32FileServiceImpl files = new Win32FileServiceImpl();
    private final Folder folder = Folder.named("delete");

    @BeforeEach
    void makeFile() {
        folder.file("target", "old");
        Reboot.forget();
    }

    /** The same rules for a file and for a directory. */
    @ParameterizedTest
    @EnumSource(names = {"W95", "ME", "NT4", "W10"})
    void whatIsInUseIsDeletedAtTheReboot(Windows system) throws Exception {
        Rehearsal rehearsal = new Rehearsal(system, folder);
        for (String[] kind : new String[][] {{"delete", "DeleteFile", "-1 "}, {"remove", "RemoveDirectory", ""}}) {
            String now = kind[1] + " target";
            rehearsal.expect("0", kind[0], "", GUARD, now);
            rehearsal.expect(kind[2] + "error 2", kind[0], kind[1] + "=2", GUARD, now);
            for (String inUse : new String[] {kind[1] + "=32", kind[1] + "=5"}) {
                if (system.isAnsi()) {
                    rehearsal.expect("1", kind[0], inUse, GUARD, now, "NUL=target");
                    rehearsal.expect(kind[2] + "error 8", kind[0], inUse + " CreateFile=8", GUARD, now);
                } else {
                    rehearsal.expect("1", kind[0], inUse, GUARD, now, LOOK_UP, LATER);
                    rehearsal.expect(kind[2] + "error 87", kind[0], inUse + " MoveFileEx=87",
                            GUARD, now, LOOK_UP, LATER);
                }
            }
        }
        folder.setAttributes("target", Folder.READ_ONLY);
        rehearsal.expect("0", "delete", "", GUARD, "SetFileAttributes target 32", "DeleteFile target");
        folder.clear();
        rehearsal.expect("0", "delete", "", GUARD, "SetFileAttributes target 0xfffffffe", "DeleteFile target");
    }

    /** Only of a file is the failure told then. */
    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void aFailureWithoutAnErrorRaisesNothing(Windows system) throws Exception {
        Rehearsal rehearsal = new Rehearsal(system, folder);
        rehearsal.expect("-1", "delete", "DeleteFile=none", GUARD, "DeleteFile target");
        rehearsal.expect("0", "remove", "RemoveDirectory=none", GUARD, "RemoveDirectory target");
    }

    /** Of the file, or of the directory, by the name of the function. */
    private void assertDeleteFails(String function, int error) {
        if (function.startsWith("DeleteFile")) {
            assertFails(-30019, error, () -> files.win32DeleteFile(folder.path("target")));
        } else {
            assertFails(-30020, error, () -> files.win32DeleteDirectory(folder.path("target"), true, true));
        }
    }

    @Test
    void withoutMoveFileExNothingIsLeftForTheReboot() {
        for (String function : new String[] {"DeleteFileW", "RemoveDirectoryW"}) {
            Hooks.reset();
            Windows.NT4.use();
            Hooks.hide("MoveFileExW");
            Hooks.fail(function, 1, 32);
            Hooks.arm();
            assertDeleteFails(function, 127);
        }
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void aLockedRangeIsToldOnStandardError(Windows system) throws Exception {
        for (String function : new String[] {"DeleteFile", "RemoveDirectory"}) {
            Hooks.reset();
            system.use();
            Hooks.fail(system.function(function), 1, 33);
            Hooks.arm();
            assertEquals("it knows its locked", StandardError.during(() -> assertDeleteFails(function, 33)));
        }
        assertEquals("old", folder.content("target"));
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void filesAreReallyDeleted(Windows system) throws Exception {
        system.use();
        folder.setAttributes("target", Folder.READ_ONLY + Folder.HIDDEN);
        assertEquals(0, files.win32DeleteFile(folder.path("target")));
        assertFalse(folder.has("target"));
        assertFails(-30019, 2, () -> files.win32DeleteFile(folder.path("target")));
        folder.file("folder/file", "kept");
        assertFails(-30020, 145, () -> files.win32DeleteDirectory(folder.path("folder"), true, true));
        assertEquals("kept", folder.content("folder/file"));
    }

    @Test
    void winInitIniIsEditedThroughAView() throws Exception {
        String before = "[Other]\r\na=b\r\n[Rename]\r\nNUL=C:\\X\r\n";
        Files.writeString(Reboot.WIN_INIT, before);
        String line = "NUL=" + folder.path("target") + "\n";
        Hooks.reset();
        Windows.W98.use();
        Hooks.fail("DeleteFileA", 1, 32);
        Hooks.fail("GetShortPathNameA", 1, 5);
        Hooks.arm();
        assertEquals(1, files.win32DeleteFile(folder.path("target")));
        assertEquals(before.replace("[Rename]\r\n", "[Rename]\r\n" + line), Files.readString(Reboot.WIN_INIT));

        int size = before.length() + line.length() + 10;
        assertWords("CreateFileA", 1, 0xC0000000, 0, 0, 4, 0x08000080, 0);
        assertWords("CreateFileMappingA", 1, 0, 4, 0, size, 0);
        assertWords("MapViewOfFile", 1, 2, 0, 0, 0);
        assertWords("GetWindowsDirectoryA", 1, 260);
        assertWords("SetFilePointer", 1, size - 10, 0, 0);
        List<String> ends = Call.all().stream().map(Call::name)
                .filter(name -> name.matches("UnmapViewOfFile|CloseHandle|SetFilePointer|SetEndOfFile")).toList();
        assertEquals(List.of("UnmapViewOfFile", "CloseHandle", "SetFilePointer", "SetEndOfFile", "CloseHandle"), ends);
    }

    private static void assertWords(String function, int first, int... words) {
        Call call = Call.only(function);
        for (int index = 0; index < words.length; ++index) {
            assertEquals(words[index], call.number(first + index), function + ", argument " + (first + index));
        }
    }

    /** The size is asked for first; a name that does not fit is no name. */
    @Test
    void linesHoldShortNames() throws Exception {
        Object[][] answers = {{5, 4, "NUL=C:\\X"}, {5, 5, null}, {5, 0, null}, {0, 0, null}};
        for (Object[] answer : answers) {
            Reboot.forget();
            Hooks.reset();
            Windows.ME.use();
            Hooks.fail("DeleteFileA", 1, 5);
            Hooks.captureText("GetShortPathNameA", 0);
            Hooks.answer("GetShortPathNameA", (int) answer[0]);
            Hooks.answer("GetShortPathNameA", (int) answer[1], 1, Bytes.latin1("C:\\X\0"));
            Hooks.arm();
            if ((int) answer[0] == 0) {
                Hooks.fail("GetShortPathNameA", 1, 2);
            }
            assertEquals(1, files.win32DeleteFile(folder.path("target")));
            String expected = answer[2] == null ? "NUL=" + folder.path("target") : (String) answer[2];
            assertEquals("[Rename]\n" + expected + "\n", Files.readString(Reboot.WIN_INIT));
            List<Call> calls = Call.of("GetShortPathNameA");
            assertEquals(folder.path("target"), calls.get(0).text(0));
            assertEquals(List.of(0L, 0), List.of(calls.get(0).word(1), calls.get(0).number(2)));
            if (calls.size() > 1) {
                assertEquals(5, calls.get(1).number(2));
            }
        }
    }

    /** What replaces and what is replaced: the system knows neither by its long name so early. */
    @Test
    void aReplacementIsNamedShortToo() throws Exception {
        for (boolean copied : new boolean[] {true, false}) {
            Reboot.forget();
            Hooks.reset();
            Windows.W98.use();
            Hooks.fail(copied ? "CopyFileA" : "MoveFileA", 1, copied ? 32 : 5);
            for (String name : List.of("C:\\OLD~1", "C:\\NEW~1")) {
                Hooks.answer("GetShortPathNameA", 9);
                Hooks.answer("GetShortPathNameA", 8, 1, Bytes.latin1(name + "\0"));
            }
            Hooks.arm();
            String target = folder.path("target");
            String source = folder.file("source", "new");
            assertEquals(1, copied ? files.win32CopyFile(source, target, true)
                    : files.win32MoveFile(source, target, true));
            assertEquals("[Rename]\nC:\\OLD~1=C:\\NEW~1\n", Files.readString(Reboot.WIN_INIT));
        }
    }

    /** The file is made, or stays as long as it was, when it cannot be mapped. */
    @Test
    void aFailedMappingLeavesTheText() throws Exception {
        for (String function : new String[] {"CreateFileMappingA", "MapViewOfFile"}) {
            for (String before : new String[] {null, "", "[Rename]\r\nNUL=C:\\X\r\n"}) {
                Reboot.forget();
                if (before != null) {
                    Files.writeString(Reboot.WIN_INIT, before);
                }
                Hooks.reset();
                Windows.W98.use();
                Hooks.fail("DeleteFileA", 1, 5);
                Hooks.fail(function, 1, 1450);
                Hooks.arm();
                assertFails(-30019, 1450, () -> files.win32DeleteFile(folder.path("target")));
                assertEquals(before == null ? "" : before, Files.readString(Reboot.WIN_INIT));
            }
        }
    }
}
