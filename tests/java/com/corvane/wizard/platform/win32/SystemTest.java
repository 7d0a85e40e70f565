package com.corvane.wizard.platform.win32;

import static com.corvane.testing.Outcome.assertFails;
import static org.junit.jupiter.api.Assertions.assertEquals;

import com.corvane.testing.Call;
import com.corvane.testing.Hooks;
import com.corvane.testing.TestBed;
import com.corvane.testing.Windows;
import java.nio.ByteBuffer;
import java.nio.ByteOrder;
import java.util.List;
import java.util.stream.Stream;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.extension.ExtendWith;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.EnumSource;

/** What the system tells of itself, and the one processor. */
@ExtendWith(TestBed.class)
class SystemTest {

    private static final int TEXT_AT = 20;
    private static final int PLATFORM_AT = 16;
    private static final long THIS_PROCESS = -1;

    private final Win32SystemUtilServiceImpl system = new Win32SystemUtilServiceImpl();

    private static void begin(Windows system) {
        Hooks.reset();
        system.use();
        Hooks.arm();
    }

    private static byte[] record(Windows system, String serviceLevel) {
        ByteBuffer record = ByteBuffer.allocate(system.isAnsi() ? 148 : 276).order(ByteOrder.LITTLE_ENDIAN);
        record.putInt(PLATFORM_AT, system.isAnsi() ? 1 : 2);
        record.put(TEXT_AT, system.encode(serviceLevel));
        return record.array();
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "NT4", "W10"})
    void serviceLevel(Windows windows) throws Exception {
        String function = windows.function("GetVersionEx");
        begin(windows);
        assertEquals("", system.getOSServiceLevel());
        for (String text : List.of("Service Pack 2", "x".repeat(127))) {
            begin(windows);
            Hooks.capture(function, 0, 4);
            if (windows.isAnsi()) {  // that question has the same function
                Hooks.answer(function, 1, 0, record(windows, text));
            }
            Hooks.answer(function, 1, 0, record(windows, text));
            assertEquals(text, system.getOSServiceLevel());
            List<Call> calls = Call.of(function);
            assertEquals(windows.isAnsi() ? 148 : 276, calls.get(calls.size() - 1).numberAt(0));
        }
        begin(windows);
        if (windows.isAnsi()) {
            Hooks.answer(function, 1, 0, record(windows, ""));
            Hooks.fail(function, 2, 87);
        } else {
            Hooks.fail(function, 1, 87);
        }
        assertFails(-70005, 87, system::getOSServiceLevel);
    }

    @ParameterizedTest
    @EnumSource
    void theFamily(Windows windows) {
        begin(windows);
        assertEquals(!windows.isAnsi(), system.isWinNTor2K());
        assertEquals(windows == Windows.ME, system.isWinME());
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void bootDirectory(Windows windows) throws Exception {
        String kind = windows.function("GetDriveType");
        String open = windows.function("RegOpenKeyEx");
        String query = windows.function("RegQueryValueEx");
        for (int type = 0; type <= 6; ++type) {
            begin(windows);
            Hooks.captureText(kind, 0);
            Hooks.captureText(open, 1);
            Hooks.captureText(query, 1);
            Hooks.answerValue(type % 2 + 1, windows.encode("%PATH%:\\Boot\0"));  // which is not expanded
            Hooks.answer(kind, type);
            if (type < 2) {
                assertFails(-70009, 0xFFFFFFFFL, system::getBootDirectory);
            } else {
                assertEquals("%PATH%:\\Boot", system.getBootDirectory());
            }
            assertEquals("%PATH%:\\Boot", Call.only(kind).text(0));
            assertEquals("BootDir", Call.of(query).get(0).text(1));
            assertEquals("SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Setup", Call.only(open).text(1));
            assertEquals(0x80000002, Call.only(open).number(0));
        }
        begin(windows);
        Hooks.fail(query, 1, 2);
        assertFails(-70009, 2, system::getBootDirectory);
        assertEquals(List.of(), Call.of(kind));
    }

    /** The processor's bit, of these that are active; 0: the system is not asked for one. */
    @Test
    void oneProcessor() {
        long[][] masks = {
            {0b1100, 4}, {1, 1}, {0xFFFFFFFFFFL, 1}, {0x80000000L, 0x80000000L}, {1L << 35, 0}, {0, 0},
        };
        for (long[] mask : masks) {
            begin(Windows.W10);
            byte[] info = ByteBuffer.allocate(48).order(ByteOrder.LITTLE_ENDIAN).putLong(24, mask[0]).array();
            Hooks.answer("GetSystemInfo", 0, 0, info);
            Hooks.answer("SetProcessAffinityMask", 0);
            new Win32WizardInitializeServiceImpl().setProcessAffinity();
            List<Long> set = Call.of("SetProcessAffinityMask").stream()
                    .flatMap(call -> Stream.of(call.word(0), call.word(1))).toList();
            assertEquals(mask[1] == 0 ? List.of() : List.of(THIS_PROCESS, mask[1]), set);
        }
        begin(Windows.W98);
        Hooks.hide("SetProcessAffinityMask");
        new Win32WizardInitializeServiceImpl().setProcessAffinity();
        assertEquals(List.of(), Call.of("GetSystemInfo"));
    }
}
