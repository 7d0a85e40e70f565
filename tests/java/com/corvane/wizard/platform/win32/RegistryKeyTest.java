package com.corvane.wizard.platform.win32;

import static com.corvane.testing.Outcome.assertFails;
import static com.corvane.wizard.platform.win32.RegistryFixture.HKCU;
import static com.corvane.wizard.platform.win32.RegistryFixture.KEY;
import static com.corvane.wizard.platform.win32.RegistryFixture.MISSING;
import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.corvane.testing.Bytes;
import com.corvane.testing.Call;
import com.corvane.testing.Direct;
import com.corvane.testing.Hooks;
import com.corvane.testing.RawRegistry;
import com.corvane.testing.TestBed;
import com.corvane.testing.Windows;
import java.util.ArrayList;
import java.util.List;
import java.util.concurrent.Callable;
import java.util.concurrent.ExecutorService;
import java.util.concurrent.Executors;
import java.util.concurrent.Future;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.extension.ExtendWith;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.EnumSource;

/** Keys: roots, creation, deletion, enumeration and their numbers. */
@ExtendWith(TestBed.class)
class RegistryKeyTest {

    private static final int NO_SUCH_FILE = 2;
    private static final int PATH_NOT_FOUND = 3;
    private static final int ACCESS_DENIED = 5;
    private static final int INVALID_HANDLE = 6;
    private static final int MORE_DATA = 234;
    private static final int BAD_KEY = 1010;
    private static final int WRONG_TYPE = 1804;

    private static final int QUERY_VALUE = 1;
    private static final int SET_VALUE = 2;
    private static final int CREATE_SUB_KEY = 4;
    private static final int READ = 0x20019;
    private static final int PARENT_OF_DELETED = 0x30006;
    private static final int IN_DELETED_TREE = 0x10008;
    private static final int OPEN_LINK = 8;

    private static final int STATUS_ACCESS_DENIED = 0xC0000022;
    private static final int STATUS_KEY_DELETED = 0xC000017C;

    private final Win32RegistryServiceImpl registry = new Win32RegistryServiceImpl();

