package com.corvane.demo;

import java.io.IOException;
import java.nio.ByteBuffer;
import java.nio.ByteOrder;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.stream.Collectors;
import java.util.stream.IntStream;

/** The version of a file, read from its bytes: without the library, and without Windows. */
final class VersionRecord {
    /** Before the record stands its name, up to the next place for 32 bits. */
    private static final String NAME = "VS_VERSION_INFO\0\0";

    /** Behind the signature and the version of the record's form; two numbers in each 32 bits. */
    private static final int[] PLACES = {10, 8, 14, 12};

    private VersionRecord() {}

    /** Four numbers with dots between them. */
    static String versionOf(Path file) throws IOException {
        byte[] all = Files.readAllBytes(file);
        String text = new String(all, StandardCharsets.ISO_8859_1);
        String name = new String(
                NAME.getBytes(StandardCharsets.UTF_16LE), StandardCharsets.ISO_8859_1);
        int record = text.indexOf(name) + name.length();
        ByteBuffer bytes = ByteBuffer.wrap(all).order(ByteOrder.LITTLE_ENDIAN);
        return IntStream.of(PLACES).mapToObj(place -> "" + (int) bytes.getChar(record + place))
                .collect(Collectors.joining("."));
    }
}
