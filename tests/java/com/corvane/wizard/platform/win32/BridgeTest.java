package com.corvane.wizard.platform.win32;

import static com.corvane.testing.Bytes.latin1;
import static com.corvane.testing.Bytes.utf16;
import static com.corvane.testing.Outcome.assertFails;
import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertNull;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.corvane.testing.Bridge;
import com.corvane.testing.Bytes;
import com.corvane.testing.Call;
import com.corvane.testing.FaultSweep;
import com.corvane.testing.Hooks;
import com.corvane.testing.Outcome;
import com.corvane.testing.TestBed;
import com.corvane.testing.Windows;
import com.corvane.wizard.service.ServiceException;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;
import java.util.Map;
import org.junit.jupiter.api.DynamicTest;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.TestFactory;
import org.junit.jupiter.api.extension.ExtendWith;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.EnumSource;

/** The bridge in a real JVM: which Windows it sees, how failures reach Java, how Java strings reach C++. */
@ExtendWith(TestBed.class)
class BridgeTest {

    private static final int IS_9X = 1;
    private static final int IS_NT = 2;
    private static final int IS_ME = 4;
    private static final int IS_2000 = 8;
    private static final int IS_XP_OR_LATER = 16;

    /** The system's text for error 5, in Windows' words or in Wine's. */
    private static final String ACCESS_DENIED = "(?s)Access (is )?denied\\.\r\n";

    private static ServiceException raised(Outcome.Action action) {
        return assertThrows(ServiceException.class, action::run);
    }

    @Test
    void everyWindowsIsRecognized() {
        Map<Windows, Integer> answers = Map.of(
                Windows.W95, IS_9X,
                Windows.W98, IS_9X,
                Windows.ME, IS_9X + IS_ME,
                Windows.NT4, IS_NT,
                Windows.W2000, IS_NT + IS_2000,
                Windows.XP, IS_NT + IS_XP_OR_LATER,
                Windows.VISTA, IS_NT + IS_XP_OR_LATER,
                Windows.W10, IS_NT + IS_XP_OR_LATER);
        answers.forEach((system, answer) -> {
            system.use();
            assertEquals(answer, Bridge.predicates(), system.name());
        });
        Windows.useUnknown();
        assertEquals(0, Bridge.predicates());
    }

