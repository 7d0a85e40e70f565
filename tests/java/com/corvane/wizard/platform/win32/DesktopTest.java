package com.corvane.wizard.platform.win32;

import static com.sun.jna.platform.win32.WinReg.HKEY_CURRENT_USER;
import static com.sun.jna.platform.win32.WinReg.HKEY_LOCAL_MACHINE;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.corvane.testing.Folder;
import com.corvane.testing.Plan;
import com.corvane.testing.TestBed;
import com.corvane.testing.Windows;
import com.sun.jna.platform.win32.Advapi32Util;
import com.sun.jna.platform.win32.WinReg.HKEY;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.List;
import org.junit.jupiter.api.Tag;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.Timeout;
import org.junit.jupiter.api.extension.ExtendWith;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.EnumSource;

/**
 * The real Start menu and desktop; and shortcuts in the letters of the code page, which a parser of the format reads,
 * after these tests and outside of this system.
 */
@Tag("any-code-page")
@ExtendWith(TestBed.class)
class DesktopTest {

    private static final String CODE_PAGE = System.getProperty("sun.jnu.encoding").replaceFirst("^\\D*", "cp");

    /** In the Japanese one, the second byte of the first letter, and of the last two, is that of a backslash. */
    private static final String TEXT = CODE_PAGE.equals("cp932")
            ? "\u8868 \u65E5\u672C\u8A9E \u30BD\u80FD" : "\u00dcbersicht \u00e9 \u00f1";

    private static final String GROUP = "Corvane test";
    private static final String TOOLS = GROUP + "\\Tools";

    private final Win32DesktopServiceImpl desktop = new Win32DesktopServiceImpl();
    private final Folder folder = Folder.named("shortcuts");

    /** Beside each of them stands what it must hold. They are made on a thread that has not started COM. */
    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    @Timeout(value = 60, threadMode = Timeout.ThreadMode.SEPARATE_THREAD)
    void aParserReadsThem(Windows system) throws Exception {
        String program = folder.file(TEXT + "/" + TEXT + ".exe", "");
        String there = folder.path(TEXT);
        // Targets, arguments, working directories and icons.
        List<List<String>> rows = List.of(
                List.of(program, "-x \"" + TEXT + " b\" %PATH%", there, "C:\\" + TEXT + "\\" + TEXT + ".ico"),
                List.of(program, "", "", ""),
                List.of(there, "", there, ""),
                List.of("C:\\no " + TEXT + "\\" + TEXT + ".exe", TEXT, "", program),
                List.of(program, "x".repeat(200) + TEXT, "", ""));
        Path made = Files.createDirectories(Path.of(System.getProperty("corvane.test.shortcuts"), CODE_PAGE));
        Plan.begin(system, "");
        for (List<String> row : rows) {
            String name = TEXT + " " + system + " " + rows.indexOf(row);
            Files.deleteIfExists(made.resolve(name + ".lnk"));
            Files.writeString(made.resolve(name + ".txt"), String.join("\n", row));
            desktop.createDesktopItem(made.toString(), "", name, row.get(0), row.get(1), row.get(3), row.get(2));
        }
    }

    /** The shell's own note of where a folder is. */
    private static Path noted(HKEY root, String name) {
        return Path.of(Advapi32Util.registryGetStringValue(root,
                "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders", name));
    }

    /** On Windows 95, 98 and ME the folder of all users is the user's. */
    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void groupsComeAndGo(Windows system) throws Exception {
        system.use();
        for (String name : List.of("Programs", "Start Menu", "Desktop")) {
            String token = name.replace(" ", "") + "$";
            Path user = noted(HKEY_CURRENT_USER, name);
            comeAndGo("$User" + token, user);
            comeAndGo("$AllUsers" + token, system.isAnsi() ? user : noted(HKEY_LOCAL_MACHINE, "Common " + name));
        }
    }

    private void comeAndGo(String token, Path here) throws Exception {
        Path group = here.resolve(TOOLS);
        Path shortcut = group.resolve("app.lnk");
        desktop.createDesktopFolder(token, TOOLS + "/Inner");
        desktop.createDesktopItem(token, TOOLS, "app", "C:\\app.exe", "", "", "");
        assertTrue(Files.isDirectory(group.resolve("Inner")) && Files.isRegularFile(shortcut), token);
        desktop.removeDesktopFolder(token, TOOLS + "\\Inner");
        assertTrue(Files.exists(shortcut) && !Files.exists(group.resolve("Inner")), token);
        desktop.removeDesktopItem(token, TOOLS, "app");
        assertTrue(Files.isDirectory(here) && !Files.exists(here.resolve(GROUP)), token);
    }

    /** The last shortcut of a group takes the group with it, but none of the shell's own. */
    @Test
    void theShellsOwnFolderStays() throws Exception {
        Path startUp = Files.createDirectories(noted(HKEY_CURRENT_USER, "StartUp"));
        if (startUp.toFile().list().length > 0) {
            Windows.onlyWine("here, something in the folder, such as a desktop.ini, keeps it anyway");
        }
        String name = startUp.getFileName().toString();
        desktop.createDesktopItem("$UserPrograms$", name, GROUP, "C:\\app.exe", "", "", "");
        desktop.removeDesktopItem("$UserPrograms$", name.toUpperCase() + "\\", GROUP);
        assertTrue(Files.exists(startUp) && startUp.toFile().list().length == 0);
    }
}
