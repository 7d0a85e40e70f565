package com.corvane.wizard.platform.win32;

import static com.corvane.testing.Bytes.number;
import static com.corvane.testing.Bytes.utf16;
import static com.corvane.testing.Bytes.word;
import static com.corvane.testing.Outcome.assertFails;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;

import com.corvane.testing.Bytes;
import com.corvane.testing.Call;
import com.corvane.testing.Folder;
import com.corvane.testing.Hooks;
import com.corvane.testing.Outcome;
import com.corvane.testing.TestBed;
import com.corvane.testing.Windows;
import java.nio.ByteBuffer;
import java.nio.ByteOrder;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.List;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.extension.ExtendWith;

/** Owners and groups of files: what Windows is asked, byte for byte, and what Java gets. */
@ExtendWith(TestBed.class)
class OwnerTest {

    private static final String PATH = "C:\\some path";
    private static final long SID = 0x5150;
    /** S-1-5-32-544. */
    private static final byte[] ADMINISTRATORS = Bytes.of(1, 2, 0, 0, 0, 0, 0, 5, 32, 0, 0, 0, 32, 2, 0, 0);

    private final Win32FileServiceImpl files = new Win32FileServiceImpl();

    private static void begin() {
        Hooks.reset();
        Windows.W10.use();
        Hooks.captureText("GetProcAddress", 1);
        Hooks.arm();
    }

    private static List<String> lookedUp() {
        return Call.of("GetProcAddress").stream().map(call -> call.text(1)).toList();
    }

    private static void answerDescriptor(boolean owner) {
        Hooks.answer("GetNamedSecurityInfoW", 0, new int[] {owner ? 3 : 4, 7}, word(SID), word(0x6160));
        Hooks.answer("LocalFree", 0);
    }

    private static void answerSizes() {
        Hooks.refuse("LookupAccountSidW", 122, new int[] {3, 5}, number(15), number(8));
    }

    @Test
    void theNameIsReadWithoutItsDomain() throws Exception {
        for (boolean owner : new boolean[] {true, false}) {
            begin();
            Hooks.captureText("GetNamedSecurityInfoW", 0);
            Hooks.capture("LookupAccountSidW", 3, 4);
            Hooks.capture("LookupAccountSidW", 5, 4);
            answerDescriptor(owner);
            answerSizes();
            Hooks.answer("LookupAccountSidW", 1, new int[] {2, 4}, utf16("Administrators\0"), utf16("BUILTIN\0"));
            assertEquals("Administrators", owner ? files.getFileOwner(PATH) : files.getFileOwnerGroup(PATH));
            assertEquals(List.of("GetNamedSecurityInfoW", "LookupAccountSidW"), lookedUp());
            Call read = Call.only("GetNamedSecurityInfoW");
            assertEquals(PATH, read.text(0));
            assertEquals(List.of(1, owner ? 1 : 2), List.of(read.number(1), read.number(2)));
            assertEquals(List.of(!owner, owner, true, true),
                    List.of(3, 4, 5, 6).stream().map(at -> read.word(at) == 0).toList());
            List<Call> named = Call.of("LookupAccountSidW");
            named.forEach(call -> assertEquals(List.of(0L, SID), List.of(call.word(0), call.word(1))));
            assertEquals(List.of(0, 0, 15, 8), named.stream()
                    .flatMap(call -> List.of(call.numberAt(3), call.numberAt(5)).stream()).toList());
            assertEquals(0x6160, Call.only("LocalFree").word(0));
        }
    }

    @Test
    void failuresOfReading() throws Exception {
        begin();
        Hooks.fail("GetNamedSecurityInfoW", 1, 1789);
        assertEquals("", files.getFileOwnerGroup(PATH));
        begin();
        Hooks.fail("GetNamedSecurityInfoW", 1, 1789);
        assertFails(-30012, 1789, () -> files.getFileOwner(PATH));
        begin();
        Hooks.fail("GetNamedSecurityInfoW", 1, 3);
        assertFails(-30008, 3, () -> files.getFileOwnerGroup(PATH));
        begin();
        answerDescriptor(true);
        answerSizes();
        Hooks.refuse("LookupAccountSidW", 1332, new int[0]);
        assertFails(-30012, 1332, () -> files.getFileOwner(PATH));
        for (String function : List.of("GetNamedSecurityInfoW", "LookupAccountSidW")) {
            begin();
            Hooks.hide(function);
            assertFails(-30008, 127, () -> files.getFileOwnerGroup(PATH));
            assertEquals(List.of(), Call.of("GetNamedSecurityInfoW"));
        }
    }

