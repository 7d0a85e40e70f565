package com.corvane.wizard.platform.win32;

import static org.junit.jupiter.api.Assertions.assertEquals;

import com.corvane.testing.Folder;
import com.corvane.testing.TestBed;
import com.corvane.testing.Windows;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.List;
import org.junit.jupiter.api.Tag;
import org.junit.jupiter.api.Timeout;
import org.junit.jupiter.api.extension.ExtendWith;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.EnumSource;

/**
 * What others make of the library's shortcuts, in the letters of the code page: the shell starts their
 * programs, and a parser of the format reads them, after these tests and outside of this system.
 */
@Tag("any-code-page")
@ExtendWith(TestBed.class)
class ShortcutTest {

    private static final String CODE_PAGE = System.getProperty("sun.jnu.encoding").replaceFirst("^\\D*", "cp");

    /** In the Japanese one, the second byte of the first letter, and of the last two, is that of a backslash. */
    private static final String TEXT = CODE_PAGE.equals("cp932")
            ? "\u8868 \u65E5\u672C\u8A9E \u30BD\u80FD" : "\u00dcbersicht \u00e9 \u00f1";

    private final Win32DesktopServiceImpl desktop = new Win32DesktopServiceImpl();
    private final Folder folder = Folder.named("shortcuts");

    /** Beside each of them stands what it must hold. */
    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
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
        system.use();
        for (List<String> row : rows) {
            String name = TEXT + " " + system + " " + rows.indexOf(row);
            Files.deleteIfExists(made.resolve(name + ".lnk"));
            Files.writeString(made.resolve(name + ".txt"), String.join("\n", row));
            desktop.createDesktopItem(made.toString(), "", name, row.get(0), row.get(1), row.get(3), row.get(2));
        }
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    @Timeout(60)
    void theyStartTheirPrograms(Windows system) throws Exception {
        Path program = Path.of(folder.folder(TEXT), TEXT + ".exe");
        Files.copy(Path.of(System.getProperty("corvane.test.recorder")), program);
        String directory = folder.folder("in " + TEXT);
        String arguments = "-x \"" + TEXT + " b\" " + TEXT;
        system.use();
        desktop.createDesktopItem(folder.path(""), TEXT, TEXT, program.toString(), arguments, "", directory);
        new ProcessBuilder("cmd.exe", "/c", "start", "", folder.path(TEXT + "\\" + TEXT + ".lnk")).start();
        Path record = Path.of(program + ".started");
        // The program can be deleted when it has come to its end.
        AfterwardsTest.await(() -> Files.exists(record) && program.toFile().delete());
        assertEquals(program + "\n\"" + program + "\" " + arguments + "\n" + directory,
                Files.readString(record, StandardCharsets.UTF_16LE));
    }
}