    @Test
    void theVersionIsAskedWithTheLongRecordFirst() {
        Windows.NT4.use();
        Hooks.capture("GetVersionExA", 0, 148);
        Bridge.predicates();
        List<Call> probes = Call.of("GetVersionExA");
        assertEquals(10, probes.size(), "two for each predicate, and nothing is remembered");
        for (int index = 0; index < probes.size(); ++index) {
            byte[] record = new byte[148];
            record[0] = (byte) (index % 2 == 0 ? 156 : 148);
            assertArrayEquals(record, probes.get(index).bytes(0));
        }
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void theMessageIsTheSystemsAndTheNumber(Windows system) {
        system.use();
        String format = system.function("FormatMessage");
        Hooks.capture(format, 6, 16);
        Hooks.capture(format, 1, 10);
        ServiceException exception = raised(() -> Bridge.raiseWithMessage(-30000, 5));
        assertEquals(-30000, exception.getCode());
        assertEquals(0, exception.getSeverity());
        assertEquals(5, exception.getReason());
        assertTrue(exception.getMessage().matches(ACCESS_DENIED + " \\(5\\)"), exception.getMessage());

        List<Call> calls = Call.of(format);
        assertEquals(2, calls.size());
        assertCall(calls.get(0), 0x1300, 5);
        assertEquals(0, calls.get(0).word(1));
        assertEquals(0, calls.get(0).word(6));
        assertCall(calls.get(1), 0x500, 0);
        String inserts = system.isAnsi() ? "%1!s! (%2!lu!)" : "%1!ls! (%2!lu!)";
        assertArrayEquals(Arrays.copyOf(system.encode(inserts), 10), calls.get(1).bytes(1));
    }

    private static void assertCall(Call call, int flags, int message) {
        assertEquals(flags, call.number(0));
        assertEquals(message, call.number(2));
        assertEquals(0x400, call.number(3));
        assertEquals(0, call.number(5));
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void networkErrorsHaveTheirTextElsewhere(Windows system) {
        for (int message : new int[] {2100, 2999}) {
            Hooks.reset();
            system.use();
            Hooks.answer("GetSystemDirectoryA", 6, 0, latin1("Q:\\sys\0"));
            Hooks.answerModule("Q:\\sys\\netmsg.dll", System.getProperty("corvane.test.support"));
            Hooks.captureText("LoadLibraryExA", 0);
            Hooks.arm();
            String which = message == 2100 ? "first" : "last";
            String text = raised(() -> Bridge.raiseWithMessage(-110001, message)).getMessage();
            assertEquals("The " + which + " network message.\r\n (" + message + ")", text);
            Call load = Call.only("LoadLibraryExA");
            assertEquals("Q:\\sys\\netmsg.dll", load.text(0));
            assertEquals(List.of(0L, 2L), List.of(load.word(1), load.word(2) & 0xFFFFFFFFL));
            Call format = Call.of(system.function("FormatMessage")).get(0);
            assertCall(format, 0x1B00, message);
            assertEquals(Call.only("FreeLibrary").word(0), format.word(1));
        }
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void aMissingTextCostsTheMessageOnly(Windows system) {
        system.use();
        long[] unknown = {2099, 3000, 1999999999, 0xFFFFFFFFL};
        for (long message : unknown) {
            assertFails(-110001, message, () -> Bridge.raiseWithMessage(-110001, (int) message));
        }
        assertEquals(0, Call.of("LoadLibraryExA").size());
        // The module is not loaded; nor is the system's directory known, or its path is too long.
        Hooks.fail("LoadLibraryExA", 1, 126);
        Hooks.fail("GetSystemDirectoryA", 2, 5);
        for (int attempt = 0; attempt < 3; ++attempt) {
            if (attempt == 2) {
                Hooks.answer("GetSystemDirectoryA", 249);
            }
            assertFails(-110001, 2100, () -> Bridge.raiseWithMessage(-110001, 2100));
            Call format = Call.of(system.function("FormatMessage")).get(2 * (unknown.length + attempt));
            assertCall(format, 0x1300, 2100);
            assertEquals(0, format.word(1));
        }
        assertEquals(1, Call.of("LoadLibraryExA").size());
        assertEquals(0, Call.of("FreeLibrary").size());
    }

    @Test
    void javaSeesTheReasonAsANumberAndTheCodeInTheText() {
        Map<String, Integer> reasons = Map.of("Denied.\r\n (5)", 5, " (2147942414)", 0x8007000E,
                "(5)", 0, "Denied (5).", 0, "Denied (x)", 0, "Denied (4294967296)", 0, "", 0);
        reasons.forEach((message, reason) ->
                assertEquals(reason, new ServiceException(-5, message).getReason(), message));
        assertEquals(0, new ServiceException(-5).getReason());
        String name = ServiceException.class.getName();
        assertEquals(name + ": -5: Denied. (7)", new ServiceException(-5, "Denied. (7)").toString());
        assertEquals(name + ": -5", new ServiceException(-5).toString());
    }

    @Test
    void theOtherRoutinesRaiseTheirCode() {
        Windows.W10.use();
        ServiceException plain = raised(() -> Bridge.raise(0x80004005));
        assertEquals(0x80004005, plain.getCode());
        assertNull(plain.getMessage());

        ServiceException severe = raised(() -> Bridge.raiseSevere(-110101, 5));
        assertEquals(List.of(-110101, 1), List.of(severe.getCode(), severe.getSeverity()));
        assertTrue(severe.getMessage().matches(ACCESS_DENIED + " \\(5\\)"));

        ServiceException unsupported = raised(Bridge::raiseNotSupported);
        assertEquals(ServiceException.OPERATION_NOT_SUPPORTED, unsupported.getCode());
        assertNull(unsupported.getMessage());

        assertEquals(-5, raised(() -> Bridge.raiseTwice(-5, -6)).getCode(), "the first failure is the one to see");
        String text = Bridge.errorText(-42, 5);
        assertTrue(text.matches("-42: " + ACCESS_DENIED + " \\(5\\)"), text);
    }

    @Test
    void whatTheExceptionClassLacksIsDoneWithout() {
        Windows.W10.use();
        Hooks.failJni("GetMethodID", 2);
        ServiceException severe = raised(() -> Bridge.raiseSevere(-110101, 5));
        assertEquals(List.of(-110101, 0), List.of(severe.getCode(), severe.getSeverity()));
        Hooks.failJni("GetStaticFieldID", 1);
        assertEquals(0, raised(Bridge::raiseNotSupported).getCode());
    }

    /** Without the class or its constructor, Java sees its own error for that. */
    @Test
    void withoutTheExceptionClassJavasOwnErrorStays() {
        List<Outcome.Action> raises = List.of(() -> Bridge.raise(-1), () -> Bridge.raiseWithMessage(-1, 5),
                () -> Bridge.raiseSevere(-1, 5), Bridge::raiseNotSupported);
        for (Outcome.Action raise : raises) {
            for (String function : new String[] {"FindClass", "GetMethodID", "NewObjectV"}) {
                Hooks.reset();
                Windows.W10.use();
                Hooks.failJni(function, 1);
                Hooks.arm();
                assertEquals(function, assertThrows(Throwable.class, raise::run).getMessage());
            }
        }
    }

    /** Whatever fails while a failure is raised, Java sees one exception. */
    @TestFactory
    List<DynamicTest> everyCallOfRaisingFails() {
        FaultSweep sweep = new FaultSweep(() -> {}, () -> "");
        sweep.add("raise", -5, () -> Bridge.raise(-5));
        sweep.add("raiseWithMessage", -5, () -> Bridge.raiseWithMessage(-5, 5));
        sweep.add("raiseWithMessage of the network", -5, () -> Bridge.raiseWithMessage(-5, 2100));
        sweep.add("raiseSevere", -5, () -> Bridge.raiseSevere(-5, 5))
                .after("(GetMethodID setSeverity|CallVoidMethodV) => good");
        sweep.add("copyWide", -5, () -> Bridge.copyWide("text", 5)).beside("an object");
        for (int call = 0; call < LINES.length; ++call) {
            int number = call;
            sweep.add("method " + METHODS[call], -1, () -> Bridge.callMethod(new Target(), number, METHODS[number]))
                    .after("(NewGlobalRef|GetObjectClass|GetMethodID) => done");
        }
        return sweep.on(Windows.W98, Windows.W10);
    }

    @Test
    void javaStringsAreCopied() {
        Windows.W98.use();
        assertNull(Bridge.copyWide(null, 0));
        assertNull(Bridge.copyAnsi(null));
        assertArrayEquals(Bytes.of(0, 0), Bridge.copyWide("", 1));
        assertArrayEquals(Bytes.of(0), Bridge.copyAnsi(""));
        assertArrayEquals(utf16("text\u00E9\0"), Bridge.copyWide("text\u00E9", 6));
        assertArrayEquals(latin1("text\u00E9\0"), Bridge.copyAnsi("text\u00E9"));
        assertArrayEquals(utf16("a\0\0\0"), Bridge.copyWide("a\0b", 4), "cut at its NUL, zeros behind");
        assertArrayEquals(latin1("a\0"), Bridge.copyAnsi("a\0b"));
    }

    /** What the five calls of a Java object meet; each is public because its name is all that is known of it. */
    public static final class Target {

        final StringBuilder told = new StringBuilder();

        public String text() {
            return "text\u00E9";
        }

        public Object object() {
            return 42;
        }

        public void number(int number) {
            told.append(number);
        }

        public void nothing() {
            told.append('.');
        }

        public void tell(String text) {
            told.append(text);
        }

        public String absent() {
            return null;
        }

        public void refuse() {
            throw new IllegalStateException("refused");
        }
    }

    /** The method for each call, and the line that names it where it is missing. */
    private static final String[] METHODS = {"text", "object", "number", "nothing", "tell"};

    private static final int[] LINES = {85, 72, 112, 154, 168};

    private static String internalError(int line) {
        return "Internal error at line " + line + " of file 'JavaObject'";
    }

    @Test
    void methodsOfJavaObjectsAreCalledByName() {
        Windows.W10.use();
        Target target = new Target();
        List<String> answers = new ArrayList<>();
        for (int call = 0; call < METHODS.length; ++call) {
            answers.add(Bridge.callMethod(target, call, METHODS[call]));
            assertEquals(internalError(LINES[call]), Bridge.callMethod(target, call, "lacks"), "nothing is pending");
        }
        assertEquals(List.of("text\u00E9", "42", "", "", ""), answers);
        assertEquals("-7.text\u00E9", target.told.toString());
        assertEquals("", Bridge.callMethod(target, 0, "absent"));
        assertThrows(IllegalStateException.class, () -> Bridge.callMethod(target, 3, "refuse"));
    }

    @Test
    void anObjectThatCannotBePinnedIsAnInternalError() {
        Windows.W10.use();
        assertEquals(internalError(16), Bridge.callMethod(null, 3, "nothing"));
        Hooks.failJni("GetObjectClass", 1);
        assertEquals(internalError(21) + ", pending", Bridge.callMethod(new Target(), 3, "nothing"));
        Hooks.reset();
        Windows.W10.use();
        Hooks.failJni("NewGlobalRef", 2);
        Hooks.arm();
        assertEquals(internalError(25) + ", pending", Bridge.callMethod(new Target(), 3, "nothing"));
    }

    /** A size is asked for first; the code page is asked for at each of the two calls. */
    @Test
    void conversionsGoThroughTheAnsiCodePageOfTheMoment() {
        Windows.W98.use();
        Hooks.answer("GetACP", 437);
        Hooks.answer("GetACP", 850);
        Bridge.copyAnsi("text");
        assertEquals(0, Call.only("GetStringChars").word(2));
        List<Call> calls = Call.of("WideCharToMultiByte");
        assertEquals(List.of(437, 850), calls.stream().map(call -> call.number(0)).toList());
        assertEquals(List.of(0, 5), calls.stream().map(call -> call.number(5)).toList());
        assertEquals(0, calls.get(0).word(4));
        for (Call call : calls) {
            assertEquals(List.of(0, -1), List.of(call.number(1), call.number(3)));
            assertEquals(List.of(0L, 0L), List.of(call.word(6), call.word(7)));
        }

        Hooks.answer("GetACP", 850);
        Hooks.answer("GetACP", 437);
        raised(() -> Bridge.raiseWithMessage(-1, 5));
        List<Call> back = Call.of("MultiByteToWideChar");
        assertEquals(List.of(850, 437), back.stream().map(call -> call.number(0)).toList());
        assertEquals(List.of(0, 0), back.stream().map(call -> call.number(1)).toList());
    }

    @Test
    void functionsThatOlderSystemsLackAreLookedUp() {
        Hooks.answer("GetACP", 437);
        assertEquals(437, Bridge.lookedUpCodePage());
        assertEquals(1, Call.of("GetACP").size());
        Hooks.hide("GetACP");
        assertEquals(-127, Bridge.lookedUpCodePage());
        Hooks.fail("GetModuleHandleA", 1, 126);
        assertEquals(-126, Bridge.lookedUpCodePage());
    }
}
