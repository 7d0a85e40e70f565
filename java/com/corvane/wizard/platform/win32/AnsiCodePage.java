package com.corvane.wizard.platform.win32;

import java.nio.charset.Charset;

/** The ANSI code page, in which the JVM and the cleaner are handed paths. */
final class AnsiCodePage {

    static final String NAME = System.getProperty("sun.jnu.encoding");

    private AnsiCodePage() {}

    /**
     * Whether the text comes back from the code page as it was. That it can be encoded is not enough: that of Japan
     * takes a yen sign and gives a backslash back, and the path would name something else.
     */
    static boolean holds(String text) {
        Charset page = Charset.forName(NAME);
        return new String(text.getBytes(page), page).equals(text);
    }
}