    private static List<Integer> numbers(String function, int argument) {
        return Call.of(function).stream().map(call -> call.number(argument)).toList();
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void rootsAreThePredefinedKeys(Windows system) throws Exception {
        system.use();
        String open = system.function("RegOpenKeyEx");
        int[] keys = {0x80000000, 0x80000005, 0x80000001, 0x80000002, 0x80000003};
        for (int root = 1; root <= 5; ++root) {
            Hooks.answer(open, NO_SUCH_FILE);
            assertFalse(registry.keyExists(root, "any"));
            assertEquals(keys[root - 1], numbers(open, 0).get(root - 1));
        }
        for (int root : new int[] {0, 6, 9, -1, -3, Integer.MIN_VALUE}) {
            assertFails(-100001, INVALID_HANDLE, () -> registry.keyExists(root, "any"));
            List<Call> opened = Call.of(open);
            assertEquals(0, opened.get(opened.size() - 1).word(0));
        }
    }

    /** A null path is the root itself: it is not opened, but closed as every other key. */
    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void aNullPathIsTheRootItself(Windows system) throws Exception {
        system.use();
        assertTrue(registry.keyExists(HKCU, null));
        assertTrue(registry.keyExists(9, null));
        assertFalse(registry.valueExists(HKCU, null, "no such value"));
        assertEquals(List.of(0x80000001, 0, 0x80000001), numbers("RegCloseKey", 0));
        assertTrue(registry.countSubKeys(HKCU, null) > 0);
        assertEquals(0, Call.of(system.function("RegOpenKeyEx")).size());
        assertFails(-100003, INVALID_HANDLE, () -> registry.countSubKeys(9, null));
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void keysAreCreatedOnce(Windows system) throws Exception {
        system.use();
        registry.createKey(HKCU, KEY, "new");
        Call create = Call.only(system.function("RegCreateKeyEx"));
        long[] arguments = {0, 0, 0, SET_VALUE, 0};
        for (int index = 0; index < arguments.length; ++index) {
            int argument = index + 2;
            assertEquals(arguments[index], argument == 3 ? create.word(3) : create.number(argument), "" + argument);
        }
        assertEquals(0, create.word(6));
        assertEquals(0, create.word(8));
        assertEquals(List.of(CREATE_SUB_KEY), numbers(system.function("RegOpenKeyEx"), 3));
        List<Integer> closed = numbers("RegCloseKey", 0);
        assertEquals(List.of((int) create.word(0)), closed.subList(1, 2), "the parent is closed last");
        assertTrue(RawRegistry.dump(KEY).contains("[" + KEY + "\\new]"));

        registry.createKey(HKCU, KEY, "new");
        assertFails(-100012, NO_SUCH_FILE, () -> registry.createKey(HKCU, MISSING, "new"));
    }

    @ParameterizedTest
    @EnumSource(names = {"NT4", "W2000", "XP", "W10"})
    void treesAreDeletedKeyByKey(Windows system) throws Exception {
        RegistryFixture.fill();
        system.use();
        registry.deleteKey(HKCU, KEY, "tree", true);
        String left = RawRegistry.dump(KEY);
        assertFalse(left.contains("tree"));
        assertTrue(left.contains("\\second]") && left.contains("number"));
        assertEquals(
                List.of(PARENT_OF_DELETED, IN_DELETED_TREE, IN_DELETED_TREE, IN_DELETED_TREE, IN_DELETED_TREE,
                        IN_DELETED_TREE),
                numbers("RegOpenKeyExW", 3));
        assertEquals(List.of(0, OPEN_LINK, OPEN_LINK, OPEN_LINK, OPEN_LINK, OPEN_LINK), numbers("RegOpenKeyExW", 2));
        assertTrue(numbers("RegEnumKeyExW", 1).stream().allMatch(index -> index == 0));
        assertEquals(4, Call.of("RegDeleteKeyW").size());
        assertEquals(1, Call.of("NtDeleteKey").size(), "for the link alone");
    }

    /** Also when it is the key that is named, and whether it leads anywhere or not. */
    @Test
    void aLinkGoesAndWhereItLeadsStays() throws Exception {
        RegistryFixture.fill();
        String targets = RawRegistry.dump(KEY + "\\tree");
        for (String target : new String[] {KEY + "\\tree", KEY + "\\tree\\branch\\leaf", MISSING, KEY}) {
            RawRegistry.createLink(KEY + "\\product\\deep\\link", target);
            RawRegistry.createLink(KEY + "\\alias", target);
            RawRegistry.createLink(KEY + "\\another", target);
            for (String name : new String[] {"product", "alias", "another\\\\"}) {
                registry.deleteKey(HKCU, KEY, name, true);
            }
            assertArrayEquals(new String[] {"second", "tree"}, registry.getSubkeyNames(HKCU, KEY));
            assertEquals(targets, RawRegistry.dump(KEY + "\\tree"));
        }
    }

    @Test
    void depthCostsNoStack() throws Exception {
        RawRegistry.createKey(KEY + "\\tree" + "\\d".repeat(1500));
        registry.deleteKey(HKCU, KEY, "tree", true);
        assertTrue(registry.isKeyEmpty(HKCU, KEY));
    }

    @Test
    void treeNamesHaveRoomForTwoHundredAndFiftySixUnits() throws Exception {
        String name = "n".repeat(255);
        RawRegistry.createKey(KEY + "\\tree\\" + name);
        Windows.W10.use();
        Hooks.capture("RegEnumKeyExW", 3, 4);
        registry.deleteKey(HKCU, KEY, "tree", true);
        for (Call call : Call.of("RegEnumKeyExW")) {
            assertEquals(256, call.numberAt(3));
        }
        assertFalse(registry.keyExists(HKCU, KEY + "\\tree"));
    }

    @Test
    void theFirstFailureStopsTheDeletion() {
        RegistryFixture.fill();
        Windows.W10.use();
        Hooks.fail("RegEnumKeyExW", 2, ACCESS_DENIED);
        assertFails(-100002, ACCESS_DENIED, () -> registry.deleteKey(HKCU, KEY, "tree", false));
        assertEquals(0, Call.of("RegDeleteKeyW").size());
        Hooks.answer("RegDeleteKeyW", NO_SUCH_FILE);
        Hooks.answer("RegDeleteKeyW", ACCESS_DENIED);
        assertFails(-100002, NO_SUCH_FILE, () -> registry.deleteKey(HKCU, KEY, "tree", true));
        assertEquals(1, Call.of("RegDeleteKeyW").size());
        assertFails(-100002, ACCESS_DENIED, () -> registry.deleteKey(HKCU, KEY, "tree", false));
        // A name that begins with a NUL reads as the empty one: the key itself, over and over.
        Hooks.answer("RegEnumKeyExW", 0, 2, new byte[] {0, 0, 'a', 0, 0, 0});
        assertFails(-100002, BAD_KEY, () -> registry.deleteKey(HKCU, KEY, "second", true));
        Hooks.answer("NtDeleteKey", STATUS_KEY_DELETED);
        Hooks.answer("NtDeleteKey", STATUS_ACCESS_DENIED);
        assertFails(-100002, NO_SUCH_FILE, () -> registry.deleteKey(HKCU, KEY + "\\tree", "link", true));
        assertFails(-100002, ACCESS_DENIED, () -> registry.deleteKey(HKCU, KEY + "\\tree", "link", false));
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "ME", "W10"})
    void aKeyThatMustExistIsMissed(Windows system) throws Exception {
        system.use();
        registry.deleteKey(HKCU, KEY, "missing", false);
        assertFails(-100002, NO_SUCH_FILE, () -> registry.deleteKey(HKCU, KEY, "missing", true));
        assertFails(-100002, NO_SUCH_FILE, () -> registry.deleteKey(HKCU, MISSING, "any", false));
        String open = system.isAnsi() ? "RegDeleteKeyA" : "RegOpenKeyExW";
        Hooks.fail(open, system.isAnsi() ? 1 : 2, PATH_NOT_FOUND);
        assertFails(-100002, PATH_NOT_FOUND, () -> registry.deleteKey(HKCU, KEY, "missing", false));
    }

    /** Neither the parent itself nor a root must be taken for what is to be deleted. */
    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void aNameThatNamesNoKeyBelowIsRefused(Windows system) {
        RegistryFixture.fill();
        String before = RawRegistry.dump(KEY);
        system.use();
        for (String name : new String[] {null, "", "\0second", "\\", "\\\\", "\\second"}) {
            assertFails(-100002, BAD_KEY, () -> registry.deleteKey(HKCU, KEY, name, false));
        }
        if (system.isAnsi()) {  // where the code page makes a backslash of this one
            assertFails(-100002, BAD_KEY, () -> registry.deleteKey(HKCU, KEY, "\uFF3Csecond", false));
        }
        assertEquals(List.of(), Call.of("RegDeleteKeyA"));
        assertEquals(before, RawRegistry.dump(KEY));
    }

    /** Windows 9x deletes a tree by itself. A system that does not tell what it is counts as one. */
    @Test
    void windows9xDeletesTheTreeItself() throws Exception {
        for (Windows system : new Windows[] {Windows.W95, Windows.ME, null}) {
            RegistryFixture.fill();
            Hooks.reset();
            if (system == null) {
                Windows.useUnknown();
            } else {
                system.use();
            }
            Hooks.answer("RegDeleteKeyA", 0);
            Hooks.capture("RegDeleteKeyA", 1, 5);
            Hooks.arm();
            registry.deleteKey(HKCU, KEY, "tree", true);
            assertArrayEquals(Bytes.latin1("tree\0"), Call.only("RegDeleteKeyA").bytes(1));
            assertEquals(List.of(PARENT_OF_DELETED),
                    numbers(system == null ? "RegOpenKeyExW" : "RegOpenKeyExA", 3));
            assertEquals(0, Call.of("RegEnumKeyExW").size());
        }
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void theNumbersOfAKey(Windows system) throws Exception {
        RegistryFixture.fill();
        RawRegistry.createKey(KEY + "\\only keys\\sub");
        RawRegistry.set(KEY + "\\only values", "v", 4, Bytes.number(1));
        system.use();
        assertEquals(4, registry.countSubKeys(HKCU, KEY));
        assertEquals(8, registry.countValuesInKey(HKCU, KEY));
        assertEquals("only values".length(), registry.longestSubKeyNameLength(HKCU, KEY));
        assertEquals("long list".length(), registry.longestValueNameLength(HKCU, KEY));
        String longest = RegistryFixture.LONG_TEXT + "\0" + RegistryFixture.LONG_TEXT + "\0\0";
        assertEquals(2 * longest.length(), registry.longestValueNameData(HKCU, KEY));
        assertFalse(registry.isKeyEmpty(HKCU, KEY));
        assertFalse(registry.isKeyEmpty(HKCU, KEY + "\\only keys"));
        assertFalse(registry.isKeyEmpty(HKCU, KEY + "\\only values"));
        assertTrue(registry.isKeyEmpty(HKCU, KEY + "\\second"));

        assertEquals(9, Hooks.leftOpen(), "these keys stay open");
        assertTrue(numbers(system.function("RegOpenKeyEx"), 3).stream().allMatch(mask -> mask == QUERY_VALUE));
        for (Call call : Call.of(system.function("RegQueryInfoKey"))) {
            for (int unused : new int[] {1, 2, 3, 6, 10, 11}) {
                assertEquals(0, call.word(unused), "argument " + unused);
            }
        }
        assertFails(-100003, NO_SUCH_FILE, () -> registry.countSubKeys(HKCU, MISSING));
        assertFails(-100003, NO_SUCH_FILE, () -> registry.isKeyEmpty(HKCU, MISSING));
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void namesAreListed(Windows system) throws Exception {
        List<String> names = new ArrayList<>();
        for (int index = 0; index < 300; ++index) {
            String name = String.format("name %03d", index);
            names.add(name);
            RawRegistry.createKey(KEY + "\\keys\\" + name);
            RawRegistry.set(KEY + "\\values", name, 4, Bytes.number(index));
        }
        String[] expected = names.toArray(new String[0]);
        String enumValue = system.function("RegEnumValue");
        String enumKey = system.function("RegEnumKey");
        Hooks.reset();
        system.use();
        Hooks.capture(enumValue, 3, 4);
        Hooks.arm();

        assertArrayEquals(expected, registry.getKeyValueNames(HKCU, KEY + "\\values"));
        assertEquals(QUERY_VALUE, Call.only(system.function("RegOpenKeyEx")).number(3));
        assertArrayEquals(expected, registry.getSubkeyNames(HKCU, KEY + "\\keys"));
        assertEquals(List.of(QUERY_VALUE, READ), numbers(system.function("RegOpenKeyEx"), 3));
        assertEquals(2, Hooks.leftOpen(), "these keys stay open");
        assertTrue(Hooks.peakLocalReferences() <= 4, "references of names must not pile up");

        List<Call> values = Call.of(enumValue);
        List<Call> keys = Call.of(enumKey);
        assertEquals(List.of(301, 301), List.of(values.size(), keys.size()));
        for (int index = 0; index <= 300; ++index) {
            assertEquals(index, values.get(index).number(1));
            assertEquals(1024, values.get(index).numberAt(3));
            assertTrue(values.get(index).word(5) != 0, "the type is asked for");
            assertEquals(List.of(0L, 0L), List.of(values.get(index).word(6), values.get(index).word(7)));
            assertEquals(index, keys.get(index).number(1));
            assertEquals(1024, keys.get(index).number(3));
        }
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void aListThatCannotBeReadToItsEndFails(Windows system) throws Exception {
        RegistryFixture.fill();
        system.use();
        assertArrayEquals(new String[0], registry.getKeyValueNames(HKCU, KEY + "\\second"));
        assertArrayEquals(new String[0], registry.getSubkeyNames(HKCU, KEY + "\\second"));
        assertFails(-100000, NO_SUCH_FILE, () -> registry.getKeyValueNames(HKCU, MISSING));
        assertFails(-100013, NO_SUCH_FILE, () -> registry.getSubkeyNames(HKCU, MISSING));

        RawRegistry.set(KEY, "n".repeat(1024), 4, Bytes.number(1));
        assertFails(-100000, MORE_DATA, () -> registry.getKeyValueNames(HKCU, KEY));
        Hooks.fail(system.function("RegEnumKey"), 3, MORE_DATA);
        assertFails(-100013, MORE_DATA, () -> registry.getSubkeyNames(HKCU, KEY));
    }

    /** A native that throws returns nothing of meaning, but getStringValue an empty string. */
    @Test
    void whatThrowsReturnsTheDefault() {
        Windows.W10.use();
        assertEquals("", Direct.getStringValue(HKCU, MISSING, "v", false));
        String[] booleans = {"keyExists", "valueExists", "isKeyEmpty"};
        for (String method : booleans) {
            assertEquals(0, Direct.result(method, 9, "any", "v") & 0xFF, method);
        }
        for (String method : new String[] {"countSubKeys", "get32BitValue", "getValueType"}) {
            assertEquals(0, (int) Direct.result(method, 9, "any", "v"), method);
        }
        String[] objects = {"getMultiStringValue", "getBinaryValue", "getSubkeyNames", "getKeyValueNames"};
        for (String method : objects) {
            assertEquals(0, Direct.result(method, 9, "any", "v"), method);
        }
    }

    /** Each operation asks once what system it is on. */
    @Test
    void theSystemIsAskedAnewForEveryCall() throws Exception {
        Windows.W98.use();
        registry.keyExists(HKCU, KEY);
        Windows.W10.use();
        registry.keyExists(HKCU, KEY);
        Windows.useUnknown();
        registry.keyExists(HKCU, KEY);
        List<String> names = Call.all().stream()
                .map(Call::name)
                .filter(name -> name.startsWith("GetVersion") || name.startsWith("RegOpen"))
                .toList();
        assertEquals(
                List.of("GetVersionExA", "RegOpenKeyExA", "GetVersionExA", "RegOpenKeyExW", "GetVersionExA",
                        "GetVersionExA", "RegOpenKeyExW"),
                names);
    }

    @Test
    void threadsDoNotDisturbEachOther() throws Exception {
        List<Callable<Void>> works = new ArrayList<>();
        for (int thread = 0; thread < 4; ++thread) {
            String name = "thread " + thread;
            works.add(() -> {
                for (int round = 0; round < 200; ++round) {
                    String text = (name + " round " + round + ";").repeat(1 + round % 40);
                    registry.setStringValue(HKCU, KEY, name, false, text);
                    assertEquals(text, registry.getStringValue(HKCU, KEY, name, false));
                    assertFails(-100008, WRONG_TYPE, () -> registry.get32BitValue(HKCU, KEY, "a text"));
                }
                return null;
            });
        }
        RawRegistry.set(KEY, "a text", 1, Bytes.utf16("x\0"));
        ExecutorService threads = Executors.newFixedThreadPool(works.size());
        for (Future<Void> work : threads.invokeAll(works)) {
            work.get();
        }
        threads.shutdown();
    }
}
