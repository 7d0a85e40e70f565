package com.corvane.wizard.platform.win32;

import static com.corvane.testing.Bytes.number;
import static com.corvane.testing.Bytes.utf16;
import static com.corvane.testing.Bytes.word;
import static com.corvane.testing.Outcome.assertFails;
import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.corvane.testing.Bytes;
import com.corvane.testing.Call;
import com.corvane.testing.Folder;
import com.corvane.testing.Hooks;
import com.corvane.testing.Outcome;
import com.corvane.testing.TestBed;
import com.corvane.testing.Windows;
import java.nio.ByteBuffer;
import java.nio.ByteOrder;
import java.util.List;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.extension.ExtendWith;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.EnumSource;

/** Who is an administrator, and which privileges are enabled. */
@ExtendWith(TestBed.class)
class SecurityTest {

    private static final int CODE = -110000;
    private static final long TOKEN = 0x7008;
    private static final int DENY_ONLY = 0x10;
    private static final List<String> FUNCTIONS = List.of("OpenProcessToken", "OpenThreadToken",
            "GetTokenInformation", "AllocateAndInitializeSid", "EqualSid", "FreeSid");

    private final Win32SecurityServiceImpl security = new Win32SecurityServiceImpl();

    private static void begin(Windows system) {
        Hooks.reset();
        system.use();
        Hooks.captureText("GetProcAddress", 1);
        Hooks.arm();
    }

    /** The groups of a token; the SID of each is only a number. */
    private static byte[] groups(long... sids) {
        ByteBuffer groups = ByteBuffer.allocate(8 + 16 * sids.length).order(ByteOrder.LITTLE_ENDIAN);
        groups.putInt(sids.length).putInt(0);
        for (long sid : sids) {
            groups.putLong(sid).putInt(DENY_ONLY).putInt(0);
        }
        return groups.array();
    }

    /** The token has these groups. */
    private static void answerGroups(long... sids) {
        byte[] groups = groups(sids);
        Hooks.refuse("GetTokenInformation", 122, new int[] {4}, number(groups.length));
        Hooks.answer("GetTokenInformation", 1, 2, groups);
    }

    private static List<String> lookedUp() {
        return Call.of("GetProcAddress").stream().map(call -> call.text(1)).toList();
    }

    @ParameterizedTest
    @EnumSource(names = {"NT4", "W10"})
    void aThreadThatImpersonatesIsJudgedByItsOwnToken(Windows system) throws Exception {
        begin(system);
        Hooks.answer("OpenThreadToken", 1, 3, word(TOKEN));
        Hooks.capture("AllocateAndInitializeSid", 0, 6);
        answerGroups(0x11, 0x22, 0x33);
        Hooks.answer("EqualSid", 0);
        Hooks.answer("EqualSid", 1);
        assertTrue(security.isCurrentUserAdmin());

        assertEquals(FUNCTIONS, lookedUp());
        Call open = Call.only("OpenThreadToken");
        assertEquals(List.of(-2L, 8L, 0L), List.of(open.word(0), (long) open.number(1), (long) open.number(2)));
        assertEquals(List.of(), Call.of("OpenProcessToken"));
        List<Call> asked = Call.of("GetTokenInformation");
        assertEquals(2, asked.size());
        assertEquals(List.of(0, 56), asked.stream().map(call -> call.number(3)).toList());
        asked.forEach(call -> assertEquals(List.of(TOKEN, 2L), List.of(call.word(0), (long) call.number(1))));
        assertEquals(0, asked.get(0).word(2));
        Call sid = Call.only("AllocateAndInitializeSid");
        assertArrayEquals(Bytes.of(0, 0, 0, 0, 0, 5), sid.bytes(0));
        assertEquals(2, sid.number(1) & 0xFF);
        assertEquals(List.of(32, 544, 0, 0, 0, 0, 0, 0),
                List.of(2, 3, 4, 5, 6, 7, 8, 9).stream().map(sid::number).toList());
        List<Call> compared = Call.of("EqualSid");
        assertEquals(List.of(0x11L, 0x22L), compared.stream().map(call -> call.word(0)).toList());
        compared.forEach(call -> assertEquals(Call.only("FreeSid").word(0), call.word(1)));
        assertEquals(1, Hooks.leftOpen());
        assertEquals(List.of(), Call.of("CloseHandle"));
    }

