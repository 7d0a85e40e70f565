package com.corvane.wizard.platform.win32;

import static com.corvane.testing.Bytes.latin1;
import static com.corvane.testing.Outcome.assertFails;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.corvane.testing.Call;
import com.corvane.testing.Folder;
import com.corvane.testing.Hooks;
import com.corvane.testing.Outcome;
import com.corvane.testing.TestBed;
import com.corvane.testing.Windows;
import java.util.List;
import org.junit.jupiter.api.extension.ExtendWith;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.EnumSource;

/** Where things go, and whether they may be put there. */
@ExtendWith(TestBed.class)
class DirectoriesTest {

    private static final int E_INVALIDARG = 0x80070057;
    private static final String DIRECTORY = "C:\\Some where";

    private final Win32FileServiceImpl files = new Win32FileServiceImpl();
    private final Folder folder = Folder.named("directories");

    private static void begin(Windows system) {
        Hooks.reset();
        system.use();
        Hooks.captureText(system.function("CreateFile"), 0);
        Hooks.answer("SetErrorMode", 5);
        Hooks.arm();
    }

    private boolean isWritable(String directory) throws Exception {
        return files.isDirectoryWritable(directory);
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void aFileIsMadeToSeeWhetherItCan(Windows system) throws Exception {
        String create = system.function("CreateFile");
        String top = folder.path("");
        folder.file("zq_test0.txt", "taken");
        begin(system);
        assertTrue(isWritable(top));
        assertEquals(List.of(top + "\\zq_test0.txt", top + "\\zq_test1.txt"),
                Call.of(create).stream().map(call -> call.text(0)).toList());
        Call call = Call.of(create).get(1);
        assertEquals(List.of(0x40000000, 0, 0, 1, 0x04000080, 0),
                List.of(1, 2, 3, 4, 5, 6).stream().map(call::number).toList());
        assertEquals(List.of("", "zq_test0.txt"), folder.names());
        assertEquals("taken", folder.content("zq_test0.txt"));
        assertEquals(List.of(0, 6, 5), Call.of("SetErrorMode").stream().map(mode -> mode.number(0)).toList());

        for (String[] ends : new String[][] {{"\\", "\\zq_test2.txt"}, {"/", "/\\zq_test2.txt"}}) {
            begin(system);
            Hooks.fail(create, 1, 80);
            Hooks.fail(create, 2, 183);
            assertTrue(isWritable(top + ends[0]));
            assertEquals(top + ends[1], Call.of(create).get(2).text(0));
        }
        begin(system);
        for (int nth = 1; nth <= 100; ++nth) {
            Hooks.fail(create, nth, nth % 2 == 0 ? 80 : 183);
        }
        assertTrue(isWritable(top));
        assertEquals(top + "\\zq_test99.txt", Call.of(create).get(99).text(0));
        assertEquals(100, Call.of(create).size());
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void directoriesThatTakeNoFiles(Windows system) throws Exception {
        String create = system.function("CreateFile");
        for (String directory : List.of(folder.path("missing"), "Q:\\", "C:\\" + "x".repeat(300))) {
            begin(system);
            assertFalse(isWritable(directory));
            assertEquals(1, Call.of(create).size());
            assertEquals(-1, Call.only("CloseHandle").word(0));
        }
        begin(system);
        Hooks.fail(create, 1, 19);
        assertFalse(isWritable(folder.path("")));
        for (String nothing : new String[] {"", null}) {
            begin(system);
            assertTrue(Outcome.of(() -> isWritable(nothing)).hasCode(E_INVALIDARG));
            assertEquals(List.of(), Call.of(create));
        }
    }

    /** Gives the directory, which is this one, in two steps; it fills its buffer, and its end is cut. */
    private static void answerDirectory(Windows system, String function, int place) {
        Hooks.answer(function, DIRECTORY.length() + 1);
        Hooks.answer(function, DIRECTORY.length(), place, system.encode(DIRECTORY + "X"));
    }

    private static void assertSizes(String function, int place) {
        assertEquals(List.of(0, DIRECTORY.length() + 1),
                Call.of(function).stream().map(call -> call.number(place)).toList());
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void directoriesOfTheSystem(Windows system) throws Exception {
        String exists = system.function("GetFileAttributes");
        String temporary = system.function("GetTempPath");
        begin(system);
        answerDirectory(system, temporary, 1);
        Hooks.answer(exists, 16);
        assertEquals(DIRECTORY, files.getTempDirectory());
        assertSizes(temporary, 0);
        begin(system);
        answerDirectory(system, temporary, 1);
        Hooks.fail(exists, 1, 3);
        assertFails(-60002, 3, files::getTempDirectory);
        begin(system);
        Hooks.fail(temporary, 1, 14);
        assertFails(-60002, 14, files::getTempDirectory);

        String windows = system.function("GetWindowsDirectory");
        begin(system);
        answerDirectory(system, windows, 0);
        assertEquals(DIRECTORY, files.win32GetWindowsDirectory());
        assertSizes(windows, 1);
        assertEquals(List.of(), Call.of(exists));
        for (int error : new int[] {14, 5, Hooks.NO_ERROR}) {
            begin(system);
            Hooks.fail(windows, 1, error);
            assertFails(-60000, Math.max(error, 0), files::win32GetWindowsDirectory);
        }

        String library = system.function("GetSystemDirectory");
        begin(system);
        answerDirectory(system, library, 0);
        Hooks.answer(exists, 16);
        assertEquals(DIRECTORY, files.getLibraryDirectory());
        assertSizes(library, 1);
        begin(system);
        answerDirectory(system, library, 0);
        Hooks.fail(exists, 1, 3);
        assertEquals("", files.getLibraryDirectory());
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void directoriesOfTheRegistry(Windows system) throws Exception {
        String open = system.function("RegOpenKeyEx");
        String query = system.function("RegQueryValueEx");
        begin(system);
        Hooks.captureText(open, 1);
        Hooks.captureText(query, 1);
        Hooks.answerValue(1, system.encode("%X%\0"));
        assertEquals("%X%", files.getStandardInstallDirectory());
        assertEquals("%X%", files.win32GetCommonDirectory());
        Call.of(open).forEach(call -> assertEquals("SOFTWARE\\Microsoft\\Windows\\CurrentVersion", call.text(1)));
        assertTrue(Call.of(open).stream().allMatch(call -> call.number(0) == 0x80000002));
        List<String> names = Call.of(query).stream().map(call -> call.text(1)).distinct().toList();
        assertEquals(List.of("ProgramFilesDir", "CommonFilesDir"), names);

        begin(system);
        Hooks.fail(open, 1, 0x80070005);
        assertFails(-60001, 5, files::getStandardInstallDirectory);
        begin(system);
        Hooks.fail(open, 1, 0x80070000);
        assertEquals("", files.getStandardInstallDirectory());
        begin(system);
        Hooks.fail(query, 1, 2);
        assertFails(-60001, 2, files::getStandardInstallDirectory);
        begin(system);
        Hooks.fail(query, 1, 2);
        assertEquals("", files.win32GetCommonDirectory());
        begin(system);
        Hooks.fail(open, 1, 0x80070005);
        assertFails(-30022, 0x80070005L, files::win32GetCommonDirectory);
        begin(system);
        Hooks.fail(open, 1, 0x80070005);
        assertFails(-30022, 0x80070005L, files::win32GetVPDDirectory);
        begin(system);
        Hooks.fail(open, 1, 0x80070005);
        assertEquals("''", Outcome.beside(files::win32GetVPDDirectory));
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void theDirectoryForTheDataOfProducts(Windows system) throws Exception {
        String common = folder.path("");
        begin(system);
        Hooks.captureText("GetTempFileNameA", 0);
        Hooks.captureText("GetTempFileNameA", 1);
        Hooks.answerValue(1, system.encode(common + "\0"));
        assertEquals(common, files.win32GetVPDDirectory());
        assertEquals(List.of(""), folder.names());
        if (system.isAnsi()) {
            assertEquals(List.of(), Call.of("GetTempFileNameA"));
            return;
        }
        Call probe = Call.only("GetTempFileNameA");
        assertEquals(List.of(common, "qvx", "0"),
                List.of(probe.text(0), probe.text(1), String.valueOf(probe.number(2))));

        for (String failing : List.of("GetTempFileNameA", "DeleteFileA")) {
            begin(system);
            Hooks.answerValue(1, system.encode(common + "\0"));
            Hooks.fail(failing, 1, 5);
            Hooks.answer("SHGetPathFromIDListA", 1, 1, latin1("C:\\Data\0"));
            assertEquals("C:\\Data", files.win32GetVPDDirectory());
            assertEquals(0x1A, Call.only("SHGetSpecialFolderLocation").number(1));
        }
        folder.clear();  // of the probe that was not deleted
        begin(system);
        Hooks.fail("GetTempFileNameA", 1, 5);
        Hooks.fail("SHGetSpecialFolderLocation", 1, 0x80004005);
        assertFails(-30023, 3, files::win32GetVPDDirectory);
        begin(system);
        Hooks.fail("GetTempFileNameA", 1, 5);
        Hooks.fail("SHGetPathFromIDListA", 1, 0);
        assertFails(-30023, 5, files::win32GetVPDDirectory);
        for (String failing : List.of("SHGetSpecialFolderLocation", "SHGetPathFromIDListA")) {
            begin(system);
            Hooks.answerValue(1, system.encode(common + "\0"));
            Hooks.fail("GetTempFileNameA", 1, 5);
            Hooks.fail(failing, 1, 0x80004005);
            assertEquals(common, Outcome.beside(files::win32GetVPDDirectory));
        }
    }
}
