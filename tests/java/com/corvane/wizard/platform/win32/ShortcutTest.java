package com.corvane.wizard.platform.win32;

import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;

import com.corvane.testing.Folder;
import com.corvane.testing.Launch;
import com.corvane.testing.Shortcut;
import com.corvane.testing.ShortcutsToRead;
import com.corvane.testing.TestBed;
import com.corvane.testing.Windows;
import java.util.List;
import org.junit.jupiter.api.Tag;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.extension.ExtendWith;

/**
 * What others make of the library's shortcuts: the shell reads them and starts their programs, and they
 * stay for a parser of the format, which reads them after these tests. All in the letters of the code
 * page.
 */
@ExtendWith(TestBed.class)
class ShortcutTest {

    private static final String WESTERN = "\u00dcbersicht \u00e9 \u00f1";
    /** The second byte of the first character, and of the last two, is that of a backslash. */
    private static final String JAPANESE = "\u8868 \u65E5\u672C\u8A9E \u30BD\u80FD";

    private final Win32DesktopServiceImpl desktop = new Win32DesktopServiceImpl();
    private final Folder folder = Folder.named("shortcuts");

    @Test
    void othersReadThem() throws Exception {
        make(Windows.W98, WESTERN);
        make(Windows.W10, WESTERN);
    }

    @Test
    @Tag("cp932")
    void othersReadThemInJapanese() throws Exception {
        make(Windows.W98, JAPANESE);
        make(Windows.W10, JAPANESE);
    }

    /** Fields are the target, the arguments, the working directory and the icon. */
    private void make(Windows system, String text) throws Exception {
        String program = folder.file(text + "/" + text + ".exe", "");
        String there = folder.path(text);
        List<List<String>> rows = List.of(
                List.of(program, "-x \"" + text + " b\" %PATH%", there, "C:\\" + text + "\\" + text + ".ico"),
                List.of(program, "", "", ""),
                List.of(there, "", there, ""),
                List.of("C:\\no " + text + "\\" + text + ".exe", text, "", program),
                List.of(program, "x".repeat(200) + text, "", ""));
        system.use();
        ShortcutsToRead made = new ShortcutsToRead();
        for (List<String> row : rows) {
            String name = text + " " + system + " " + rows.indexOf(row);
            String shortcut = made.expect(name, row);
            desktop.createDesktopItem(made.path(), "", name, row.get(0), row.get(1), row.get(3), row.get(2));
            assertArrayEquals(row.toArray(), Shortcut.read(shortcut));
        }
    }

    @Test
    void theyStartTheirPrograms() throws Exception {
        start(Windows.W98, WESTERN);
        start(Windows.W10, WESTERN);
    }

    @Test
    @Tag("cp932")
    void theyStartTheirProgramsInJapanese() throws Exception {
        start(Windows.W98, JAPANESE);
        start(Windows.W10, JAPANESE);
    }

    private void start(Windows system, String text) throws Exception {
        folder.clear();
        String program = Launch.place(folder.path(text + "\\" + text + ".exe"));
        String directory = folder.folder("in " + text);
        String arguments = "-x \"" + text + " b\" " + text;
        system.use();
        desktop.createDesktopItem(folder.path(""), text, text, program, arguments, "", directory);
        Launch launch = Launch.ofOpening(folder.path(text + "\\" + text + ".lnk"), program);
        assertEquals(new Launch(program, "\"" + program + "\" " + arguments, directory), launch);
    }
}