    @Test
    void otherwiseTheProcessIsJudged() throws Exception {
        begin(Windows.XP);
        Hooks.refuse("OpenThreadToken", 1008, new int[0]);
        Hooks.answer("OpenProcessToken", 1, 2, word(TOKEN));
        answerGroups(0x11);
        Hooks.answer("EqualSid", 0);
        assertFalse(security.isCurrentUserAdmin());
        assertEquals(List.of(-1L, 8L),
                List.of(Call.only("OpenProcessToken").word(0), (long) Call.only("OpenProcessToken").number(1)));

        begin(Windows.XP);
        answerGroups();
        assertFalse(security.isCurrentUserAdmin());
        assertEquals(List.of(), Call.of("EqualSid"));

        begin(Windows.XP);
        assertTrue(security.isCurrentUserAdmin(), "of the tests' own user");
    }

    @Test
    void whatKeepsFromAnAnswerIsRaised() {
        begin(Windows.W10);
        Hooks.refuse("OpenThreadToken", 5, new int[0]);
        assertFails(CODE, 5, security::isCurrentUserAdmin);
        assertEquals(List.of(), Call.of("OpenProcessToken"));

        begin(Windows.W10);
        Hooks.refuse("OpenProcessToken", 6, new int[0]);
        assertFails(CODE, 6, security::isCurrentUserAdmin);
        assertEquals(List.of(), Call.of("GetTokenInformation"));

        // That the size is refused is no error; that it is given without a buffer may be one.
        begin(Windows.W10);
        Hooks.refuse("GetTokenInformation", 5, new int[] {4}, number(24));
        Hooks.refuse("GetTokenInformation", 31, new int[0]);
        assertFails(CODE, 31, security::isCurrentUserAdmin);
        begin(Windows.W10);
        Hooks.answer("GetTokenInformation", 1, 87, new int[] {4}, new byte[][] {number(24)});
        assertFails(CODE, 87, security::isCurrentUserAdmin);
        assertEquals(1, Call.of("GetTokenInformation").size());
        begin(Windows.W10);
        Hooks.answer("GetTokenInformation", 1, 122, new int[] {4}, new byte[][] {number(24)});
        Hooks.answer("GetTokenInformation", 1, 2, groups(0x11));
        Hooks.answer("EqualSid", 1);
        assertEquals("true", Outcome.of(security::isCurrentUserAdmin).value());

        begin(Windows.W10);
        Hooks.fail("AllocateAndInitializeSid", 1, 14);
        assertFails(CODE, 14, security::isCurrentUserAdmin);
        assertEquals(List.of(), Call.of("FreeSid"));
        begin(Windows.W10);
        Hooks.fail("GetTokenInformation", 2, 31);
        Hooks.fail("AllocateAndInitializeSid", 1, 14);
        assertFails(CODE, 14, security::isCurrentUserAdmin);
        for (String function : FUNCTIONS) {
            begin(Windows.W10);
            Hooks.hide(function);
            assertFails(CODE, 127, security::isCurrentUserAdmin);
            assertEquals(FUNCTIONS.subList(0, FUNCTIONS.indexOf(function) + 1), lookedUp());
        }
    }

    /** From nowhere but the system's own directory. */
    @Test
    void theirModuleIsLoadedWhereItIsMissing() throws Exception {
        begin(Windows.W10);
        Hooks.captureText("LoadLibraryW", 0);
        Hooks.fail("GetModuleHandleW", 1, 126);
        Hooks.answer("GetSystemDirectoryW", 6, 0, utf16("Q:\\sys\0"));
        assertFails(CODE, 126, security::isCurrentUserAdmin);
        assertEquals("Q:\\sys\\advapi32.dll", Call.only("LoadLibraryW").text(0));

        begin(Windows.W10);
        Hooks.fail("GetModuleHandleW", 1, 126);
        Hooks.fail("GetSystemDirectoryW", 1, 5);
        assertFails(CODE, 5, security::isCurrentUserAdmin);
        assertEquals(List.of(), Call.of("LoadLibraryW"));
    }

