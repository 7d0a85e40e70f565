package com.corvane.testing;

import java.nio.ByteBuffer;
import java.nio.ByteOrder;
import java.nio.charset.Charset;
import java.nio.charset.StandardCharsets;

/** Data as Windows lays it out. */
public final class Bytes {

    /** Java's own idea of the process's ANSI code page. */
    public static final Charset ANSI = Charset.forName(System.getProperty("sun.jnu.encoding"));

    private Bytes() {}

    /** The text in UTF-16, with no terminator of its own. */
    public static byte[] utf16(String text) {
        return text.getBytes(StandardCharsets.UTF_16LE);
    }

    /** Four bytes for each, the lowest first. */
    public static byte[] number(int... values) {
        ByteBuffer bytes = ByteBuffer.allocate(4 * values.length).order(ByteOrder.LITTLE_ENDIAN);
        bytes.asIntBuffer().put(values);
        return bytes.array();
    }

    /** Eight bytes, the lowest first: a pointer or a handle. */
    public static byte[] word(long value) {
        return ByteBuffer.allocate(8).order(ByteOrder.LITTLE_ENDIAN).putLong(value).array();
    }
}
