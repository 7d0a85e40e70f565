package com.corvane.wizard.platform.win32;

import static com.corvane.testing.Outcome.assertFails;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertNull;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.corvane.testing.Call;
import com.corvane.testing.Folder;
import com.corvane.testing.Hooks;
import com.corvane.testing.Outcome;
import com.corvane.testing.TestBed;
import com.corvane.testing.Windows;
import com.corvane.util.FileAttributes;
import java.lang.reflect.Field;
import java.util.ArrayList;
import java.util.List;
import java.util.TreeMap;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.extension.ExtendWith;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.EnumSource;

/** Windows' attribute mask and Java's object for it. */
@ExtendWith(TestBed.class)
class FileAttributesTest {

    /** What fails without a reason is not reported. */
    @Test
    void aFailureWithoutAReasonIsNone() throws Exception {
        Windows.W10.use();
        Hooks.fail("SetFileAttributesW", 1, Hooks.NO_ERROR);
        Hooks.fail("GetFileAttributesW", 1, Hooks.NO_ERROR);
        Hooks.fail("GetProcAddress", 1, Hooks.NO_ERROR);
        assertNull(files.getFileAttributes("X:\\no\\file"));
        files.setFileAttributes("X:\\no\\file", new FileAttributes());
        assertEquals("", files.getFileOwner("X:\\no\\file"));
    }

    private static final long E_FAIL = 0x80004005L;
    private static final long E_INVALIDARG = 0x80070057L;
    private static final String READABLE = "OWNER_READABLE GROUP_READABLE WORLD_READABLE";
    private static final String WRITEABLE = " OWNER_WRITEABLE GROUP_WRITEABLE WORLD_WRITEABLE";
    private static final String EXECUTABLE = " OWNER_EXECUTABLE GROUP_EXECUTABLE WORLD_EXECUTABLE";

    private final Win32FileServiceImpl files = new Win32FileServiceImpl();
    private final Folder folder = Folder.named("attributes");

    /** An object that tells what it was asked. */
    public static class Recording extends FileAttributes {
        final List<String> asked = new ArrayList<>();

        Recording(String states) throws ReflectiveOperationException {
            for (String state : states.isEmpty() ? new String[0] : states.split(" ")) {
                setAttributeState(FileAttributes.class.getField(state).getInt(null), true);
            }
        }

        @Override
        public boolean getAttributeState(int attribute) {
            asked.add(name(attribute));
            return super.getAttributeState(attribute);
        }
    }

    private static String name(int attribute) {
        return constants().get(attribute);
    }

    private static TreeMap<Integer, String> constants() {
        TreeMap<Integer, String> constants = new TreeMap<>();
        try {
            for (Field field : FileAttributes.class.getFields()) {
                constants.put(field.getInt(null), field.getName());
            }
        } catch (IllegalAccessException failure) {
            throw new AssertionError(failure);
        }
        return constants;
    }

