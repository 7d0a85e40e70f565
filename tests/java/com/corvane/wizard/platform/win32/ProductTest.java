package com.corvane.wizard.platform.win32;

import static com.corvane.testing.Bytes.number;
import static com.corvane.testing.Outcome.assertFails;
import static com.corvane.testing.RawRegistry.deleteTree;
import static com.corvane.testing.RawRegistry.dump;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.corvane.testing.Call;
import com.corvane.testing.Hooks;
import com.corvane.testing.SystemTool;
import com.corvane.testing.TestBed;
import com.corvane.testing.Windows;
import java.util.List;
import org.junit.jupiter.api.AfterEach;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.extension.ExtendWith;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.EnumSource;

/** The entry in the list of programs. */
@ExtendWith(TestBed.class)
class ProductTest {

    private static final int USER = 3;
    private static final int MACHINE = 4;
    private static final String LIST = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall";
    private static final int OF_DELETED_KEY = 0x10008;
    private static final String COMMAND = "C:\\un.exe -x " + "y".repeat(80);
    private static final String KEY = "Corvane " + "k".repeat(55);
    private static final String LONG_KEY = KEY + "more k";
    private static final String LONG_NAME = "n".repeat(63) + "and more";

    private final Win32ProductServiceImpl product = new Win32ProductServiceImpl();
    private final Win32RegistryServiceImpl registry = new Win32RegistryServiceImpl();

    private static void begin(Windows system) {
        Hooks.reset();
        system.use();
        Hooks.arm();
    }

    /** The token has no groups: nobody is an administrator. */
    private static void beNobody() {
        Hooks.refuse("GetTokenInformation", 122, new int[] {4}, number(8));
        Hooks.answer("GetTokenInformation", 1, 2, new byte[8]);
    }

    private boolean isListed(int root, String key) throws Exception {
        return registry.keyExists(root, LIST + "\\" + key);
    }

    private String value(int root, String key, String name) throws Exception {
        return registry.getStringValue(root, LIST + "\\" + key, name, false);
    }

