package com.corvane.wizard.platform.win32;

import static com.corvane.testing.Outcome.assertFails;
import static com.corvane.testing.Outcome.beside;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertNull;

import com.corvane.testing.Folder;
import com.corvane.testing.TestBed;
import com.corvane.testing.Windows;
import org.junit.jupiter.api.BeforeEach;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.extension.ExtendWith;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.EnumSource;

/** Moving: which calls Windows gets in which case, and what is moved. */
@ExtendWith(TestBed.class)
class FileMoveTest {

    private static final String GUARD = "GetFileAttributes target";
    private static final String LOOK_UP = "GetProcAddress MoveFileExW";
    private static final String MOVE = "MoveFileEx source target 11";
    private static final String ASIDE = "MoveFileEx target target.delete_on_reboot 11";
    private static final String FORGET = "MoveFileEx target.delete_on_reboot null 4";
    private static final String PARK = "MoveFileEx source target.move_on_reboot 11";
    private static final String REPLACE = "MoveFileEx target.move_on_reboot target 5";
    private static final String PROBE = "CreateFile source 0x80000000 0 0 3 0 0";

    private final Win32FileServiceImpl files = new Win32FileServiceImpl();
    private final Folder folder = Folder.named("move");

    @BeforeEach
    void makeFiles() {
        folder.file("source", "new");
        folder.file("target", "old");
    }

    @ParameterizedTest
    @EnumSource(names = {"NT4", "W10"})
    void aMoveThatWorksOrIsRefusedIsOneCall(Windows system) throws Exception {
        Rehearsal rehearsal = new Rehearsal(system, folder);
        rehearsal.expect("0", "move over", "", GUARD, LOOK_UP, MOVE);
        rehearsal.expect("0", "move", "", GUARD, LOOK_UP, "MoveFileEx source target 10");
        rehearsal.expect("-1 error 2", "move over", "MoveFileEx=2", GUARD, LOOK_UP, MOVE);
        rehearsal.expect("0", "move over", "MoveFileEx=none", GUARD, LOOK_UP, MOVE);
        rehearsal.expect("0 error 127", "move over", "no MoveFileExW", GUARD, LOOK_UP);
    }

    @Test
    void aTargetInUseIsMovedAside() throws Exception {
        Rehearsal rehearsal = new Rehearsal(Windows.W10, folder);
        for (String inUse : new String[] {"MoveFileEx=32 ", "MoveFileEx=5 "}) {
            rehearsal.expect("1", "move over", inUse, GUARD, LOOK_UP, MOVE, ASIDE, MOVE, FORGET);
            rehearsal.expect("1", "move", inUse, GUARD, LOOK_UP, "MoveFileEx source target 10", ASIDE,
                    "MoveFileEx source target 10", FORGET);
            // The old file stays aside, and the error is reported beside the result.
            rehearsal.expect("1 error 112", "move over", inUse + "MoveFileEx#3=112",
                    GUARD, LOOK_UP, MOVE, ASIDE, MOVE);
            rehearsal.expect("1", "move over", inUse + "MoveFileEx#3=none",
                    GUARD, LOOK_UP, MOVE, ASIDE, MOVE, FORGET);
            rehearsal.expect("1 error 87", "move over", inUse + "MoveFileEx#4=87",
                    GUARD, LOOK_UP, MOVE, ASIDE, MOVE, FORGET);
            rehearsal.expect("-1 error 2", "move over", inUse + "MoveFileEx#2=2", GUARD, LOOK_UP, MOVE, ASIDE);
        }
    }

    @Test
    void aTargetThatDoesNotMoveWaitsForTheReboot() throws Exception {
        Rehearsal rehearsal = new Rehearsal(Windows.W10, folder);
        for (String locked : new String[] {"MoveFileEx=5 MoveFileEx#2=32 ", "MoveFileEx=32 MoveFileEx#2=5 "}) {
            rehearsal.expect("1", "move over", locked, GUARD, LOOK_UP, MOVE, ASIDE, PARK, REPLACE);
            rehearsal.expect("-1 error 112", "move over", locked + "MoveFileEx#3=112",
                    GUARD, LOOK_UP, MOVE, ASIDE, PARK);
            rehearsal.expect("-1 error 87", "move over", locked + "MoveFileEx#4=87",
                    GUARD, LOOK_UP, MOVE, ASIDE, PARK, REPLACE);
        }
    }

