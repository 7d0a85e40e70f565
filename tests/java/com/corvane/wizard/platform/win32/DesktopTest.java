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
import java.util.stream.IntStream;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.extension.ExtendWith;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.EnumSource;

/** Program groups and shortcuts: what is there afterwards, and what the shell is told. */
@ExtendWith(TestBed.class)
class DesktopTest {

    private static final int E_FAIL = 0x80004005;
    private static final long E_FAIL_NUMBER = 0x80004005L;
    private static final int S_FALSE = 1;
    private static final long NO_COM = 0x800401F0L;
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
            Hooks.answer("SHGetSpecialFolderLocation", S_FALSE);
            Hooks.answer("SHGetPathFromIDListA", 1, 1, latin1("C:\\He$e\0"));
            assertFails(-80000, 2, () -> desktop.createDesktopFolder(twice, "sub"));
            assertEquals("C:\\He$e\\xC:\\He$e", Call.only(exists).text(0));
            assertEquals(token[system.isAnsi() ? 2 : 1], Call.only("SHGetSpecialFolderLocation").number(1));
            assertEquals(0, Call.only("SHGetSpecialFolderLocation").word(0));
            assertFailedToken(system, (String) token[0], "SHGetSpecialFolderLocation", E_FAIL, E_FAIL_NUMBER);
            assertFailedToken(system, (String) token[0], "SHGetPathFromIDListA", 0, BAD_ARGUMENTS);
        }
    }

    /** Each in its turn, whatever the order in the text; and of a path put in place, nothing is a token. */
    @Test
    void severalTokensAreReplaced() {
        String[][] folders = {
            {"$AllUsersDesktop$|$UserDesktop$|$AllUsersStartMenu$|$UserStartMenu$|$AllUsersPrograms$|$UserPrograms$",
                "2 23 11 22 16 25", "P|P|P|P|P|P"},
            {"$UserDesktop$Desktop$", "16", "$UserDesktop$"},
        };
        for (String[] row : folders) {
            begin(Windows.W10);
            Hooks.captureText("GetFileAttributesW", 0);
            String path = row[2].startsWith("P") ? "P" : "$User";
            for (int count = 0; count < 6; ++count) {
                Hooks.answer("SHGetPathFromIDListA", 1, 1, latin1(path + "\0"));
            }
            Hooks.fail("GetFileAttributesW", 1, 2);
            assertFails(-80000, 2, () -> desktop.createDesktopFolder(row[0], "sub"));
            assertEquals(row[2], Call.only("GetFileAttributesW").text(0));
            assertEquals(row[1], String.join(" ", Call.of("SHGetSpecialFolderLocation").stream()
                    .map(call -> String.valueOf(call.number(1))).toList()));
        }
        // The one whose failure is passed over does not keep the next from being replaced.
        begin(Windows.W10);
        Hooks.captureText("GetFileAttributesW", 0);
        Hooks.fail("SHGetSpecialFolderLocation", 1, E_FAIL);
        Hooks.answer("SHGetPathFromIDListA", 1, 1, latin1("P\0"));
        Hooks.fail("GetFileAttributesW", 1, 2);
        assertFails(-80000, 2, () -> desktop.createDesktopFolder("$UserDesktop$|$UserStartMenu$", "sub"));
        assertEquals("P|$UserStartMenu$", Call.only("GetFileAttributesW").text(0));
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
        String create = system.function("CreateDirectory");
        begin(system);
        Hooks.captureText(create, 0);
        Hooks.fail(create, 1, 80);
        Hooks.fail(create, 2, 183);
        Hooks.answer(create, 1);
        desktop.createDesktopFolder("", "a/b/c");  // no folder need be there then
        assertEquals(List.of("\\a", "\\a\\b", "\\a\\b\\c"),
                Call.of(create).stream().map(call -> call.text(0)).toList());
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
    }

    /** The folder itself is never removed, nor what is above it. */
    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void subfoldersThatNameNothingOrLeadUpwards(Windows system) throws Exception {
        String only = folder.folder("only");
        for (String nothing : new String[] {"", null, "\\", "/\\/", ".", " ", "...", "\\.", ". ./ .\\"}) {
            folder.file("only/n.lnk", "");
            begin(system);
            desktop.removeDesktopItem(only, nothing, "n");
            desktop.removeDesktopFolder(only, nothing);
            assertTrue(folder.names().contains("only"));
            if (nothing == null || nothing.matches("[.\\\\/]{0,3}") && !nothing.equals("...")) {
                assertEquals(List.of("", "only"), folder.names());
            }
            desktop.removeDesktopItem(only, "", "n");
            assertEquals(List.of(), Call.of(system.function("RemoveDirectory")));
        }
        folder.file("n.lnk", "");
        folder.folder("only/sub");
        for (String upwards : List.of("..", "sub\\..", "sub/ .. \\", "::$INDEX_ALLOCATION")) {
            begin(system);
            assertFails(-80001, 161, () -> desktop.removeDesktopFolder(only, upwards));
            assertFails(-80003, 161, () -> desktop.removeDesktopItem(only, upwards, "n"));
            assertEquals(List.of("", "n.lnk", "only", "only\\sub"), folder.names());
        }
        folder.folder("only/sub/..b");
        begin(system);
        desktop.removeDesktopFolder(only, "sub/ \\..b");
        assertEquals(List.of("", "n.lnk", "only", "only\\sub", "only\\sub\\..b"), folder.names());
        desktop.removeDesktopFolder(only, ".\\sub/.\\..b/");
        assertTold(REMOVE, only + "\\sub\\..b/");
        assertEquals(List.of("", "n.lnk", "only"), folder.names());
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
        for (int error : new int[] {5, 3}) {
            begin(system);
            Hooks.fail(system.function("RemoveDirectory"), 1, error);
            Outcome removed = Outcome.ofVoid(() -> desktop.removeDesktopFolder(top, "a"));
            assertEquals(!system.isAnsi(), removed.isFailure(-80001, error));
            assertEquals(system.isAnsi(), !removed.isException());
            assertEquals(List.of(), Call.of("SHChangeNotify"));
        }
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

    /** COM that cannot be started, or a second attempt that fails too: no shortcut is announced. */
    @Test
    void failuresOnAThreadWithoutCom() {
        for (boolean started : new boolean[] {false, true}) {
            begin(Windows.XP);
            Hooks.fail("CoCreateInstance", 1, (int) NO_COM);
            Hooks.fail("CoCreateInstance", 2, E_FAIL);
            Hooks.answer("CoInitialize", started ? S_FALSE : E_FAIL);
            Hooks.answer("CoUninitialize", 0);
            assertFails(-80002, started ? E_FAIL_NUMBER : NO_COM,
                    () -> desktop.createDesktopItem(top, "a", "n", "C:\\x.exe", "", "", ""));
            assertEquals(started ? 2 : 1, Call.of("CoCreateInstance").size());
            assertEquals(started ? 1 : 0, Call.of("CoUninitialize").size());
            assertTold(MAKE, folder.path("a"));
        }
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
        Hooks.answer("IPersistFile::Save", S_FALSE);
        assertFails(-80002, S_FALSE, () -> desktop.createDesktopItem(top, "", "n", "C:\\x.exe", "", "", ""));
        begin(Windows.XP);
        Hooks.fail("IShellLinkA::SetIconLocation", 1, E_FAIL);
        Hooks.captureText("IShellLinkA::SetPath", 1);
        Hooks.answer("IShellLinkA::SetPath", 0);
        desktop.createDesktopItem(top, "", "n", "", "a", "C:\\i.ico", "C:\\");
        assertTrue(folder.has("n.lnk"));
        assertEquals("", Call.only("IShellLinkA::SetPath").text(1));
        assertEquals(1, Call.only("CoCreateInstance").number(2), "in this process alone");
        assertEquals(0, Call.only("IShellLinkA::SetIconLocation").number(2));
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
    @EnumSource(names = {"ME", "NT4", "W2000", "XP", "W10"})
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
        assertEquals(stays ? List.of(DELETE) : List.of(DELETE, REMOVE),
                Call.of("SHChangeNotify").stream().map(call -> call.number(0)).toList());
        folder.folder("s");
        begin(system);
        Hooks.answer("SHGetSpecialFolderPathA", 1, 1, latin1(folder.path("s") + "\0"));
        desktop.removeDesktopItem(top, "/s. ", "n");
        assertEquals(stays, folder.has("s"), "also in another spelling");
        folder.file("s/n.lnk", "");
        begin(system);
        desktop.removeDesktopItem(top, "s", "n");
        assertFalse(folder.has("s"));
        List<Call> asked = Call.of("SHGetSpecialFolderPathA");
        List<Integer> numbers = IntStream.range(0, 35).filter(at -> at < 12 || at > 15 && at != 28).boxed().toList();
        assertEquals(stays ? numbers : List.of(), asked.stream().map(call -> call.number(2)).toList());
        asked.forEach(call -> assertEquals(0, call.number(3)));
    }
}