    private void begin(Windows system) {
        Hooks.reset();
        system.use();
        Hooks.arm();
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void aMaskBecomesAnObject(Windows system) throws Exception {
        Object[][] masks = {
            {0x80, READABLE + WRITEABLE},
            {0x20, READABLE + WRITEABLE + " ARCHIVE"},
            {0x01, READABLE},
            {0x11, READABLE + EXECUTABLE},
            {0x10, READABLE + WRITEABLE + EXECUTABLE},
            {0x02, READABLE + WRITEABLE + " HIDDEN"},
            {0x04, READABLE + WRITEABLE + " SYSTEM"},
            {0x37, READABLE + EXECUTABLE + " HIDDEN ARCHIVE SYSTEM"},
            {0x7FFFFFC8, READABLE + WRITEABLE},
        };
        for (Object[] mask : masks) {
            begin(system);
            Hooks.captureText(system.function("GetFileAttributes"), 0);
            Hooks.captureText("GetStaticFieldID", 2);
            Hooks.answer(system.function("GetFileAttributes"), (int) mask[0]);
            FileAttributes attributes = files.getFileAttributes("C:\\some path");
            List<String> set = Call.of("GetStaticFieldID").stream().map(call -> call.text(2)).toList();
            assertEquals(mask[1], String.join(" ", set), "the order of the calls");
            constants().forEach((constant, name) ->
                    assertEquals(set.contains(name), attributes.getAttributeState(constant), name));
            assertEquals("C:\\some path", Call.only(system.function("GetFileAttributes")).text(0));
            assertTrue(Hooks.peakLocalReferences() <= 3);
        }
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void anObjectBecomesAMask(Windows system) throws Exception {
        String rest = " HIDDEN ARCHIVE SYSTEM";
        Object[][] objects = {
            {"", 0x1, "OWNER_WRITEABLE GROUP_WRITEABLE WORLD_WRITEABLE" + rest},
            {READABLE + EXECUTABLE, 0x1, "OWNER_WRITEABLE GROUP_WRITEABLE WORLD_WRITEABLE" + rest},
            {"OWNER_WRITEABLE", 0, "OWNER_WRITEABLE" + rest},
            {"GROUP_WRITEABLE", 0, "OWNER_WRITEABLE GROUP_WRITEABLE" + rest},
            {"WORLD_WRITEABLE", 0, "OWNER_WRITEABLE GROUP_WRITEABLE WORLD_WRITEABLE" + rest},
            {"OWNER_WRITEABLE HIDDEN", 0x2, "OWNER_WRITEABLE" + rest},
            {"OWNER_WRITEABLE ARCHIVE", 0x20, "OWNER_WRITEABLE" + rest},
            {"OWNER_WRITEABLE SYSTEM", 0x4, "OWNER_WRITEABLE" + rest},
            {"HIDDEN ARCHIVE SYSTEM", 0x27, "OWNER_WRITEABLE GROUP_WRITEABLE WORLD_WRITEABLE" + rest},
        };
        for (Object[] object : objects) {
            Recording attributes = new Recording((String) object[0]);
            begin(system);
            Hooks.captureText(system.function("SetFileAttributes"), 0);
            Hooks.answer(system.function("SetFileAttributes"), 1);
            files.setFileAttributes("C:\\some path", attributes);
            Call set = Call.only(system.function("SetFileAttributes"));
            assertEquals("C:\\some path", set.text(0));
            assertEquals((int) object[1], set.number(1));
            assertEquals(object[2], String.join(" ", attributes.asked));
        }
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void pathsThatAreRefused(Windows system) throws Exception {
        system.use();
        Recording attributes = new Recording("");
        assertFails(-30001, E_INVALIDARG, () -> files.setFileAttributes(".", attributes));
        assertEquals(List.of(), attributes.asked);
        assertEquals(List.of(), Call.of(system.function("SetFileAttributes")));
        assertTrue(files.getFileAttributes(".").getAttributeState(FileAttributes.OWNER_EXECUTABLE));
        assertFails(-30001, 87, () -> files.setFileAttributes(folder.path(""), null));
        String missing = folder.path("missing");
        assertFails(-30000, 2, () -> files.getFileAttributes(missing));
        assertFails(-30001, 2, () -> files.setFileAttributes(missing, new FileAttributes()));
        assertFails(-30000, 3, () -> files.getFileAttributes(folder.path("missing\\file")));
        assertTrue(Outcome.of(() -> files.getFileAttributes(null)).hasCode(-30000));
        assertTrue(Outcome.ofVoid(() -> files.setFileAttributes(null, new FileAttributes())).hasCode(-30001));
        for (String path : new String[] {"..", "", "./", ".\0x"}) {
            begin(system);
            Outcome.ofVoid(() -> files.setFileAttributes(path, new Recording("")));
            // Only what Windows sees counts, which ends at the NUL.
            int calls = path.startsWith(".\0") ? 0 : 1;
            assertEquals(calls, Call.of(system.function("SetFileAttributes")).size(), path);
        }
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void filesReallyGetThem(Windows system) throws Exception {
        system.use();
        String file = folder.file("file", "content");
        files.setFileAttributes(file, new Recording("HIDDEN"));
        assertEquals(Folder.READ_ONLY + Folder.HIDDEN, folder.attributes("file") & 0x13);
        FileAttributes read = files.getFileAttributes(file);
        assertTrue(read.getAttributeState(FileAttributes.HIDDEN));
        assertFalse(read.getAttributeState(FileAttributes.GROUP_WRITEABLE));
        files.setFileAttributes(file, new Recording("WORLD_WRITEABLE"));
        assertEquals(0, folder.attributes("file") & 0x13);
    }

    /** What the class lacks is a failure that nobody has a name for; no error of Java's stays behind. */
    @Test
    void aClassThatIsNotAsExpectedFails() throws Exception {
        String file = folder.file("file", "content");
        Object[][] lookUps = {{"FindClass", 1, 1}, {"GetMethodID", 8, 6}, {"GetStaticFieldID", 7, 6}};
        for (Object[] lookUp : lookUps) {
            for (int nth = 1; nth <= (int) lookUp[1]; ++nth) {
                begin(Windows.W10);
                Hooks.failJni((String) lookUp[0], nth);
                assertFails(-30000, E_FAIL, () -> files.getFileAttributes(file));
            }
            for (int nth = 1; nth <= (int) lookUp[2]; ++nth) {
                begin(Windows.W10);
                Hooks.failJni((String) lookUp[0], nth);
                assertFails(-30001, E_FAIL, () -> files.setFileAttributes(file, new Recording("")));
                assertEquals(List.of(), Call.of("SetFileAttributesW"));
            }
        }
    }

    @Test
    void whatAJavaMethodThrowsIsWhatJavaSees() throws Exception {
        String file = folder.file("file", "content");
        FileAttributes throwing = new FileAttributes() {
            @Override
            public boolean getAttributeState(int attribute) {
                throw new IllegalStateException("mine");
            }
        };
        Windows.W10.use();
        Outcome outcome = Outcome.ofVoid(() -> files.setFileAttributes(file, throwing));
        assertEquals("java.lang.IllegalStateException: mine", outcome.toString());
        assertEquals(List.of(), Call.of("SetFileAttributesW"));
        for (String function : new String[] {"NewObjectV", "CallVoidMethodV"}) {
            begin(Windows.W10);
            Hooks.failJni(function, 1);
            assertEquals(function, Outcome.of(() -> files.getFileAttributes(file)).thrown().getMessage());
            assertTrue(Call.of("CallVoidMethodV").size() <= 1);
        }
    }
}
