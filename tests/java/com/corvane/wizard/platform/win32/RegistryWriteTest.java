package com.corvane.wizard.platform.win32;

import static com.corvane.testing.Bytes.utf16;
import static com.corvane.testing.Outcome.assertFails;
import static com.corvane.wizard.platform.win32.RegistryFixture.BINARY;
import static com.corvane.wizard.platform.win32.RegistryFixture.DWORD;
import static com.corvane.wizard.platform.win32.RegistryFixture.EXPAND_SZ;
import static com.corvane.wizard.platform.win32.RegistryFixture.HKCU;
import static com.corvane.wizard.platform.win32.RegistryFixture.KEY;
import static com.corvane.wizard.platform.win32.RegistryFixture.MISSING;
import static com.corvane.wizard.platform.win32.RegistryFixture.MULTI_SZ;
import static com.corvane.wizard.platform.win32.RegistryFixture.SZ;
import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.corvane.testing.Bytes;
import com.corvane.testing.Call;
import com.corvane.testing.Hooks;
import com.corvane.testing.Outcome;
import com.corvane.testing.RawRegistry;
import com.corvane.testing.TestBed;
import com.corvane.testing.Windows;
import java.util.Arrays;
import java.util.Collections;
import org.junit.jupiter.api.extension.ExtendWith;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.EnumSource;

/** What the writing natives hand to Windows, byte by byte, and what is in the registry then. */
@ExtendWith(TestBed.class)
class RegistryWriteTest {

    private static final int NO_SUCH_FILE = 2;
    private static final int INVALID_PARAMETER = 87;
    private static final int SET_VALUE = 2;

    private final Win32RegistryServiceImpl registry = new Win32RegistryServiceImpl();

    /** Asserts what is in the registry after a text was written on this system, in UTF-16. */
    private static void assertStores(Windows system, String wide, String ansi) {
        assertArrayEquals(utf16(system.isAnsi() ? ansi : wide), RawRegistry.data(KEY, "v"));
    }

