package com.corvane.wizard.platform.win32;

import static com.corvane.testing.Outcome.assertFails;
import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertNull;

import com.corvane.testing.Call;
import com.corvane.testing.FileUser;
import com.corvane.testing.Folder;
import com.corvane.testing.Hooks;
import com.corvane.testing.Outcome;
import com.corvane.testing.TestBed;
import com.corvane.testing.Windows;
import java.nio.ByteBuffer;
import java.nio.ByteOrder;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.attribute.FileTime;
import java.util.Arrays;
import java.util.List;
import java.util.concurrent.TimeUnit;
import org.junit.jupiter.api.extension.ExtendWith;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.EnumSource;

/** Setting the times of a file. */
@ExtendWith(TestBed.class)
class FileTimesTest {

    private static final long YEAR_1970 = 116444736000000000L;

    private final Win32FileServiceImpl files = new Win32FileServiceImpl();
    private final Folder folder = Folder.named("times");
    private final String file = folder.file("file", "content");

    /** Asserts what SetFileTime got: a time for each place, null for what stays. */
    private void assertSets(Windows system, Outcome.Action action, Long... times) throws Exception {
        Hooks.reset();
        system.use();
        Hooks.captureText(system.function("CreateFile"), 0);
        for (int place = 1; place <= 3; ++place) {
            Hooks.capture("SetFileTime", place, 8);
        }
        Hooks.arm();
        action.run();
        Call open = Call.only(system.function("CreateFile"));
        assertEquals(file, open.text(0));
        assertEquals(List.of(0x40000000, 0, 0, 3, 0, 0),
                Arrays.stream(new int[] {1, 2, 3, 4, 5, 6}).mapToObj(open::number).toList());
        Call set = Call.only("SetFileTime");
        for (int place = 0; place < 3; ++place) {
            byte[] expected = times[place] == null ? null
                    : ByteBuffer.allocate(8).order(ByteOrder.LITTLE_ENDIAN).putLong(times[place]).array();
            assertArrayEquals(expected, set.bytes(place + 1));
        }
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void everyTimeHasItsPlace(Windows system) throws Exception {
        for (long time : new long[] {0x01BF1234DEADBEEFL, 0, -1, 0x00000000FFFFFFFFL, 0x7FFFFFFF00000000L}) {
            Hooks.answer("SetFileTime", 1);
            assertSets(system, () -> {
                Hooks.answer("SetFileTime", 1);
                files.win32SetFileCreated(file, time);
            }, time, null, null);
            assertSets(system, () -> {
                Hooks.answer("SetFileTime", 1);
                files.win32SetFileModified(file, time);
            }, null, null, time);
        }
        assertSets(system, () -> files.win32SetFileTimes(file, YEAR_1970 + 1, YEAR_1970 + 2, YEAR_1970 + 3),
                YEAR_1970 + 1, YEAR_1970 + 2, YEAR_1970 + 3);
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void aReadOnlyFileGetsItsTimeAndStaysReadOnly(Windows system) throws Exception {
        system.use();
        folder.setAttributes("file", Folder.READ_ONLY + Folder.HIDDEN);
        int before = folder.attributes("file");
        files.win32SetFileModified(file, YEAR_1970 + TimeUnit.DAYS.toSeconds(1) * 10_000_000);
        assertEquals(FileTime.from(1, TimeUnit.DAYS), Files.getLastModifiedTime(Path.of(file)));
        assertEquals(before, folder.attributes("file"));
        for (String function : new String[] {system.function("CreateFile"), "SetFileTime"}) {
            Hooks.reset();
            system.use();
            Hooks.fail(function, 1, 1450);
            Hooks.arm();
            assertFails(-30007, 1450, () -> files.win32SetFileTimes(file, 1, 2, 3));
            assertEquals(before, folder.attributes("file"));
        }
        // The guard of a file that is writeable, or missing, gives nothing back.
        folder.setAttributes("file", 0);
        for (String name : new String[] {"file", "missing"}) {
            Hooks.reset();
            system.use();
            Hooks.arm();
            Outcome.ofVoid(() -> files.win32SetFileCreated(folder.path(name), YEAR_1970));
            List<Call> calls = Call.of(system.function("SetFileAttributes"));
            assertEquals(name.equals("file") ? List.of() : List.of(0xFFFFFFFE, 0xFFFFFFFF),
                    calls.stream().map(call -> call.number(1)).toList());
        }
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void whatCannotBeOpenedFails(Windows system) throws Exception {
        system.use();
        assertFails(-30011, 2, () -> files.win32SetFileCreated(folder.path("missing"), 1));
        assertFails(-30016, 5, () -> files.win32SetFileModified(folder.path(""), 1));
        assertFails(-30007, 3, () -> files.win32SetFileTimes(null, 1, 2, 3));
        FileUser.opens(file, FileUser.WITH_READERS).during(() -> {
            assertFails(-30011, 32, () -> files.win32SetFileCreated(file, 1));
            assertFails(-30016, 32, () -> files.win32SetFileModified(file, 1));
            assertFails(-30007, 32, () -> files.win32SetFileTimes(file, 1, 2, 3));
        });
        assertNull(folder.content("missing"));
    }
}
