package com.corvane.wizard.platform.win32;

import static com.corvane.testing.Bytes.number;
import static com.corvane.testing.Bytes.word;
import static com.corvane.testing.Outcome.assertFails;
import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertNotEquals;

import com.corvane.testing.Call;
import com.corvane.testing.Hooks;
import com.corvane.testing.Outcome;
import com.corvane.testing.TestBed;
import com.corvane.testing.Windows;
import java.util.List;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.extension.ExtendWith;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.EnumSource;

/** Drives: their kind, their names, what fits on them. */
@ExtendWith(TestBed.class)
class VolumeTest {

    private static final String ROOT = "D:\\";

    private final Win32FileServiceImpl files = new Win32FileServiceImpl();

    /** A process whose error mode is 5. */
    private static void begin(Windows system) {
        Hooks.reset();
        system.use();
        Hooks.answer("SetErrorMode", 5);
        Hooks.arm();
    }

    /** The old mode plus 1, which is not always the old mode with the bit. */
    private static void assertErrorModeKept() {
        assertEquals(List.of(0, 6, 5), Call.of("SetErrorMode").stream().map(call -> call.number(0)).toList());
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void theKindOfADrive(Windows system) throws Exception {
        int[] kinds = {-1, -1, 2, 1, 3, 4, 5, -1};
        for (int kind = 0; kind < kinds.length; ++kind) {
            begin(system);
            Hooks.captureText("GetDriveTypeA", 0);
            Hooks.answer("GetDriveTypeA", kind);
            assertEquals(kinds[kind], files.getPartitionType(ROOT));
            assertEquals(ROOT, Call.only("GetDriveTypeA").text(0));
        }
        begin(system);
        Hooks.answer("GetDriveTypeA", 3);
        assertEquals(1, files.getPartitionType(null), "no drive is the current one");
        assertEquals(0, Call.only("GetDriveTypeA").word(0));
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void freeSpace(Windows system) throws Exception {
        String bytes = system.function("GetDiskFreeSpaceEx");
        begin(system);
        Hooks.captureText(bytes, 0);
        Hooks.answer(bytes, 1, new int[] {1, 2, 3}, word((5L << 32) + 7), word(8L << 32), word(6L << 32));
        assertEquals((5L << 32) + 7, files.getPartitionFreeSpace(ROOT));
        assertEquals(ROOT, Call.only(bytes).text(0));
        assertErrorModeKept();

        String clusters = system.function("GetDiskFreeSpace");
        begin(system);
        Hooks.hide(bytes);
        Hooks.captureText(clusters, 0);
        Hooks.answer(clusters, 1, new int[] {1, 2, 3, 4}, number(64), number(4096), number(-1), number(-1));
        assertEquals(0xFFFFFFFFL << 18, files.getPartitionFreeSpace(ROOT));
        assertEquals(ROOT, Call.only(clusters).text(0));
        for (String function : List.of(bytes, clusters)) {
            begin(system);
            if (function.equals(clusters)) {
                Hooks.hide(bytes);
            }
            Hooks.fail(function, 1, 21);
            assertFails(-30004, 21, () -> files.getPartitionFreeSpace(ROOT));
            assertErrorModeKept();
        }
        begin(system);
        Hooks.fail(bytes, 1, Hooks.NO_ERROR);
        assertEquals(0, files.getPartitionFreeSpace(ROOT));
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void theDrives(Windows system) throws Exception {
        String function = system.function("GetLogicalDriveStrings");
        begin(system);
        Hooks.answer(function, 13);
        Hooks.answer(function, 12, 1, system.encode("A:\\\0C:\\\0D:\\\0\0"));
        assertArrayEquals(new String[] {"A:\\", "C:\\", "D:\\"}, files.getPartitionNames());
        assertEquals(List.of(0, 14), Call.of(function).stream().map(call -> call.number(0)).toList());
        assertNotEquals(0, Call.only("NewObjectArray").word(3), "what the elements are at first");
        assertEquals(0, Call.of("NewString").get(0).number(2), "the length of that text");
        begin(system);
        Hooks.answer(function, 1);
        Hooks.answer(function, 0);
        assertArrayEquals(new String[0], files.getPartitionNames());
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void fileSystems(Windows system) throws Exception {
        String function = system.function("GetVolumeInformation");
        begin(system);
        Hooks.captureText(function, 0);
        Hooks.answer(function, 1, 6, system.encode("FAT32\0"));
        assertEquals("FAT32", files.getPartitionFormat(ROOT));
        Call call = Call.only(function);
        assertEquals(ROOT, call.text(0));
        assertEquals(List.of(0L, 0L, 256L), List.of(call.word(1), call.word(3), (long) call.number(7)));
        assertErrorModeKept();
        for (int error : new int[] {21, Hooks.NO_ERROR}) {
            begin(system);
            Hooks.fail(function, 1, error);
            assertFails(-30010, Math.max(error, 0), () -> files.getPartitionFormat(ROOT));
            assertErrorModeKept();
        }
        begin(system);
        Hooks.fail(function, 1, 21);
        assertEquals("''", Outcome.beside(() -> files.getPartitionFormat(ROOT)));

        for (int longest : new int[] {254, 255, 260}) {
            begin(system);
            Hooks.answer("GetVolumeInformationA", 1, 4, number(longest));
            assertEquals(longest >= 255, files.supportsLongFileNames(ROOT));
            assertErrorModeKept();
        }
        begin(system);
        Hooks.fail("GetVolumeInformationA", 1, 21);
        assertFails(-30015, 21, () -> files.supportsLongFileNames(ROOT));
    }

    @Test
    void theBoxForCriticalErrors() throws Exception {
        int[][] cases = {{0, 1, 0}, {5, 1, 0}, {4, 0, 5}, {5, 0, 5}};
        for (int[] mode : cases) {
            Hooks.reset();
            Hooks.answer("SetErrorMode", mode[0]);
            Hooks.answer("SetErrorMode", 0);
            Hooks.arm();
            assertEquals(mode[0] == 5, files.win32EnableAbort(mode[1] == 1));
            assertEquals(List.of(0, mode[2]),
                    Call.of("SetErrorMode").stream().map(call -> call.number(0)).toList());
        }
    }
}
