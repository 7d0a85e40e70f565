package com.corvane.wizard.platform.win32;

import static com.corvane.testing.Bytes.latin1;
import static com.corvane.testing.Outcome.assertFails;
import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.corvane.testing.Call;
import com.corvane.testing.Folder;
import com.corvane.testing.Hooks;
import com.corvane.testing.Outcome;
import com.corvane.testing.Shortcut;
import com.corvane.testing.TestBed;
import com.corvane.testing.Windows;
import java.util.List;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.extension.ExtendWith;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.EnumSource;

/** Program groups and shortcuts: what is there afterwards, and what the shell is told. */
@ExtendWith(TestBed.class)
class DesktopTest {

    private static final int E_FAIL = 0x80004005;
    private static final long E_FAIL_NUMBER = 0x80004005L;
    private static final int BAD_ARGUMENTS = 160;
    private static final int CREATE = 2;
    private static final int DELETE = 4;
    private static final int MAKE = 8;
    private static final int REMOVE = 0x10;

    private final Win32DesktopServiceImpl desktop = new Win32DesktopServiceImpl();
    private final Folder folder = Folder.named("desktop");
    private final String top = folder.path("");

    private static void begin(Windows system) {
        Hooks.reset();
        system.use();
        Hooks.captureText("SHChangeNotify", 2);
        Hooks.arm();
    }

