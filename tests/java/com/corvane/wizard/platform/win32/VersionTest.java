package com.corvane.wizard.platform.win32;

import static org.junit.jupiter.api.Assertions.assertTrue;

import com.corvane.testing.Hooks;
import com.corvane.testing.TestBed;
import com.corvane.testing.Windows;
import java.nio.ByteBuffer;
import java.nio.ByteOrder;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.List;
import java.util.Random;
import java.util.stream.Stream;
import org.junit.jupiter.api.extension.ExtendWith;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.EnumSource;

/** What the version of a file tells is in the file, byte for byte and in its order, whatever the file holds. */
@ExtendWith(TestBed.class)
class VersionTest {

    private static final List<String> FIELDS = List.of("Signature", "StrucVersion", "FileVersionMS", "FileVersionLS",
            "ProductVersionMS", "ProductVersionLS", "FileFlagsMask", "FileFlags", "FileOS", "FileType", "FileSubtype",
            "FileDateMS", "FileDateLS");
    private static final String NAME = "V\0S\0_\0V\0E\0R\0S\0I\0O\0N\0_\0I\0N\0F\0O\0\0\0\0\0";
    private static final int LENGTH = 4 * FIELDS.size();

    private final Win32ServiceImpl files = new Win32ServiceImpl();

    /** The record as Windows has it, a character for each byte; nothing without one. */
    private static String told(WindowsFixedFileInfo info) throws ReflectiveOperationException {
        ByteBuffer record = ByteBuffer.allocate(info == null ? 0 : LENGTH).order(ByteOrder.LITTLE_ENDIAN);
        while (record.hasRemaining()) {
            String field = FIELDS.get(record.position() / 4);
            record.putInt((int) WindowsFixedFileInfo.class.getMethod("get" + field).invoke(info));
        }
        return text(record.array());
    }

    private static String text(byte[] bytes) {
        return new String(bytes, StandardCharsets.ISO_8859_1);
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void theSystemsFiles(Windows system) throws Exception {
        system.use();
        List<Path> found;
        try (Stream<Path> all = Files.list(Path.of(System.getenv("SystemRoot"), "system32"))) {
            found = all.filter(path -> path.toString().matches(".*\\.(dll|exe|nls|tlb)")).sorted().limit(200).toList();
        }
        int versions = 0;
        for (Path file : found) {
            String content = text(Files.readAllBytes(file));
            int record = content.indexOf(NAME + "\u00BD\u0004\u00EF\u00FE");
            int begin = record + NAME.length();
            versions += record < 0 ? 0 : 1;
            assertTrue(told(files.getFixedFileInfo(file.toString()))
                    .equals(record < 0 ? "" : content.substring(begin, begin + LENGTH)), file.toString());
        }
        assertTrue(versions > 50 && versions < found.size(), versions + " of " + found.size());
    }

    /** Cut anywhere, with lengths that lie, or of any bytes. */
    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void damagedOnes(Windows system) throws Exception {
        Random random = new Random(20);
        system.use();
        for (int round = 1; round < 1500; ++round) {
            byte[] data = new byte[Math.min(round, 120)];
            random.nextBytes(data);
            byte[] head = ("x\0004\000" + (char) (round % 2) + "\0" + NAME).getBytes(StandardCharsets.ISO_8859_1);
            System.arraycopy(head, 0, data, 0, round < 1000 ? Math.min(head.length, data.length) : 0);
            data[random.nextInt(round < 500 ? Math.min(round, 4) : data.length)] = (byte) random.nextInt();
            Hooks.answer(system.function("GetFileVersionInfoSize"), data.length, 0, false);
            Hooks.answer(system.function("GetFileVersionInfo"), 1, 0, false);
            Hooks.writeTo(3, data, data.length);
            assertTrue(text(data).contains(told(files.getFixedFileInfo("C:\\any"))), "round " + round);
        }
    }
}
