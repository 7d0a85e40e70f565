package com.corvane.testing;

import java.nio.ByteBuffer;
import java.nio.ByteOrder;
import java.nio.charset.StandardCharsets;

/** Data as Windows lays it out. */
public final class Bytes {

    private Bytes() {}

    /** The text in UTF-16, with no terminator of its own. */
    public static byte[] utf16(String text) {
        return text.getBytes(StandardCharsets.UTF_16LE);
    }

    /** The text with a byte for each character. */
    public static byte[] latin1(String text) {
        return text.getBytes(StandardCharsets.ISO_8859_1);
    }

    public static byte[] of(int... values) {
        byte[] bytes = new byte[values.length];
        for (int index = 0; index < values.length; ++index) {
            bytes[index] = (byte) values[index];
        }
        return bytes;
    }

    /** Four bytes, the lowest first. */
    public static byte[] number(int value) {
        return ByteBuffer.allocate(4).order(ByteOrder.LITTLE_ENDIAN).putInt(value).array();
    }

    /** Eight bytes, the lowest first: a pointer or a handle. */
    public static byte[] word(long value) {
        return ByteBuffer.allocate(8).order(ByteOrder.LITTLE_ENDIAN).putLong(value).array();
    }

    public static int number(byte[] bytes) {
        return ByteBuffer.wrap(bytes).order(ByteOrder.LITTLE_ENDIAN).getInt();
    }
}
