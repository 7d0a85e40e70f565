package com.corvane.wizard.platform.win32;

import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;

import com.corvane.testing.Call;
import com.corvane.testing.Folder;
import com.corvane.testing.Hooks;
import com.corvane.testing.Reboot;
import com.corvane.testing.TestBed;
import com.corvane.testing.Windows;
import java.nio.charset.Charset;
import java.nio.file.Files;
import java.util.Set;
import org.junit.jupiter.api.BeforeEach;
import org.junit.jupiter.api.Tag;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.extension.ExtendWith;

/** Files on the ANSI family, whose names have characters that end in the byte of a backslash. */
@Tag("cp932")
@ExtendWith(TestBed.class)
class JapaneseFilesTest {

    private static final String NAME = "\u8868";
    private static final String OTHER = "\u30BD\u80FD";
    private static final Charset ANSI = Charset.forName("windows-31j");

    private final Win32FileServiceImpl files = new Win32FileServiceImpl();
    private final Folder folder = Folder.named("japanese");

    @BeforeEach
    void useTheAnsiFamily() {
        Reboot.forget();
        Windows.W98.use();
    }

    @Test
    void filesAreCopiedAndDeleted() throws Exception {
        String source = folder.file(NAME, "new");
        String target = folder.file(OTHER, "old");
        assertEquals(0, files.win32CopyFile(source, target, true));
        assertEquals("new", folder.content(OTHER));
        assertEquals(0, files.win32DeleteFile(source));
        assertEquals(Set.of("", OTHER), folder.state().keySet());
    }

    @Test
    void linesForTheRebootAreInTheCodePage() throws Exception {
        String source = folder.file("source", "new");
        String target = folder.file(NAME, "old");
        Hooks.fail("CopyFileA", 1, 32);
        Hooks.fail("GetShortPathNameA", 1, 5);
        Hooks.fail("GetShortPathNameA", 2, 5);
        assertEquals(1, files.win32CopyFile(source, target, true));
        String line = target + "=" + target + ".use_on_reboot";
        assertArrayEquals(("[Rename]\n" + line + "\n").getBytes(ANSI), Files.readAllBytes(Reboot.WIN_INIT));
    }

    /** The names differ in a second byte that looks like a letter: 83 41 and 83 61. */
    @Test
    void aFolderWithAnotherNameIsNoneOfTheShells() throws Exception {
        folder.file("\u30A2/n.lnk", "");
        Windows.XP.use();
        Hooks.answer("SHGetSpecialFolderPathA", 1, 1, (folder.path("\u30C2") + "\0").getBytes(ANSI));
        new Win32DesktopServiceImpl().removeDesktopItem(folder.path(""), "\u30A2", "n");
        assertFalse(folder.has("\u30A2"));
    }

    @Test
    void treesAreDeleted() throws Exception {
        String tree = folder.folder("tree" + NAME);
        folder.file("tree" + NAME + "/" + NAME, "");
        folder.file("tree" + NAME + "/" + OTHER + "/" + OTHER, "");
        Hooks.captureText("FindFirstFileA", 0);
        assertEquals(0, files.win32DeleteDirectory(tree, false, true));
        assertEquals(tree + "\\*", Call.of("FindFirstFileA").get(0).text(0));
        assertFalse(folder.has("tree" + NAME));
    }
}
