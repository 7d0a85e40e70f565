package com.corvane.wizard.platform.win32;

import static com.corvane.testing.Bytes.number;
import static com.corvane.testing.Outcome.assertFails;
import static org.junit.jupiter.api.Assertions.assertEquals;

import com.corvane.testing.Hooks;
import com.corvane.testing.Outcome.Action;
import com.corvane.testing.RawRegistry;
import com.corvane.testing.TestBed;
import com.corvane.testing.Windows;
import java.util.ArrayList;
import java.util.List;
import org.junit.jupiter.api.BeforeEach;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.extension.ExtendWith;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.EnumSource;

/** The entry in the list of programs; the lists are in the key of the tests, to which the roots then lead. */
@ExtendWith(TestBed.class)
class ProductTest {

    private static final String VERSION = "\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion";
    private static final String LIST = VERSION + "\\Uninstall";
    private static final String USER = RawRegistry.KEY + "\\user";
    private static final String MACHINE = RawRegistry.KEY + "\\machine";
    private static final String COMMAND = "C:\\un.exe -x " + "y".repeat(80);
    private static final String KEY = "k".repeat(63);
    private static final String LONG_KEY = KEY + " and more";
    private static final String NAME = "n".repeat(63);
    private static final String LONG_NAME = NAME + " and more";

    private final Win32ProductServiceImpl product = new Win32ProductServiceImpl();

    @BeforeEach
    void makeTheMachinesList() {
        RawRegistry.createKey(USER + VERSION);
        RawRegistry.createKey(MACHINE + LIST);
    }

    /** The token has no groups: nobody is an administrator. */
    private static void beNobody() {
        Hooks.refuse("GetTokenInformation", 122, new int[] {4}, number(8));
        Hooks.answer("GetTokenInformation", 1, 2, new byte[8]);
    }

    /** The entries after the action on this system: the list, the key, and the types and texts of the values. */
    private static List<String> after(Windows system, Action action) throws Exception {
        Hooks.reset();
        system.use();
        Hooks.arm();
        RawRegistry.lead(RawRegistry.MACHINE, MACHINE);
        RawRegistry.lead(RawRegistry.USER, USER);
        try {
            action.run();
        } finally {
            RawRegistry.lead(RawRegistry.USER, null);
            RawRegistry.lead(RawRegistry.MACHINE, null);
        }
        List<String> entries = new ArrayList<>();
        for (String root : List.of(USER, MACHINE)) {
            for (String key : RawRegistry.subkeys(root + LIST)) {
                StringBuilder entry = new StringBuilder(root.equals(USER) ? "user " : "machine ").append(key);
                RawRegistry.values(root + LIST + "\\" + key).forEach(value -> entry.append(", ").append(value.name())
                        .append(' ').append(value.type()).append(' ').append(value.text()));
                entries.add(entry.toString());
            }
        }
        return entries;
    }

    private static String entry(String root, String key, String name, String command) {
        return root + " " + key + ", DisplayName 1 " + name + ", UninstallString 1 " + command;
    }

    /** Nobody asks for an administrator on Windows 98; and Windows 2000 alone shows long names. */
    @ParameterizedTest
    @EnumSource(names = {"W98", "NT4", "W2000", "XP"})
    void anEntryComesAndGoes(Windows system) throws Exception {
        String named = entry("machine", KEY, system == Windows.W2000 ? LONG_NAME : NAME, COMMAND);
        assertEquals(List.of(named), after(system, () -> {
            if (system.isAnsi()) {
                beNobody();
            }
            product.win32RegisterUninstaller(KEY, LONG_NAME, COMMAND);
        }));
        assertEquals(List.of(entry("machine", "Corvane", "", ""), named),
                after(system, () -> product.win32RegisterUninstaller("Corvane", "", null)));
        assertEquals(0, RawRegistry.data(MACHINE + LIST + "\\Corvane", "UninstallString").length);
        assertEquals(List.of(), after(system, () -> product.win32UnregisterUninstaller(LONG_KEY, "Corvane")));
        assertEquals(List.of(), after(system, () -> product.win32UnregisterUninstaller("none", "nor this one")));
    }

    /** The key is made under the short name; the values belong to the long one, which is not there. */
    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void aLongKey(Windows system) throws Exception {
        String bare = "machine " + KEY;
        assertEquals(List.of(bare), after(system, () ->
                assertFails(-90000, 2, () -> product.win32RegisterUninstaller(LONG_KEY, "name", COMMAND))));
        RawRegistry.createKey(MACHINE + LIST + "\\" + LONG_KEY);
        assertEquals(List.of(bare, entry("machine", LONG_KEY, "name", COMMAND)),
                after(system, () -> product.win32RegisterUninstaller(LONG_KEY, "name", COMMAND)));
        assertEquals(List.of(bare), after(system, () -> product.win32UnregisterUninstaller("", LONG_KEY)));
    }

    @Test
    void theOtherKeyGoesFirst() throws Exception {
        assertEquals(List.of(entry("machine", "key", "", "")), after(Windows.W98, () -> {
            product.win32RegisterUninstaller("key", "", "");
            product.win32RegisterUninstaller("other", "", "");
            Hooks.fail("RegDeleteKeyA", 2, 5);
            assertFails(-90001, 5, () -> product.win32UnregisterUninstaller("key", "other"));
        }));
    }

    /** Only a user's list is made where it is missing; and who cannot be known is nobody either. */
    @Test
    void anOrdinaryUserHasAListOfTheirOwn() throws Exception {
        RawRegistry.deleteTree(MACHINE + LIST);
        assertEquals(List.of(), after(Windows.XP, () ->
                assertFails(-90000, 2, () -> product.win32RegisterUninstaller(KEY, "name", COMMAND))));
        for (int time = 0; time < 2; ++time) {
            assertEquals(List.of(entry("user", "Corvane", "name", COMMAND)), after(Windows.XP, () -> {
                beNobody();
                product.win32RegisterUninstaller("Corvane", "name", COMMAND);
            }));
            assertEquals(List.of(), after(Windows.XP, () -> {
                Hooks.fail("OpenThreadToken", 1, 5);
                product.win32UnregisterUninstaller("Corvane", "");
            }));
        }
    }

    /** It would be the whole list. */
    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void noNameIsNoEntry(Windows system) throws Exception {
        for (String nothing : new String[] {"", null}) {
            assertEquals(List.of(entry("machine", "Corvane", "name", COMMAND)), after(system, () -> {
                product.win32RegisterUninstaller("Corvane", "name", COMMAND);
                assertFails(-90000, 87, () -> product.win32RegisterUninstaller(nothing, "name", COMMAND));
                product.win32UnregisterUninstaller(nothing, nothing);
                assertFails(-90001, 1010, () -> product.win32UnregisterUninstaller(nothing, "\\"));
            }));
        }
        assertEquals(List.of(), RawRegistry.values(MACHINE + LIST));
    }

    /** The system's own program prints the key and the name of each; the roots lead where they always do. */
    @ParameterizedTest
    @EnumSource(names = {"W98", "XP"})
    void theSystemListsIt(Windows system) throws Exception {
        system.use();
        product.win32RegisterUninstaller("Corvane", "The product's name", COMMAND);
        assertEquals(1, listed());
        product.win32UnregisterUninstaller("Corvane", "");
        assertEquals(0, listed());
    }

    private static long listed() throws Exception {
        Process list = new ProcessBuilder("uninstaller.exe", "--list").start();
        return list.inputReader().lines().filter("Corvane|||The product's name"::equals).count();
    }
}
