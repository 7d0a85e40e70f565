package com.corvane.wizard.platform.win32;

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
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.corvane.testing.Bytes;
import com.corvane.testing.Call;
import com.corvane.testing.Hooks;
import com.corvane.testing.TestBed;
import com.corvane.testing.Windows;
import java.util.Arrays;
import java.util.List;
import java.util.Map;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.extension.ExtendWith;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.EnumSource;

/** What the reading natives make of values, hostile ones above all, and how they ask for them. */
@ExtendWith(TestBed.class)
class RegistryReadTest {

    private static final int NO_SUCH_FILE = 2;
    private static final int PATH_NOT_FOUND = 3;
    private static final int ACCESS_DENIED = 5;
    private static final int MORE_DATA = 234;
    private static final int WRONG_TYPE = 1804;
    private static final int QUERY_VALUE = 1;

    private final Win32RegistryServiceImpl registry = new Win32RegistryServiceImpl();

    /** Starts a case on this system, with the capacity of each query kept. */
    private static void begin(Windows system) {
        Hooks.reset();
        system.use();
        Hooks.arm();
        Hooks.capture(system.function("RegQueryValueEx"), 5, 4);
    }

    private static void begin(Windows system, int type, byte[]... contents) {
        begin(system);
        for (byte[] content : contents) {
            Hooks.answerValue(type, content);
        }
    }

    /** The byte sizes that the queries so far offered. */
    private static List<Integer> capacities(Windows system) {
        return Call.of(system.function("RegQueryValueEx")).stream().map(call -> call.numberAt(5)).toList();
    }