    /** A descriptor that holds nothing but the owner, or the group. */
    private static void assertDescriptor(Call set, boolean owner) {
        ByteBuffer descriptor = ByteBuffer.wrap(set.bytes(2)).order(ByteOrder.LITTLE_ENDIAN);
        long sid = Call.of("LookupAccountNameW").get(1).word(2);
        assertEquals(1, descriptor.get(0));
        assertEquals(0, descriptor.getShort(2));
        assertEquals(List.of(owner ? sid : 0, owner ? 0 : sid, 0L, 0L),
                List.of(8, 16, 24, 32).stream().map(descriptor::getLong).toList());
    }

    @Test
    void anAccountIsSet() throws Exception {
        for (boolean owner : new boolean[] {true, false}) {
            begin();
            Hooks.captureText("LookupAccountNameW", 1);
            Hooks.captureText("SetFileSecurityW", 0);
            Hooks.capture("SetFileSecurityW", 2, 40);
            Hooks.refuse("LookupAccountNameW", 122, new int[] {3, 5}, number(16), number(4));
            Hooks.answer("LookupAccountNameW", 1, 2, ADMINISTRATORS);
            Hooks.answer("SetFileSecurityW", 1);
            if (owner) {
                files.setFileOwner(PATH, "DOM\\\u00fcser");
            } else {
                files.setFileOwnerGroup(PATH, "DOM\\\u00fcser");
            }
            Call.of("LookupAccountNameW").forEach(call -> assertEquals("DOM\\\u00fcser", call.text(1)));
            Call set = Call.only("SetFileSecurityW");
            assertEquals(PATH, set.text(0));
            assertEquals(owner ? 1 : 2, set.number(1));
            assertDescriptor(set, owner);
            assertEquals(List.of(), Call.of("SetNamedSecurityInfoW"));
            // The three privileges are enabled before.
            assertEquals(3, Call.all().stream().map(Call::name).takeWhile(name -> !name.equals("SetFileSecurityW"))
                    .filter("AdjustTokenPrivileges"::equals).count());
        }
    }

    @Test
    void failuresOfWriting() {
        List<String> functions = List.of("LookupAccountNameW", "SetNamedSecurityInfoW", "SetFileSecurityW");
        for (String function : functions) {
            begin();
            Hooks.hide(function);
            assertFails(-30013, 127, () -> files.setFileOwner(PATH, "Administrators"));
            assertEquals(List.of(), Call.of("LookupAccountNameW"));
            assertEquals(functions.subList(0, functions.indexOf(function) + 1), lookedUp());
        }
        for (String step : List.of("InitializeSecurityDescriptor", "SetSecurityDescriptorOwner",
                "IsValidSecurityDescriptor")) {
            begin();
            Hooks.fail(step, 1, 1338);
            assertFails(-30013, 1338, () -> files.setFileOwner(PATH, "Administrators"));
            assertEquals(List.of(), Call.of("SetFileSecurityW"));
        }
        begin();
        Hooks.refuse("LookupAccountNameW", 1332, new int[0]);
        Hooks.refuse("LookupAccountNameW", 1332, new int[0]);
        assertFails(-30013, 1332, () -> files.setFileOwner(PATH, "nobody at all"));
        assertEquals(List.of(), Call.of("LookupPrivilegeValueA"));
        begin();
        Hooks.fail("SetFileSecurityW", 1, 1307);
        assertFails(-30009, 1307, () -> files.setFileOwnerGroup(PATH, "Administrators"));
        // A privilege that is missing is no reason to fail.
        begin();
        Hooks.answer("SetFileSecurityW", 1);
        Hooks.hide("AdjustTokenPrivileges");
        assertFalse(Outcome.ofVoid(() -> files.setFileOwner(PATH, "Administrators")).isException());
    }

    @Test
    void windows9xHasNoOwners() throws Exception {
        Windows.W98.use();
        assertEquals("", files.getFileOwner(PATH));
        assertEquals("", files.getFileOwnerGroup(PATH));
        files.setFileOwner(PATH, "anybody");
        files.setFileOwnerGroup(PATH, null);
        assertEquals(List.of(), Call.of("GetProcAddress"));
    }

    @Test
    void aRealFileHasAnOwner() throws Exception {
        Windows.W10.use();
        Folder folder = Folder.named("owner");
        String file = folder.file("file", "f");
        String owner = Files.getOwner(Path.of(file)).getName();
        assertEquals(owner.substring(owner.lastIndexOf('\\') + 1), files.getFileOwner(file));
    }
}