    /** The only thing that the shell was told is this. */
    private static void assertTold(int event, String path) {
        Call call = Call.only("SHChangeNotify");
        assertEquals(List.of(event, 1, 0), List.of(call.number(0), call.number(1), call.number(3)));
        assertEquals(path, call.text(2));
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void tokensAreReplaced(Windows system) {
        Object[][] tokens = {
            {"$UserPrograms$", 2, 2}, {"$AllUsersPrograms$", 0x17, 2}, {"$UserStartMenu$", 0xB, 0xB},
            {"$AllUsersStartMenu$", 0x16, 0xB}, {"$UserDesktop$", 0x10, 0x10}, {"$AllUsersDesktop$", 0x19, 0x10},
        };
        String exists = system.function("GetFileAttributes");
        for (Object[] token : tokens) {
            String twice = token[0] + "\\x" + token[0];
            begin(system);
            Hooks.captureText(exists, 0);
            Hooks.fail(exists, 1, 2);
            Hooks.answer("SHGetPathFromIDListA", 1, 1, latin1("C:\\He$e\0"));
            assertFails(-80000, 2, () -> desktop.createDesktopFolder(twice, "sub"));
            assertEquals("C:\\He$e\\xC:\\He$e", Call.only(exists).text(0));
            assertEquals(token[system.isAnsi() ? 2 : 1], Call.only("SHGetSpecialFolderLocation").number(1));
            assertEquals(0, Call.only("SHGetSpecialFolderLocation").word(0));
            assertFailedToken(system, (String) token[0], "SHGetSpecialFolderLocation", E_FAIL, E_FAIL_NUMBER);
            assertFailedToken(system, (String) token[0], "SHGetPathFromIDListA", 0, BAD_ARGUMENTS);
        }
    }

    /** The failure of one token only is passed over; the folder with the token's name is missing then. */
    private void assertFailedToken(Windows system, String token, String function, int failure, long error) {
        long expected = token.equals("$UserStartMenu$") ? 2 : error;
        begin(system);
        Hooks.fail(function, 1, failure);
        assertFails(-80000, expected, () -> desktop.createDesktopFolder(token, "sub"));
        begin(system);
        Hooks.fail(function, 1, failure);
        assertFails(-80002, expected, () -> desktop.createDesktopItem(token, "sub", "n", "t", "", "", ""));
        if (!token.equals("$UserStartMenu$")) {
            begin(system);
            Hooks.fail(function, 1, failure);
            assertFails(-80001, expected, () -> desktop.removeDesktopFolder(token, "sub"));
            begin(system);
            Hooks.fail(function, 1, failure);
            assertFails(-80003, expected, () -> desktop.removeDesktopItem(token, "sub", "n"));
            assertEquals(List.of(), Call.of("SHChangeNotify"));
        }
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void aChainOfFolders(Windows system) throws Exception {
        for (String chain : List.of("a\\b/c", "a\\b\\c\\", "/a\\\\b//c")) {
            begin(system);
            desktop.createDesktopFolder(top, chain);
            assertEquals(List.of("", "a", "a\\b", "a\\b\\c"), folder.names());
            assertTold(MAKE, top + "\\" + chain);
            begin(system);
            desktop.createDesktopFolder(top, chain);
            begin(system);
            desktop.removeDesktopFolder(top, chain);
            assertEquals(List.of(""), folder.names());
            assertTold(REMOVE, top + "\\" + chain);
        }
        begin(system);
        desktop.removeDesktopFolder(top, "missing");
        assertTold(REMOVE, top + "\\missing");
        assertEquals(List.of(), Call.of(system.function("RemoveDirectory")));

        folder.file("a/kept", "k");
        folder.folder("a/b/c");
        begin(system);
        desktop.removeDesktopFolder(top, "a\\b\\c");
        assertEquals(List.of("", "a", "a\\kept"), folder.names());
        assertEquals(List.of(), Call.of("SHChangeNotify"));
        for (String nothing : new String[] {"", null, "\\", "/\\/"}) {
            begin(system);
            desktop.removeDesktopFolder(folder.folder("empty"), nothing);
            assertTrue(folder.has("empty"));
            assertEquals(List.of(), Call.of(system.function("RemoveDirectory")));
        }
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void whatFailsLeavesNothing(Windows system) throws Exception {
        begin(system);
        assertFails(-80000, 2, () -> desktop.createDesktopFolder(folder.path("missing"), "a"));
        folder.folder("a");
        begin(system);
        Hooks.fail(system.function("CreateDirectory"), 4, 5);
        assertFails(-80000, 5, () -> desktop.createDesktopFolder(top, "a\\b\\c\\d"));
        assertEquals(List.of("", "a"), folder.names());
        assertEquals(List.of(), Call.of("SHChangeNotify"));
        begin(system);
        Hooks.fail(system.function("CreateDirectory"), 2, 5);
        assertFails(-80002, 5, () -> desktop.createDesktopItem(top, "b\\c", "n", "C:\\x.exe", "", "", ""));
        assertEquals(List.of("", "a"), folder.names());
        assertEquals(List.of(), Call.of("CoCreateInstance"));

        // A folder that is not removed is a failure on the NT family only.
        begin(system);
        Hooks.fail(system.function("RemoveDirectory"), 1, 5);
        Outcome removed = Outcome.ofVoid(() -> desktop.removeDesktopFolder(top, "a"));
        assertEquals(!system.isAnsi(), removed.isFailure(-80001, 5));
        assertEquals(system.isAnsi(), !removed.isException());
        assertEquals(List.of(), Call.of("SHChangeNotify"));
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void aShortcutIsWhatTheShellReads(Windows system) throws Exception {
        String program = folder.file("pr\u00f6gram.exe", "");
        begin(system);
        desktop.createDesktopItem(top, "Gr\u00fcn", "Caf\u00e9", program, "-a \"b c\"", "C:\\i.ico", top);
        String shortcut = folder.path("Gr\u00fcn\\Caf\u00e9.lnk");
        assertTold(MAKE, folder.path("Gr\u00fcn"));
        assertArrayEquals(new String[] {program, "-a \"b c\"", top, "C:\\i.ico"}, Shortcut.read(shortcut));
        begin(system);
        desktop.createDesktopItem(top, "", "bare", program, "", null, "");
        assertArrayEquals(new String[] {program, "", "", ""}, Shortcut.read(folder.path("bare.lnk")));
        assertEquals(List.of(), Call.of("IShellLinkA::SetArguments"));
        assertEquals(List.of(), Call.of("IShellLinkA::SetWorkingDirectory"));
        assertEquals(List.of(), Call.of("IShellLinkA::SetIconLocation"));
        begin(system);
        desktop.removeDesktopItem(top, "Gr\u00fcn", "Caf\u00e9");
        assertFalse(folder.has("Gr\u00fcn"));
        assertEquals(List.of(DELETE, REMOVE),
                Call.of("SHChangeNotify").stream().map(call -> call.number(0)).toList());
        assertEquals(shortcut, Call.of("SHChangeNotify").get(0).text(2));
    }

    /** The first that fails ends it; the icon alone does not matter. */
    @Test
    void failuresOfTheShell() throws Exception {
        List<String> steps = List.of("CoCreateInstance", "IShellLinkA::QueryInterface", "IShellLinkA::SetPath",
                "IShellLinkA::SetArguments", "IShellLinkA::SetWorkingDirectory", "IPersistFile::Save");
        for (String step : steps) {
            begin(Windows.XP);
            Hooks.fail(step, 1, E_FAIL);
            assertFails(-80002, E_FAIL_NUMBER,
                    () -> desktop.createDesktopItem(top, "", "n", "C:\\x.exe", "a", "C:\\i.ico", "C:\\"));
            assertFalse(folder.has("n.lnk"));
            for (String later : steps.subList(steps.indexOf(step) + 1, steps.size())) {
                assertEquals(List.of(), Call.of(later));
            }
        }
        begin(Windows.XP);
        Hooks.fail("IShellLinkA::SetIconLocation", 1, E_FAIL);
        desktop.createDesktopItem(top, "", "n", "C:\\x.exe", "a", "C:\\i.ico", "C:\\");
        assertTrue(folder.has("n.lnk"));
        assertEquals(1, Call.only("IPersistFile::Save").number(2));
    }

    /**
     * On such a thread COM is started for the shortcut, which is announced then, and stopped again: the next
     * shortcut finds it as the first did.
     */
    @Test
    void aThreadWithoutCom() throws Exception {
        Outcome[] came = new Outcome[2];
        Thread thread = new Thread(() -> {
            begin(Windows.W10);
            for (int index = 0; index < came.length; ++index) {
                String name = "n" + index;
                came[index] =
                        Outcome.ofVoid(() -> desktop.createDesktopItem(top, "", name, "C:\\x.exe", "", "", ""));
            }
            Hooks.disarm();
        });
        thread.start();
        thread.join();
        List<Call> told = Call.of("SHChangeNotify");
        assertEquals(List.of(MAKE, CREATE, MAKE, CREATE), told.stream().map(call -> call.number(0)).toList());
        for (int index = 0; index < came.length; ++index) {
            String shortcut = folder.path("n" + index + ".lnk");
            assertEquals("returned nothing", came[index].toString());
            assertArrayEquals(new String[] {"C:\\x.exe", "", "", ""}, Shortcut.read(shortcut));
            assertEquals(shortcut, told.get(2 * index + 1).text(2));
        }
        assertEquals(List.of(2, 2),
                List.of(Call.of("CoInitialize").size(), Call.of("CoUninitialize").size()));
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void whichShortcutIsDeleted(Windows system) throws Exception {
        boolean ansi = system.isAnsi();
        for (String extension : List.of(".lnk", ".pif", ".url")) {
            folder.clear();
            folder.file("s/n" + extension, "");
            begin(system);
            desktop.removeDesktopItem(top, "s", "n");
            boolean known = ansi || extension.equals(".lnk");
            assertEquals(!known, folder.has("s"));
            assertEquals(folder.path("s\\n" + (known ? extension : ".lnk")),
                    Call.of("SHChangeNotify").get(0).text(2));
        }
        folder.clear();
        begin(system);
        desktop.removeDesktopItem(top, "", "n");
        assertTold(DELETE, folder.path("n" + (ansi ? ".url" : ".lnk")));
        assertEquals(List.of(), Call.of(system.function("RemoveDirectory")));
        folder.file("s/n.lnk", "");
        begin(system);
        Hooks.fail(system.function("DeleteFile"), 1, 5);
        assertFails(-80003, 5, () -> desktop.removeDesktopItem(top, "s", "n"));
        assertTrue(folder.has("s\\n.lnk"));
        assertEquals(List.of(), Call.of("SHChangeNotify"));
    }

    /** The shell's own folders stay, since Windows XP; 30 of them are asked for. */
    @ParameterizedTest
    @EnumSource(names = {"ME", "W2000", "XP", "W10"})
    void aFolderOfTheShellStays(Windows system) throws Exception {
        boolean stays = system == Windows.XP || system == Windows.W10;
        folder.file("s/n.lnk", "");
        begin(system);
        Hooks.answer("SHGetSpecialFolderPathA", 0);
        Hooks.answer("SHGetSpecialFolderPathA", 1, 1, latin1(folder.path("S").toUpperCase() + "\0"));
        desktop.removeDesktopItem(top, "s", "n");
        assertEquals(stays, folder.has("s"));
        assertFalse(folder.has("s\\n.lnk"));
        assertEquals(stays ? 2 : 0, Call.of("SHGetSpecialFolderPathA").size());
        folder.file("s/n.lnk", "");
        begin(system);
        desktop.removeDesktopItem(top, "s", "n");
        assertFalse(folder.has("s"));
        List<Call> asked = Call.of("SHGetSpecialFolderPathA");
        assertEquals(stays ? 30 : 0, asked.size());
        List<Integer> numbers = asked.stream().map(call -> call.number(2)).toList();
        assertFalse(numbers.contains(12) || numbers.contains(28) || numbers.contains(35));
        asked.forEach(call -> assertEquals(0, call.number(3)));
    }
}