    @Test
    void onWindows9xEverybodyIs() throws Exception {
        begin(Windows.ME);
        assertTrue(security.isCurrentUserAdmin());
        assertEquals(List.of(), lookedUp());
        assertEquals(List.of(), Call.of("GetModuleHandleW"));
    }

    /** Its users are asked for; their privileges are not. */
    @Test
    void aWindowsThatDoesNotTellWhatItIs() throws Exception {
        begin(Windows.W10);
        Windows.useUnknown();
        answerGroups();
        assertFalse(security.isCurrentUserAdmin());
        begin(Windows.W10);
        Windows.useUnknown();
        Hooks.answer("SetFileSecurityW", 1);
        new Win32FileServiceImpl().setFileOwner("C:\\", "Administrators");
        assertEquals(List.of("LookupAccountNameW", "SetNamedSecurityInfoW", "SetFileSecurityW"), lookedUp());
        assertEquals(List.of(), Call.of("GetModuleHandleW"));
    }

    @Test
    void privilegesThatTheUserDoesNotHold() throws Exception {
        String file = Folder.named("security").file("file", "f");
        begin(Windows.W10);
        Hooks.captureText("LookupPrivilegeValueA", 1);
        Hooks.capture("AdjustTokenPrivileges", 2, 16);
        Hooks.answer("SetFileSecurityW", 1);
        for (int luid = 1; luid <= 3; ++luid) {
            Hooks.answer("OpenProcessToken", 1, 2, word(TOKEN + 4 * luid));
            Hooks.answer("LookupPrivilegeValueA", 1, 2, word(luid));
            Hooks.answer("AdjustTokenPrivileges", 1, 1300, new int[0], new byte[0][]);
        }
        new Win32FileServiceImpl().setFileOwner(file, "Administrators");
        assertEquals(List.of("SeTakeOwnershipPrivilege", "SeRestorePrivilege", "SeBackupPrivilege"),
                Call.of("LookupPrivilegeValueA").stream().map(call -> call.text(1)).toList());
        Call.of("OpenProcessToken").forEach(call -> assertEquals(0x28, call.number(1)));
        List<Call> adjusted = Call.of("AdjustTokenPrivileges");
        for (int index = 0; index < 3; ++index) {
            Call call = adjusted.get(index);
            assertEquals(TOKEN + 4 * (index + 1), call.word(0));
            assertArrayEquals(privileges(index + 1, 2), call.bytes(2));
            assertEquals(List.of(0, 16, 0, 0), List.of(1, 3, 4, 5).stream().map(call::number).toList());
        }
        assertEquals(3, adjusted.size(), "what is not held is not disabled either");
        assertEquals(3, Hooks.leftOpen());
    }

    private static byte[] privileges(long luid, int attributes) {
        return ByteBuffer.allocate(16).order(ByteOrder.LITTLE_ENDIAN)
                .putInt(1).putLong(luid).putInt(attributes).array();
    }

    /** The end of each asks to disable it through no token, the last one first. */
    @Test
    void theRequestToGiveBackHasNoToken() throws Exception {
        String file = Folder.named("security").file("file", "f");
        begin(Windows.W10);
        Hooks.capture("AdjustTokenPrivileges", 2, 16);
        Hooks.answer("SetFileSecurityW", 1);
        new Win32FileServiceImpl().setFileOwner(file, "Administrators");
        List<Call> adjusted = Call.of("AdjustTokenPrivileges");
        assertEquals(6, adjusted.size());
        for (int index = 0; index < 3; ++index) {
            byte[] enabled = adjusted.get(index).bytes(2);
            enabled[12] = 0;
            assertArrayEquals(enabled, adjusted.get(5 - index).bytes(2));
            assertEquals(0, adjusted.get(5 - index).word(0));
        }
    }
}