    @AfterEach
    void takeAway() throws Exception {
        begin(Windows.W10);
        for (String key : List.of("Corvane", KEY, LONG_KEY)) {
            for (int root : new int[] {USER, MACHINE}) {
                if (isListed(root, key)) {
                    registry.deleteKey(root, LIST, key, true);
                }
            }
        }
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "NT4", "W2000", "XP"})
    void anEntryComesAndGoes(Windows system) throws Exception {
        String set = system.function("RegSetValueEx");
        begin(system);
        Hooks.captureText(set, 1);
        if (system.isAnsi()) {
            beNobody();  // which is no question there
        }
        product.win32RegisterUninstaller(KEY, LONG_NAME, COMMAND);
        assertEquals(List.of("DisplayName", "UninstallString"),
                Call.of(set).stream().map(call -> call.text(1)).toList());
        begin(system);
        String shown = system == Windows.W2000 ? LONG_NAME : LONG_NAME.substring(0, 63);
        assertEquals(shown, value(MACHINE, KEY, "DisplayName"));
        assertEquals(COMMAND, value(MACHINE, KEY, "UninstallString"));
        assertEquals(Win32RegistryServiceImpl.REG_SZ,
                registry.getValueType(MACHINE, LIST + "\\" + KEY, "DisplayName"));
        assertFalse(isListed(USER, KEY));
        begin(system);
        product.win32UnregisterUninstaller(LONG_KEY, "no such product");
        assertFalse(isListed(MACHINE, KEY));
        product.win32RegisterUninstaller("Corvane", "", null);
        Call none = Call.of(set).get(1);
        assertEquals(List.of(0L, 0L), List.of(none.word(4), (long) none.number(5)), "no command: no data");
        product.win32RegisterUninstaller(KEY, "", "");
        String delete = system.isAnsi() ? "RegDeleteKeyA" : "RegOpenKeyExW";
        begin(system);
        Hooks.captureText(delete, 1);
        product.win32UnregisterUninstaller("Corvane", KEY);
        List<String> deleted = Call.of(delete).stream()
                .filter(call -> system.isAnsi() || call.number(3) == OF_DELETED_KEY)
                .map(call -> call.text(1))
                .toList();
        assertEquals(List.of(KEY, "Corvane"), deleted);
        assertFalse(isListed(MACHINE, "Corvane") || isListed(MACHINE, KEY));
        product.win32UnregisterUninstaller("no such product", "nor such a one");
    }

    /** The key is made under the short name; the values belong to the long one, which is not there. */
    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void aLongKey(Windows system) throws Exception {
        begin(system);
        assertFails(-90000, 2, () -> product.win32RegisterUninstaller(LONG_KEY, "name", COMMAND));
        assertTrue(isListed(MACHINE, KEY));
        assertFalse(isListed(MACHINE, LONG_KEY));
        begin(system);
        registry.createKey(MACHINE, LIST, LONG_KEY);
        product.win32RegisterUninstaller(LONG_KEY, "name", COMMAND);
        assertEquals("name", value(MACHINE, LONG_KEY, "DisplayName"));
        begin(system);
        product.win32UnregisterUninstaller("", LONG_KEY);
        assertFalse(isListed(MACHINE, LONG_KEY));
        assertTrue(isListed(MACHINE, KEY));
    }

    /** Only a user's list is made where it is missing. */
    @Test
    void theMachinesListIsThere() throws Exception {
        begin(Windows.W10);
        Hooks.fail("RegOpenKeyExW", 1, 2);
        assertFails(-90000, 2, () -> product.win32RegisterUninstaller(KEY, "name", COMMAND));
        assertFalse(isListed(MACHINE, KEY));
    }

    @Test
    void anOrdinaryUserHasAListOfTheirOwn() throws Exception {
        begin(Windows.XP);
        boolean hadList = registry.keyExists(USER, LIST);
        assertEquals("[" + LIST + "]\n", dump(LIST), "the list of the user is in use");
        deleteTree(LIST);
        for (List<String> made : List.of(List.of("Uninstall", "Corvane"), List.of("Corvane"))) {
            begin(Windows.XP);
            Hooks.captureText("RegCreateKeyExW", 1);
            beNobody();
            product.win32RegisterUninstaller("Corvane", "name", COMMAND);
            assertEquals(made, Call.of("RegCreateKeyExW").stream().map(call -> call.text(1)).toList());
            assertEquals("name", value(USER, "Corvane", "DisplayName"));
            assertFalse(isListed(MACHINE, "Corvane"));
            begin(Windows.XP);
            Hooks.fail("OpenThreadToken", 1, 5);  // who cannot be known is nobody either
            product.win32UnregisterUninstaller("Corvane", "");
            assertFalse(isListed(USER, "Corvane"));
        }
        if (!hadList) {
            deleteTree(LIST);
        }
    }

    /** The system's own program prints the key and the name of each. */
    @ParameterizedTest
    @EnumSource(names = {"W98", "XP"})
    void theSystemListsIt(Windows system) throws Exception {
        String line = "Corvane|||The product's name";
        for (boolean nobody : new boolean[] {false, true}) {
            for (boolean add : new boolean[] {true, false}) {
                begin(system);
                if (nobody) {
                    beNobody();
                }
                if (add) {
                    product.win32RegisterUninstaller("Corvane", "The product's name", COMMAND);
                } else {
                    product.win32UnregisterUninstaller("Corvane", "");
                }
                List<String> listed = SystemTool.lines("uninstaller.exe", "--list");
                assertEquals(add, listed.contains(line), listed.toString());
            }
        }
    }

    /** It would be the whole list. */
    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void noNameIsNoEntry(Windows system) throws Exception {
        for (String nothing : new String[] {"", null}) {
            begin(system);
            assertFails(-90000, 87, () -> product.win32RegisterUninstaller(nothing, "name", COMMAND));
            product.win32UnregisterUninstaller(nothing, nothing);
            for (String function : List.of("RegCreateKeyEx", "RegSetValueEx")) {
                assertEquals(List.of(), Call.of(system.function(function)));
            }
            assertFails(-90001, 1010, () -> product.win32UnregisterUninstaller(nothing, "\\"));
            assertEquals(List.of(), Call.of(system.isAnsi() ? "RegDeleteKeyA" : "RegDeleteKeyW"));
        }
        assertTrue(registry.keyExists(MACHINE, LIST));
    }
}
