package com.corvane.wizard.platform.win32;

import static com.corvane.testing.Bytes.utf16;
import static com.corvane.testing.RawRegistry.KEY;
import static com.corvane.wizard.platform.win32.Win32RegistryServiceImpl.REG_EXPAND_SZ;
import static com.corvane.wizard.platform.win32.Win32RegistryServiceImpl.REG_MULTI_SZ;
import static com.corvane.wizard.platform.win32.Win32RegistryServiceImpl.REG_SZ;
import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.corvane.testing.Call;
import com.corvane.testing.Hooks;
import com.corvane.testing.RawRegistry;
import com.corvane.testing.TestBed;
import com.corvane.testing.Windows;
import com.corvane.wizard.service.ServiceException;
import java.nio.charset.Charset;
import java.util.Arrays;
import org.junit.jupiter.api.BeforeEach;
import org.junit.jupiter.api.Tag;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.extension.ExtendWith;

/**
 * The ANSI family in a code page of one and two bytes a character. Run in a process whose ANSI code page
 * is 932.
 */
@Tag("cp932")
@ExtendWith(TestBed.class)
class JapaneseCodePageTest {

    private static final int HKCU = Win32RegistryServiceImpl.HKEY_CURRENT_USER;

    private static final String JAPANESE = "\u65E5\u672C\u8A9E";

    /** Its second byte in this code page is that of a backslash. */
    private static final String BACKSLASH_INSIDE = "\u8868";

    private final Win32RegistryServiceImpl registry = new Win32RegistryServiceImpl();

    /** Text in code page 932, by Java's own conversion. */
    private static byte[] ansi(String text) {
        return text.getBytes(Charset.forName("windows-31j"));
    }

    @BeforeEach
    void useTheAnsiFamily() {
        Windows.W98.use();
    }

    @Test
    void textGoesInAndOut() throws Exception {
        assertEquals("MS932", System.getProperty("sun.jnu.encoding"), "the code page must be 932");
        for (String text : new String[] {JAPANESE, BACKSLASH_INSIDE, "a" + JAPANESE + "b", "\uFF71\uFF72"}) {
            registry.createKey(HKCU, KEY, text);
            registry.setStringValue(HKCU, KEY + "\\" + text, text, false, text);
            assertEquals(text, registry.getStringValue(HKCU, KEY + "\\" + text, text, false));
            assertArrayEquals(new String[] {text}, registry.getKeyValueNames(HKCU, KEY + "\\" + text));
            assertEquals(REG_SZ, RawRegistry.type(KEY + "\\" + text, text), "the same names for the wide functions");
            assertArrayEquals(new String[] {text}, registry.getSubkeyNames(HKCU, KEY));
            registry.deleteKey(HKCU, KEY, text, true);
        }
    }

    /** The bytes of the UTF-16 text are announced; that many are there, with zeros behind the text. */
    @Test
    void textIsStoredWithTheLengthOfItsUtf16() throws Exception {
        for (String text : new String[] {JAPANESE, "abc", "a" + JAPANESE}) {
            Hooks.reset();
            Windows.W98.use();
            Hooks.capture("RegSetValueExA", 4, 2 * text.length());
            Hooks.arm();
            registry.setStringValue(HKCU, KEY, "v", false, text);
            assertEquals(2 * text.length(), Call.only("RegSetValueExA").number(5));
            byte[] expected = Arrays.copyOf(ansi(text), 2 * text.length());
            assertArrayEquals(expected, Call.only("RegSetValueExA").bytes(4));
        }
    }

    @Test
    void whatTheCodePageLacksBecomesItsDefault() throws Exception {
        registry.setStringValue(HKCU, KEY, "v", false, "a\u20ACb\u0E01");
        assertEquals("a?b?", registry.getStringValue(HKCU, KEY, "v", false));
    }

    /** A two-byte character that the end of the data cuts in half gives no text that is longer. */
    @Test
    void charactersMayBeCutAtTheEdgeOfABuffer() throws Exception {
        byte[] full = new byte[512];
        Arrays.fill(full, (byte) 'x');
        full[511] = ansi(JAPANESE)[0];
        Hooks.answerValue(REG_SZ, full);
        String text = registry.getStringValue(HKCU, KEY, "v", false);
        assertTrue(text.startsWith("x".repeat(511)) && text.length() <= 512, text);

        Hooks.reset();
        Windows.W98.use();
        Hooks.answerValue(REG_SZ, ansi("x".repeat(511) + JAPANESE));
        Hooks.arm();
        assertEquals("x".repeat(511) + JAPANESE, registry.getStringValue(HKCU, KEY, "v", false));
    }

    @Test
    void listsKeepTheirNulsOnTheWayIn() throws Exception {
        byte[] expected = ansi(JAPANESE + "\0\0" + BACKSLASH_INSIDE + "\0\0");
        Hooks.capture("RegSetValueExA", 4, expected.length);
        registry.setMultiStringValue(HKCU, KEY, "v", new String[] {JAPANESE, "", BACKSLASH_INSIDE});
        assertEquals(expected.length, Call.only("RegSetValueExA").number(5));
        assertArrayEquals(expected, Call.only("RegSetValueExA").bytes(4));
        assertArrayEquals(utf16(JAPANESE + "\0\0" + BACKSLASH_INSIDE + "\0\0"), RawRegistry.data(KEY, "v"));
    }

    /**
     * On the way out, the bytes of the data count as characters: for each two-byte character an empty
     * text follows the list. It is promised so.
     */
    @Test
    void listsEndInAnEmptyTextForEachTwoByteCharacter() throws Exception {
        RawRegistry.set(KEY, "v", REG_MULTI_SZ, utf16("a\0" + JAPANESE + "\0\0"));
        assertArrayEquals(new String[] {"a", JAPANESE, "", "", ""}, registry.getMultiStringValue(HKCU, KEY, "v"));

        String item = JAPANESE.repeat(300);
        RawRegistry.set(KEY, "v", REG_MULTI_SZ, utf16(item + "\0" + item + "\0\0"));
        String[] texts = registry.getMultiStringValue(HKCU, KEY, "v");
        assertEquals(item, texts[0]);
        assertEquals(item, texts[1]);
        // A buffer of the exact size has no more characters than the text: nothing follows.
        assertEquals(2, texts.length);
    }

    @Test
    void messagesAreTheSameOnBothFamilies() {
        String ansi = message();
        Windows.W10.use();
        assertEquals(message(), ansi);
    }

    private String message() {
        return assertThrows(ServiceException.class, () -> registry.keyExists(9, "")).getMessage();
    }

    /** A stand-in expands here: Wine's function counts characters where Windows counts bytes. */
    @Test
    void variablesAreReplaced() throws Exception {
        RawRegistry.set(KEY, "v", REG_EXPAND_SZ, utf16("%" + JAPANESE + "%\0"));
        byte[] expanded = ansi("C:\\" + JAPANESE + "\0");
        Hooks.capture("ExpandEnvironmentStringsA", 0, 9);
        Hooks.answer("ExpandEnvironmentStringsA", expanded.length);
        Hooks.answer("ExpandEnvironmentStringsA", expanded.length, 1, expanded);
        assertEquals("C:\\" + JAPANESE, registry.getStringValue(HKCU, KEY, "v", true));
        for (Call call : Call.of("ExpandEnvironmentStringsA")) {
            assertArrayEquals(ansi("%" + JAPANESE + "%\0"), call.bytes(0));
        }
    }
}
