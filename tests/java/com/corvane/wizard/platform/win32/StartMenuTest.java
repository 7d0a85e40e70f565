package com.corvane.wizard.platform.win32;

import static com.sun.jna.platform.win32.WinReg.HKEY_CURRENT_USER;
import static com.sun.jna.platform.win32.WinReg.HKEY_LOCAL_MACHINE;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.corvane.testing.TestBed;
import com.corvane.testing.Windows;
import com.sun.jna.platform.win32.Advapi32Util;
import com.sun.jna.platform.win32.WinReg.HKEY;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.List;
import org.junit.jupiter.api.extension.ExtendWith;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.EnumSource;

/** The real Start menu and desktop. */
@ExtendWith(TestBed.class)
class StartMenuTest {

    private static final String GROUP = "Corvane test";
    private static final String TOOLS = GROUP + "\\Tools";

    private final Win32DesktopServiceImpl desktop = new Win32DesktopServiceImpl();

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

    /** The last shortcut of a group takes the group with it, but none of the shell's own since Windows XP. */
    @ParameterizedTest
    @EnumSource(names = {"W2000", "XP"})
    void theShellsOwnFolderStays(Windows system) throws Exception {
        Path startUp = Files.createDirectories(noted(HKEY_CURRENT_USER, "StartUp"));
        assertEquals(0, startUp.toFile().list().length, "something is started at every logon");
        String name = startUp.getFileName().toString();
        system.use();
        try {
            desktop.createDesktopItem("$UserPrograms$", name, GROUP, "C:\\app.exe", "", "", "");
            desktop.removeDesktopItem("$UserPrograms$", name.toUpperCase() + "\\", GROUP);
            assertEquals(system == Windows.XP, Files.exists(startUp));
        } finally {
            Files.deleteIfExists(startUp.resolve(GROUP + ".lnk"));
            Files.createDirectories(startUp);
        }
    }
}
