package com.corvane.wizard.platform.win32;

import static com.corvane.testing.Outcome.assertFails;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.corvane.testing.Folder;
import com.corvane.testing.Outcome;
import com.corvane.testing.TestBed;
import com.corvane.testing.Windows;
import org.junit.jupiter.api.BeforeEach;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.extension.ExtendWith;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.EnumSource;

/** Copying: which calls Windows gets in which case, and what is copied. */
@ExtendWith(TestBed.class)
class FileCopyTest {

    private static final String GUARD = "GetFileAttributes target";
    private static final String COPY = "CopyFile source target 0";
    private static final String LOOK_UP = "GetProcAddress MoveFileExW";
    private static final String ASIDE = "MoveFileEx target target.delete_on_reboot 0";
    private static final String BACK = "MoveFileEx target.delete_on_reboot target 0";
    private static final String WAIT = "CopyFile source target.use_on_reboot 0";
    private static final String REPLACE = "MoveFileEx target.use_on_reboot target 5";
    private static final String FORGET = "MoveFileEx target.delete_on_reboot null 4";

    private final Win32FileServiceImpl files = new Win32FileServiceImpl();
    private final Folder folder = Folder.named("copy");

    @BeforeEach
    void makeFiles() {
        folder.file("source", "new");
        folder.file("target", "old");
    }

    @ParameterizedTest
    @EnumSource(names = {"W95", "ME", "NT4", "W10"})
    void aCopyThatWorksOrIsRefusedIsOneCall(Windows system) throws Exception {
        Rehearsal rehearsal = new Rehearsal(system, folder);
        rehearsal.expect("0", "copy over", "", GUARD, COPY);
        rehearsal.expect("0", "copy", "", GUARD, "CopyFile source target 1");
        rehearsal.expect("0 error 5", "copy over", "CopyFile=5", GUARD, COPY);
        rehearsal.expect("0 error 33", "copy over", "CopyFile=33", GUARD, COPY);
        rehearsal.expect("0 error 80", "copy", "CopyFile=80", GUARD, "CopyFile source target 1");
    }

    @ParameterizedTest
    @EnumSource(names = {"NT4", "XP", "W10"})
    void aTargetInUseIsMovedAside(Windows system) throws Exception {
        Rehearsal rehearsal = new Rehearsal(system, folder);
        rehearsal.expect("1", "copy over", "CopyFile=32", GUARD, COPY, LOOK_UP, ASIDE, COPY, FORGET);
        rehearsal.expect("1", "copy", "CopyFile=32", GUARD, "CopyFile source target 1", LOOK_UP, ASIDE,
                "CopyFile source target 1", FORGET);
        // That the old file stays behind is not told.
        rehearsal.expect("1", "copy over", "CopyFile=32 MoveFileEx#2=5", GUARD, COPY, LOOK_UP, ASIDE, COPY, FORGET);
        // It comes back when the copy fails, and the error is the one that this has left.
        rehearsal.expect("0 error 112", "copy over", "CopyFile=32 CopyFile#2=112",
                GUARD, COPY, LOOK_UP, ASIDE, COPY, BACK);
        rehearsal.expect("0 error 5", "copy over", "CopyFile=32 CopyFile#2=112 MoveFileEx#2=5",
                GUARD, COPY, LOOK_UP, ASIDE, COPY, BACK);
        rehearsal.expect("0 error 127", "copy over", "CopyFile=32 no MoveFileExW", GUARD, COPY, LOOK_UP);
    }

    @Test
    void aTargetThatDoesNotMoveWaitsForTheReboot() throws Exception {
        Rehearsal rehearsal = new Rehearsal(Windows.W10, folder);
        String locked = "CopyFile=32 MoveFileEx=5 ";
        rehearsal.expect("1", "copy over", locked, GUARD, COPY, LOOK_UP, ASIDE, WAIT, REPLACE);
        rehearsal.expect("1", "copy", locked, GUARD, "CopyFile source target 1", LOOK_UP, ASIDE,
                "CopyFile source target.use_on_reboot 1", REPLACE);
        rehearsal.expect("0 error 112", "copy over", locked + "CopyFile#2=112",
                GUARD, COPY, LOOK_UP, ASIDE, WAIT);
        rehearsal.expect("0 error 87", "copy over", locked + "MoveFileEx#2=87",
                GUARD, COPY, LOOK_UP, ASIDE, WAIT, REPLACE);
    }

    @ParameterizedTest
    @EnumSource(names = {"W95", "ME"})
    void onWindows9xTheNewFileAlwaysWaits(Windows system) throws Exception {
        Rehearsal rehearsal = new Rehearsal(system, folder);
        String line = "target=target.use_on_reboot";
        rehearsal.expect("1", "copy over", "CopyFile=32", GUARD, COPY, WAIT, line);
        rehearsal.expect("1", "copy", "CopyFile=32", GUARD, "CopyFile source target 1",
                "CopyFile source target.use_on_reboot 1", line);
        rehearsal.expect("0 error 112", "copy over", "CopyFile=32 CopyFile#2=112", GUARD, COPY, WAIT);
        rehearsal.expect("1 error 5", "copy over", "CopyFile=32 CreateFile=5", GUARD, COPY, WAIT);
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void filesAreReallyCopied(Windows system) throws Exception {
        system.use();
        assertEquals(0, files.win32CopyFile(folder.path("source"), folder.path("target"), true));
        assertEquals("new", folder.content("target"));
        folder.file("target", "old");
        folder.setAttributes("target", Folder.READ_ONLY);
        assertFails(-30017, 80, () -> files.win32CopyFile(folder.path("source"), folder.path("target"), false));
        assertEquals("old", folder.content("target"));
        // The guard has done its work by then, and nothing is given back.
        assertEquals(0, folder.attributes("target") & Folder.READ_ONLY);
        folder.setAttributes("target", Folder.READ_ONLY);
        assertEquals(0, files.win32CopyFile(folder.path("source"), folder.path("target"), true));
        assertEquals("new", folder.content("target"));
        assertEquals(0, files.win32CopyFile(folder.path("source"), folder.path("another"), false));
        assertEquals("new", folder.content("another"));
        assertFails(-30017, 2, () -> files.win32CopyFile(folder.path("missing"), folder.path("target"), true));
        assertEquals("new", folder.content("target"));
        assertTrue(Outcome.of(() -> files.win32CopyFile(null, folder.path("target"), true)).hasCode(-30017));
    }
}
