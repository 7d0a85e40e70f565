package com.corvane.wizard.platform.win32;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.corvane.testing.Hooks;
import com.corvane.testing.TestBed;
import com.corvane.testing.Windows;
import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.Comparator;
import java.util.List;
import org.junit.jupiter.api.AfterEach;
import org.junit.jupiter.api.BeforeEach;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.extension.ExtendWith;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.EnumSource;

/** Groups and shortcuts in the real Start menu and on the real desktop, of the user and of all users. */
@ExtendWith(TestBed.class)
class StartMenuTest {

    private static final int USER = 3;
    private static final int MACHINE = 4;
    private static final String GROUP = "Corvane test";
    private static final String SHELL_FOLDERS =
            "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders";

    /** A folder of the shell, by the middle of its tokens and the shell's own note of where it is. */
    private enum Kind {
        PROGRAMS("Programs", "Programs"),
        START_MENU("StartMenu", "Start Menu"),
        DESKTOP("Desktop", "Desktop");

        private final String token;
        private final String note;

        Kind(String token, String note) {
            this.token = token;
            this.note = note;
        }

        Path ofUser() throws Exception {
            return noted(USER, note);
        }

        Path ofAllUsers() throws Exception {
            return noted(MACHINE, "Common " + note);
        }
    }

    private final Win32DesktopServiceImpl desktop = new Win32DesktopServiceImpl();

    private static Path noted(int root, String note) throws Exception {
        return Path.of(new Win32RegistryServiceImpl().getStringValue(root, SHELL_FOLDERS, note, false));
    }

    @BeforeEach
    @AfterEach
    void takeAway() throws Exception {
        Hooks.disarm();
        for (Kind kind : Kind.values()) {
            deleteTree(kind.ofUser().resolve(GROUP));
            deleteTree(kind.ofAllUsers().resolve(GROUP));
        }
        Hooks.arm();
    }

    private static void deleteTree(Path top) throws IOException {
        if (Files.exists(top)) {
            try (var found = Files.walk(top)) {
                for (Path path : found.sorted(Comparator.reverseOrder()).toList()) {
                    Files.delete(path);
                }
            }
        }
    }

    private static void begin(Windows system) {
        Hooks.reset();
        system.use();
        Hooks.arm();
    }

    /** On Windows 95, 98 and ME the folder of all users is the user's. */
    @ParameterizedTest
    @EnumSource(names = {"W98", "ME", "NT4", "W10"})
    void groupsComeAndGo(Windows system) throws Exception {
        for (Kind kind : Kind.values()) {
            Path user = kind.ofUser();
            Path allUsers = kind.ofAllUsers();
            begin(system);
            comeAndGo("$User" + kind.token + "$", user, allUsers);
            comeAndGo("$AllUsers" + kind.token + "$", system.isAnsi() ? user : allUsers,
                    system.isAnsi() ? allUsers : user);
        }
    }

    private void comeAndGo(String token, Path here, Path notHere) throws Exception {
        Path tools = here.resolve(GROUP).resolve("Tools");
        Path shortcut = tools.resolve("app.lnk");
        String chain = GROUP + "\\Tools";
        desktop.createDesktopFolder(token, GROUP + "\\Tools/Inner");
        desktop.createDesktopItem(token, chain, "app", "C:\\app.exe", "", "", "");
        assertTrue(Files.isDirectory(tools.resolve("Inner")) && Files.isRegularFile(shortcut), token);
        assertFalse(Files.exists(notHere.resolve(GROUP)), token);

        // A folder stays for what is in it, be it the library's own or another's.
        desktop.removeDesktopFolder(token, GROUP + "\\Tools\\Inner");
        assertEquals(List.of("app.lnk"), names(tools));
        Path note = Files.writeString(tools.resolve("note.txt"), "n");
        desktop.removeDesktopItem(token, chain, "app");
        desktop.removeDesktopFolder(token, chain);
        assertEquals(List.of("note.txt"), names(tools));
        Files.delete(note);
        desktop.removeDesktopFolder(token, chain);
        assertFalse(Files.exists(here.resolve(GROUP)), token);
        assertTrue(Files.isDirectory(here), token);
    }

    private static List<String> names(Path folder) throws IOException {
        try (var found = Files.list(folder)) {
            return found.map(path -> path.getFileName().toString()).sorted().toList();
        }
    }

    /** The last shortcut of a group takes the group with it, but none of the shell's own since Windows XP. */
    @ParameterizedTest
    @EnumSource(names = {"ME", "W2000", "XP", "W10"})
    void theShellsOwnFolderStays(Windows system) throws Exception {
        Path startUp = Files.createDirectories(noted(USER, "StartUp"));
        assertTrue(names(startUp).isEmpty(), "something is started at every logon");
        String name = startUp.getFileName().toString();
        begin(system);
        try {
            desktop.createDesktopItem("$UserPrograms$", name, GROUP, "C:\\app.exe", "", "", "");
            desktop.removeDesktopItem("$UserPrograms$", name.toUpperCase() + "\\", GROUP);
            assertEquals(system == Windows.XP || system == Windows.W10, Files.exists(startUp));
        } finally {
            Files.deleteIfExists(startUp.resolve(GROUP + ".lnk"));
            Files.createDirectories(startUp);
        }
        assertEquals(List.of(), names(startUp));
    }

    /** The desktop is never a group, not even when nothing is on it. */
    @Test
    void aShortcutOnTheDesktop() throws Exception {
        Path desktopFolder = Kind.DESKTOP.ofUser();
        for (Windows system : List.of(Windows.W98, Windows.W10)) {
            begin(system);
            desktop.createDesktopItem("$UserDesktop$", "", GROUP, "C:\\app.exe", "", "", "");
            assertTrue(Files.isRegularFile(desktopFolder.resolve(GROUP + ".lnk")));
            desktop.removeDesktopItem("$UserDesktop$", ".", GROUP);
            assertFalse(Files.exists(desktopFolder.resolve(GROUP + ".lnk")));
            assertTrue(Files.isDirectory(desktopFolder));
        }
    }
}
