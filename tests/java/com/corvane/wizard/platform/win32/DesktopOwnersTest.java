package com.corvane.wizard.platform.win32;

import static com.corvane.testing.Outcome.assertFails;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.corvane.testing.Call;
import com.corvane.testing.Hooks;
import com.corvane.testing.Outcome;
import com.corvane.testing.TestBed;
import com.corvane.testing.Windows;
import com.corvane.util.FileAttributes;
import com.corvane.wizard.service.ServiceException;
import java.util.List;
import org.junit.jupiter.api.BeforeEach;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.extension.ExtendWith;

/** The natives for owners, groups and attributes of shortcuts and program groups, each as one line. */
@ExtendWith(TestBed.class)
class DesktopOwnersTest {

    private static final int OWNER = 1;
    private static final int GROUP = 2;
    private static final String ADMINISTRATORS = "Administrators";

    /** Something that is called with a folder. */
    private interface Native {
        void call(String folder) throws Exception;
    }

    /** What a native hands which path to; {@code which}: the owner or the group, for attributes 0. */
    private record Row(int code, boolean item, String function, int which, Native call) {}

    private final Win32DesktopServiceImpl desktop = new Win32DesktopServiceImpl();
    private final FileAttributes none = new FileAttributes();
    private final String read = "GetNamedSecurityInfoW";
    private final String write = "SetFileSecurityW";
    private final String get = "GetFileAttributesW";
    private final String set = "SetFileAttributesW";

    private final List<Row> rows = List.of(
            new Row(-80010, true, read, GROUP, in -> desktop.getDesktopItemOwnerGroup(in, "sub", "app")),
            new Row(-80011, true, write, GROUP,
                    in -> desktop.setDesktopItemOwnerGroup(in, "sub", "app", ADMINISTRATORS)),
            new Row(-80012, true, read, OWNER, in -> desktop.getDesktopItemOwner(in, "sub", "app")),
            new Row(-80013, true, write, OWNER,
                    in -> desktop.setDesktopItemOwner(in, "sub", "app", ADMINISTRATORS)),
            new Row(-80014, false, read, GROUP, in -> desktop.getDesktopFolderOwnerGroup(in, "sub")),
            new Row(-80015, false, write, GROUP,
                    in -> desktop.setDesktopFolderOwnerGroup(in, "sub", ADMINISTRATORS)),
            new Row(-80016, false, read, OWNER, in -> desktop.getDesktopFolderOwner(in, "sub")),
            new Row(-80017, false, write, OWNER, in -> desktop.setDesktopFolderOwner(in, "sub", ADMINISTRATORS)),
            new Row(-80018, true, get, 0, in -> desktop.getDesktopItemAttributes(in, "sub", "app")),
            new Row(-80019, true, set, 0, in -> desktop.setDesktopItemAttributes(in, "sub", "app", none)),
            new Row(-80020, false, get, 0, in -> desktop.getDesktopFolderAttributes(in, "sub")),
            new Row(-80021, false, set, 0, in -> desktop.setDesktopFolderAttributes(in, "sub", none)));

    @BeforeEach
    void allAttributes() {
        none.setAttributeState(FileAttributes.HIDDEN, true);
    }

    private void begin(Windows system) {
        Hooks.reset();
        system.use();
        for (String function : List.of(read, write, get, set, "GetFileAttributesA", "SetFileAttributesA")) {
            Hooks.captureText(function, 0);
        }
        Hooks.arm();
    }

    private static void assertPath(Row row, String function, String item, String folder) {
        Call call = Call.only(function);
        assertEquals(row.item ? item : folder, call.text(0));
        if (row.which != 0) {
            assertEquals(row.which, call.number(row.function.startsWith("Get") ? 2 : 1));
        }
    }

    /** Also error 1789, which is no failure for the group of a file. */
    @Test
    void eachHasItsPathAndItsCode() {
        for (Row row : rows) {
            begin(Windows.W10);
            Hooks.fail(row.function, 1, 1789);
            assertFails(row.code, 1789, () -> row.call.call("C:\\dir\\"));
            assertPath(row, row.function, "C:\\dir\\sub\\app.lnk", "C:\\dir\\sub");
        }
    }

    /** A folder that cannot be told is not reported; what its missing path leads to is. */
    @Test
    void aTokenThatFails() {
        for (Row row : rows) {
            begin(Windows.W10);
            Hooks.fail("SHGetSpecialFolderLocation", 1, 0x80004005);
            Hooks.fail(row.function, 1, 3);
            assertFails(row.code, 3, () -> row.call.call("$UserDesktop$"));
            assertPath(row, row.function, "app.lnk", "");
        }
    }

    @Test
    void windows9xHasAttributesOnly() {
        for (Row row : rows) {
            begin(Windows.W98);
            String ansi = row.function.replaceFirst("W$", "A");
            if (row.which == 0) {
                Hooks.fail(ansi, 1, 3);
                assertFails(row.code, 3, () -> row.call.call("C:\\dir"));
                assertPath(row, ansi, "C:\\dir\\sub\\app.lnk", "C:\\dir\\sub");
            } else {
                Outcome outcome = Outcome.ofVoid(() -> row.call.call("C:\\dir"));
                assertTrue(outcome.hasCode(ServiceException.OPERATION_NOT_SUPPORTED), outcome.toString());
                assertEquals(List.of(), Call.of("GetProcAddress"));
            }
        }
    }

    @Test
    void aFolderIsHidden() throws Exception {
        begin(Windows.W10);
        Hooks.answer(set, 1);
        desktop.setDesktopFolderAttributes("C:\\dir", "sub", none);
        assertEquals(3, Call.only(set).number(1));
    }
}