    /** Runs one write and asserts what RegSetValueEx was given. */
    private static void assertWrites(Windows system, int type, byte[] data, Outcome.Action write) throws Exception {
        String function = system.function("RegSetValueEx");
        Hooks.reset();
        system.use();
        Hooks.capture(function, 4, data.length);
        Hooks.arm();
        write.run();
        Call call = Call.only(function);
        assertEquals(0, call.number(2));
        assertEquals(type, call.number(3));
        assertEquals(data.length, call.number(5));
        if (data.length != 0) {
            assertArrayEquals(data, call.bytes(4));
        }
        assertEquals(SET_VALUE, Call.only(system.function("RegOpenKeyEx")).number(3));
        assertEquals(type, RawRegistry.type(KEY, "v"));
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void textsAreWrittenWithoutTerminator(Windows system) throws Exception {
        for (String text : new String[] {"abc", "x", "y".repeat(3000)}) {
            // On both families as many bytes as the UTF-16 text has; on the ANSI one, zeros follow it.
            byte[] data = Arrays.copyOf(system.encode(text), 2 * text.length());
            assertWrites(system, SZ, data, () -> registry.setStringValue(HKCU, KEY, "v", false, text));
            assertWrites(system, EXPAND_SZ, data, () -> registry.setStringValue(HKCU, KEY, "v", true, text));
            // The wide function adds the terminator that it finds behind the text.
            assertStores(system, text + "\0", text + "\0".repeat(text.length()));
        }
        for (int round = 0; round < 20; ++round) {  // the heap's bytes beside the text differ
            assertWrites(system, SZ, Bytes.of(0), () -> registry.setStringValue(HKCU, KEY, "v", false, ""));
            assertArrayEquals(new byte[system.isAnsi() ? 2 : 1], RawRegistry.data(KEY, "v"));
        }
        assertWrites(system, SZ, new byte[0], () -> registry.setStringValue(HKCU, KEY, "v", false, null));
        assertStores(system, "", "");
        assertWrites(system, SZ, Arrays.copyOf(system.encode("cut"), 6),
                () -> registry.setStringValue(HKCU, KEY, "v", false, "cut\0off"));
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void listsAreStoredWithAllTerminators(Windows system) throws Exception {
        Object[][] lists = {
            {new String[0], "\0"},
            {new String[] {"a"}, "a\0\0"},
            {new String[] {"first", "", "third"}, "first\0\0third\0\0"},
            {new String[] {"a", null}, "a\0\0\0"},
            {new String[] {"cut\0off", "b"}, "cut\0b\0\0"},
            {Collections.nCopies(1000, "item").toArray(new String[0]), "item\0".repeat(1000) + "\0"},
        };
        for (Object[] list : lists) {
            assertWrites(system, MULTI_SZ, system.encode((String) list[1]),
                    () -> registry.setMultiStringValue(HKCU, KEY, "v", (String[]) list[0]));
            assertTrue(Hooks.peakLocalReferences() <= 2, "references of a list must not pile up");
        }
        assertFails(-100005, INVALID_PARAMETER, () -> registry.setMultiStringValue(HKCU, KEY, "v", null));
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void numbersAndBytesAreStoredAsTheyAre(Windows system) throws Exception {
        for (int number : new int[] {0, -1, 0x12345678}) {
            assertWrites(system, DWORD, Bytes.number(number), () -> registry.set32BitValue(HKCU, KEY, "v", number));
        }
        for (byte[] bytes : new byte[][] {{}, {0}, Bytes.of(1, 0, 255), new byte[5000]}) {
            assertWrites(system, BINARY, bytes, () -> registry.setBinaryValue(HKCU, KEY, "v", bytes));
        }
        assertFails(-100007, INVALID_PARAMETER, () -> registry.setBinaryValue(HKCU, KEY, "v", null));
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void aNullOrEmptyNameIsTheDefaultValue(Windows system) throws Exception {
        system.use();
        registry.set32BitValue(HKCU, KEY, null, 1);
        assertArrayEquals(Bytes.number(1), RawRegistry.data(KEY, ""));
        registry.set32BitValue(HKCU, KEY, "", 2);
        assertArrayEquals(Bytes.number(2), RawRegistry.data(KEY, ""));
        registry.deleteValue(HKCU, KEY, null, true);
        assertEquals(-1, RawRegistry.type(KEY, ""));
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void aKeyThatIsMissingIsNotWritten(Windows system) {
        system.use();
        assertFails(-100004, NO_SUCH_FILE, () -> registry.setStringValue(HKCU, MISSING, "v", false, "text"));
        assertFails(-100005, NO_SUCH_FILE, () -> registry.setMultiStringValue(HKCU, MISSING, "v", new String[0]));
        assertFails(-100006, NO_SUCH_FILE, () -> registry.set32BitValue(HKCU, MISSING, "v", 1));
        assertFails(-100007, NO_SUCH_FILE, () -> registry.setBinaryValue(HKCU, MISSING, "v", new byte[1]));
        // Only a value may be missing, not its key.
        assertFails(-100002, NO_SUCH_FILE, () -> registry.deleteValue(HKCU, MISSING, "v", false));
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void aValueThatMustExistIsMissed(Windows system) throws Exception {
        RawRegistry.set(KEY, "v", SZ, utf16("text\0"));
        system.use();
        registry.deleteValue(HKCU, KEY, "v", true);
        assertEquals(-1, RawRegistry.type(KEY, "v"));
        registry.deleteValue(HKCU, KEY, "v", false);
        for (Call call : Call.of(system.function("RegOpenKeyEx"))) {
            assertEquals(SET_VALUE, call.number(3));
        }
        assertFails(-100002, NO_SUCH_FILE, () -> registry.deleteValue(HKCU, KEY, "v", true));
        for (int error : new int[] {3, 5}) {
            Hooks.answer(system.function("RegDeleteValue"), error);
            assertFails(-100002, error, () -> registry.deleteValue(HKCU, KEY, "v", false));
        }
    }
}