    @ParameterizedTest
    @EnumSource(names = {"W95", "ME"})
    void windows9xHasRulesOfItsOwn(Windows system) throws Exception {
        Rehearsal rehearsal = new Rehearsal(system, folder);
        String delete = "DeleteFile target";
        String move = "MoveFile source target";
        // A source that is there, or cannot be told to be missing, is moved only with leave to overwrite.
        rehearsal.expect("0", "move", "", GUARD, PROBE);
        rehearsal.expect("0", "move", "CreateFile=32", GUARD, PROBE);
        rehearsal.expect("0", "move over", "", GUARD, PROBE, delete, move);
        rehearsal.expect("0", "move over", "CreateFile=32", GUARD, PROBE, delete, move);
        rehearsal.expect("1", "move over", "DeleteFile=5", GUARD, PROBE, delete, "NUL=target", "target=source");
        rehearsal.expect("0 error 2", "move over", "DeleteFile=2", GUARD, PROBE, delete);
        rehearsal.expect("1", "move over", "MoveFile=5", GUARD, PROBE, delete, move, "target=source");
        rehearsal.expect("0 error 17", "move over", "MoveFile=17", GUARD, PROBE, delete, move);
        // That WinInit.Ini could not be written is not told.
        rehearsal.expect("1", "move over", "DeleteFile=5 CreateFile#2=5", GUARD, PROBE, delete);
        for (String missing : new String[] {"CreateFile=2 ", "CreateFile=3 "}) {
            rehearsal.expect("0", "move", missing, GUARD, PROBE, move);
            rehearsal.expect("1", "move", missing + "MoveFile=5", GUARD, PROBE, move, "target=source");
            rehearsal.expect("0 error 183", "move over", missing + "MoveFile=183", GUARD, PROBE, move);
        }
    }

    @Test
    void onWindows9xAnEmptyTargetDeletesTheSource() throws Exception {
        Rehearsal rehearsal = new Rehearsal(Windows.W98, folder);
        String delete = "DeleteFile source";
        String guard = "GetFileAttributes ''";
        String unguard = "SetFileAttributes '' 0xfffffffe";
        rehearsal.expect("0", "move to nothing", "", delete);
        rehearsal.expect("1", "move to nothing", "DeleteFile=5", delete, "NUL=source");
        rehearsal.expect("1", "move to nothing", "DeleteFile=5 CreateFile=5", delete);
        rehearsal.expect("0", "move to nothing", "DeleteFile=32", delete, guard, unguard, PROBE);
        rehearsal.expect("0 error 3", "move over to nothing", "DeleteFile=2 DeleteFile#2=3",
                delete, guard, unguard, PROBE, "DeleteFile ''");
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void filesAreReallyMoved(Windows system) throws Exception {
        system.use();
        folder.setAttributes("target", Folder.READ_ONLY);
        assertEquals(0, files.win32MoveFile(folder.path("source"), folder.path("target"), true));
        assertEquals("new", folder.content("target"));
        assertFalse(folder.has("source"));
        folder.file("source", "newer");
        if (system.isAnsi()) {
            assertEquals(0, files.win32MoveFile(folder.path("source"), folder.path("target"), false));
            assertEquals(0, files.win32MoveFile(folder.path("source"), folder.path("another"), false));
            assertEquals("newer", folder.content("source"));
            assertFails(-30018, 2, () -> files.win32MoveFile(folder.path("source"), folder.path("another"), true));
            assertEquals("newer", folder.content("source"));
            assertEquals(0, files.win32MoveFile(folder.path("source"), "", false));
        } else {
            assertFails(-30018, 183, () -> files.win32MoveFile(folder.path("source"), folder.path("target"), false));
            assertEquals("newer", folder.content("source"));
            assertEquals(0, files.win32MoveFile(folder.path("source"), folder.path("another"), false));
            assertEquals("newer", folder.content("another"));
        }
        assertNull(folder.content("source"));
        assertEquals("new", folder.content("target"));
        boolean over = !system.isAnsi();
        assertFails(-30018, 2, () -> files.win32MoveFile(folder.path("source"), folder.path("target"), over));
    }

    /** Windows may take a move to nowhere for a deletion. */
    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void aNullTargetIsRefusedAndLosesNothing(Windows system) throws Exception {
        system.use();
        assertFails(-30018, 87, () -> files.win32MoveFile(folder.path("source"), null, true));
        assertFails(-30018, 87, () -> files.win32MoveFile(null, null, true));
        assertEquals("-1", beside(() -> files.win32MoveFile(folder.path("source"), null, true)));
        assertEquals("new", folder.content("source"));
    }
}