    private static void assertOpenedToRead(Windows system) {
        Call open = Call.only(system.function("RegOpenKeyEx"));
        assertEquals(0, open.number(2));
        assertEquals(QUERY_VALUE, open.number(3));
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void textsEndAtTheirFirstNulOrWithTheData(Windows system) throws Exception {
        String full = "x".repeat(system.isAnsi() ? 512 : 256);
        Map<String, String> texts = Map.of(
                "text\0", "text",
                "text", "text",
                "\0", "",
                "", "",
                "a\0b\0", "a",
                full, full,
                full + "y", full + "y",
                full + "y\0", full + "y",
                "z".repeat(5000), "z".repeat(5000));
        for (Map.Entry<String, String> text : texts.entrySet()) {
            for (int type : new int[] {SZ, EXPAND_SZ}) {
                byte[] data = system.encode(text.getKey());
                begin(system, type, data);
                assertEquals(text.getValue(), registry.getStringValue(HKCU, KEY, "v", false));
                assertEquals(data.length > 512 ? List.of(512, data.length) : List.of(512), capacities(system));
                assertOpenedToRead(system);
            }
        }
    }

    @Test
    void bytesThatAreHalfAUnitAreNoText() throws Exception {
        for (int[] data : new int[][] {{'a', 0, 'b'}, {'a', 0, 'b', 0, 'c'}, {'a'}}) {
            begin(Windows.W10, SZ, Bytes.of(data));
            assertEquals("ab".substring(0, data.length / 2), registry.getStringValue(HKCU, KEY, "v", false));
        }
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void valuesMayChangeBetweenTwoQueries(Windows system) throws Exception {
        byte[] large = system.encode("l".repeat(3000));
        byte[] larger = system.encode("l".repeat(3001));
        byte[] small = system.encode("small\0\0");

        begin(system, SZ, large, larger);
        assertFails(-100008, MORE_DATA, () -> registry.getStringValue(HKCU, KEY, "v", false));
        begin(system, SZ, large, small);
        assertEquals("small", registry.getStringValue(HKCU, KEY, "v", false));
        begin(system, SZ, large, new byte[0]);
        assertEquals("", registry.getStringValue(HKCU, KEY, "v", false));
        begin(system, SZ, large);
        Hooks.answerValue(DWORD, Bytes.number(7));
        assertFails(-100008, WRONG_TYPE, () -> registry.getStringValue(HKCU, KEY, "v", false));

        begin(system, MULTI_SZ, large, larger);
        assertFails(-100009, MORE_DATA, () -> registry.getMultiStringValue(HKCU, KEY, "v"));
        begin(system, MULTI_SZ, large, small);
        assertArrayEquals(new String[] {"small"}, registry.getMultiStringValue(HKCU, KEY, "v"));

        begin(system, BINARY, large, larger);
        assertFails(-100010, MORE_DATA, () -> registry.getBinaryValue(HKCU, KEY, "v"));
        begin(system, BINARY, large, small);
        assertArrayEquals(small, registry.getBinaryValue(HKCU, KEY, "v"));
        begin(system, BINARY, large, new byte[0]);
        assertArrayEquals(new byte[0], registry.getBinaryValue(HKCU, KEY, "v"));
    }

    /** A size beyond the buffer is not believed. */
    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void noSizeLeadsBeyondTheBuffer(Windows system) throws Exception {
        String query = system.function("RegQueryValueEx");
        int[] places = {3, 4, 5};
        String text = "x".repeat(system.isAnsi() ? 512 : 256);
        begin(system);
        Hooks.answer(query, 0, places, Bytes.number(SZ), system.encode(text), Bytes.number(600));
        assertEquals(text, registry.getStringValue(HKCU, KEY, "v", false));
        Hooks.answer(query, 0, places, Bytes.number(MULTI_SZ), system.encode(text.repeat(4)), Bytes.number(2100));
        assertArrayEquals(new String[] {text.repeat(4)}, registry.getMultiStringValue(HKCU, KEY, "v"));
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void listsAreReadToTheirEnd(Windows system) throws Exception {
        String large = "x".repeat(1022);
        Map<String, String[]> lists = Map.of(
                "first\0second\0\0", new String[] {"first", "second"},
                "one\0\0", new String[] {"one"},
                "a\0\0b\0\0", new String[] {"a", "", "b"},
                "\0\0", new String[] {""},
                "\0", new String[0],
                "", new String[0],
                "a\0b\0", new String[] {"a", "b"},
                "a\0b", new String[] {"a"},
                "ab", new String[] {"ab"},
                large + "\0" + large + "\0" + large + "\0\0", new String[] {large, large, large});
        for (Map.Entry<String, String[]> list : lists.entrySet()) {
            byte[] data = system.encode(list.getKey());
            begin(system, MULTI_SZ, data);
            assertArrayEquals(list.getValue(), registry.getMultiStringValue(HKCU, KEY, "v"));
            assertEquals(data.length > 2048 ? List.of(2048, data.length) : List.of(2048), capacities(system));
            assertOpenedToRead(system);
        }
    }

    @Test
    void aListOfAnOddNumberOfBytesEndsBeforeTheLast() throws Exception {
        begin(Windows.W10, MULTI_SZ, Bytes.of('a', 0, 0, 0, 'b', 0, 'c'));
        assertArrayEquals(new String[] {"a"}, registry.getMultiStringValue(HKCU, KEY, "v"));
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void variablesAreReplacedOnDemand(Windows system) throws Exception {
        String raw = "%SystemRoot%\\x%NoSuchVariable%";
        String expanded = System.getenv("SystemRoot") + "\\x%NoSuchVariable%";
        String expand = system.function("ExpandEnvironmentStrings");

        begin(system, EXPAND_SZ, system.encode(raw));
        assertEquals(raw, registry.getStringValue(HKCU, KEY, "v", false));
        assertEquals(expanded, registry.getStringValue(HKCU, KEY, "v", true));
        List<Call> calls = Call.of(expand);
        assertEquals(List.of(4, expanded.length() + 1), calls.stream().map(call -> call.number(2)).toList());
        begin(system, SZ, system.encode(raw));
        assertEquals(raw, registry.getStringValue(HKCU, KEY, "v", true));

        // An environment that changes between the two calls, or that gives nothing.
        begin(system, EXPAND_SZ, system.encode(raw));
        Hooks.answer(expand, 3);
        Hooks.answer(expand, 9, 1, system.encode("abc"));
        assertEquals("abc", registry.getStringValue(HKCU, KEY, "v", true));
        for (int nth : new int[] {1, 2}) {
            begin(system, EXPAND_SZ, system.encode(raw));
            Hooks.fail(expand, nth, ACCESS_DENIED);
            assertEquals("", registry.getStringValue(HKCU, KEY, "v", true));
        }
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void numbersHaveFourBytes(Windows system) throws Exception {
        begin(system, DWORD, Bytes.number(0x89ABCDEF));
        Hooks.capture(system.function("RegQueryValueEx"), 4, 4);
        assertEquals(0x89ABCDEF, registry.get32BitValue(HKCU, KEY, "v"));
        assertEquals(List.of(4), capacities(system));
        assertEquals(0xFFFF, Call.only(system.function("RegQueryValueEx")).numberAt(4));
        assertOpenedToRead(system);

        begin(system, DWORD, Bytes.of(7));
        assertEquals(0xFF07, registry.get32BitValue(HKCU, KEY, "v"));
        begin(system, DWORD, new byte[5]);
        assertFails(-100008, MORE_DATA, () -> registry.get32BitValue(HKCU, KEY, "v"));
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void bytesAreReadAsTheyAre(Windows system) throws Exception {
        for (int size : new int[] {0, 1, 4096}) {
            byte[] data = new byte[size];
            Arrays.fill(data, (byte) 0xE5);
            begin(system, BINARY, data);
            assertArrayEquals(data, registry.getBinaryValue(HKCU, KEY, "v"));
            List<Call> queries = Call.of(system.function("RegQueryValueEx"));
            assertEquals(2, queries.size());
            assertEquals(0, queries.get(0).word(4));
            assertEquals(size, queries.get(1).numberAt(5));
            assertOpenedToRead(system);
        }
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void everyReadInsistsOnItsType(Windows system) {
        RegistryFixture.fill();
        system.use();
        Map<String, Integer> types = Map.of("text", SZ, "path", EXPAND_SZ, "binary", BINARY, "number", DWORD, "list",
                MULTI_SZ);
        types.forEach((name, type) -> {
            if (type != SZ && type != EXPAND_SZ) {
                assertFails(-100008, WRONG_TYPE, () -> registry.getStringValue(HKCU, KEY, name, true));
            }
            if (type != DWORD) {
                // A longer value does not fit, whatever its type.
                int error = type == BINARY ? WRONG_TYPE : MORE_DATA;
                assertFails(-100008, error, () -> registry.get32BitValue(HKCU, KEY, name));
            }
            if (type != BINARY) {
                assertFails(-100010, WRONG_TYPE, () -> registry.getBinaryValue(HKCU, KEY, name));
            }
            if (type != MULTI_SZ) {
                assertFails(-100009, WRONG_TYPE, () -> registry.getMultiStringValue(HKCU, KEY, name));
            }
        });
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void theTypeIsTheSystemsNumber(Windows system) throws Exception {
        for (int type : new int[] {0, 1, 2, 3, 4, 7, 11, -2}) {
            begin(system, type, new byte[3]);
            assertEquals(type, registry.getValueType(HKCU, KEY, "v"));
            assertEquals(0, Call.only(system.function("RegQueryValueEx")).word(4));
            assertOpenedToRead(system);
        }
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void realValuesAreReadByNameAndByDefault(Windows system) throws Exception {
        RegistryFixture.fill();
        system.use();
        assertEquals("some text", registry.getStringValue(HKCU, KEY, "text", false));
        assertEquals("default", registry.getStringValue(HKCU, KEY, null, false));
        assertEquals("default", registry.getStringValue(HKCU, KEY, "", false));
        assertEquals(RegistryFixture.LONG_TEXT, registry.getStringValue(HKCU, KEY, "long", false));
        assertEquals(0x12345678, registry.get32BitValue(HKCU, KEY, "number"));
        assertEquals(MULTI_SZ, registry.getValueType(HKCU, KEY, "list"));
        assertArrayEquals(new String[] {"first", "second"}, registry.getMultiStringValue(HKCU, KEY, "list"));
        assertArrayEquals(Bytes.of(0, 1, 2, 255), registry.getBinaryValue(HKCU, KEY, "binary"));
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void missingIsAnAnswerAndAnythingElseAFailure(Windows system) throws Exception {
        RegistryFixture.fill();
        system.use();
        assertTrue(registry.keyExists(HKCU, KEY));
        assertFalse(registry.keyExists(HKCU, MISSING));
        assertTrue(registry.valueExists(HKCU, KEY, "text"));
        assertTrue(registry.valueExists(HKCU, KEY, null));
        assertFalse(registry.valueExists(HKCU, KEY, "missing"));
        assertFalse(registry.valueExists(HKCU, MISSING, "text"));
        for (Call call : Call.of(system.function("RegOpenKeyEx"))) {
            assertEquals(QUERY_VALUE, call.number(3));
        }
        for (Call call : Call.of(system.function("RegQueryValueEx"))) {
            assertEquals(0, call.word(4), "no data is asked for");
        }

        String open = system.function("RegOpenKeyEx");
        for (int error : new int[] {PATH_NOT_FOUND, ACCESS_DENIED}) {
            Hooks.answer(open, error);
            assertFails(-100001, error, () -> registry.keyExists(HKCU, KEY));
            Hooks.answer(open, error);
            assertFails(-100014, error, () -> registry.valueExists(HKCU, KEY, "text"));
            Hooks.answer(system.function("RegQueryValueEx"), error);
            assertFails(-100014, error, () -> registry.valueExists(HKCU, KEY, "text"));
        }
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void whatIsMissingCannotBeRead(Windows system) {
        system.use();
        for (String key : new String[] {KEY, MISSING}) {
            assertFails(-100008, NO_SUCH_FILE, () -> registry.getStringValue(HKCU, key, "v", false));
            assertFails(-100008, NO_SUCH_FILE, () -> registry.get32BitValue(HKCU, key, "v"));
            assertFails(-100009, NO_SUCH_FILE, () -> registry.getMultiStringValue(HKCU, key, "v"));
            assertFails(-100010, NO_SUCH_FILE, () -> registry.getBinaryValue(HKCU, key, "v"));
            assertFails(-100011, NO_SUCH_FILE, () -> registry.getValueType(HKCU, key, "v"));
        }
    }
}
