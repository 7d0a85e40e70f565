package com.corvane.demo;

import java.io.ByteArrayOutputStream;
import java.io.IOException;
import java.io.InputStream;
import java.nio.ByteBuffer;
import java.nio.charset.CharacterCodingException;
import java.nio.charset.Charset;
import java.nio.charset.StandardCharsets;
import java.util.regex.Pattern;
import java.util.stream.Stream;

/** One run of a program that comes with Windows, with all that it printed. */
final class SystemTool {
    private final String[] command;
    private String output = "";

    SystemTool(String... command) {
        this.command = command;
    }

    /** A text of the registry as the system's own tool shows it, empty when there is none. */
    static String registered(String key, String value) throws IOException, InterruptedException {
        SystemTool tool = new SystemTool("reg", "query", key, "/v", value);
        String type = "REG_SZ";
        return tool.run() == 0
                ? tool.output().substring(tool.output().indexOf(type) + type.length()).trim() : "";
    }

    /** Runs it to its end and returns its exit code. */
    int run() throws IOException, InterruptedException {
        Process process = new ProcessBuilder(command).redirectErrorStream(true).start();
        process.getOutputStream().close();
        output = decoded(allOf(process.getInputStream()));
        return process.waitFor();
    }

    String output() {
        return output;
    }

    /** A text as tools print it: where their code page is not UTF-8, of some letters they print what they like. */
    static Pattern printed(String text) {
        boolean isUtf8 = System.getProperty("sun.jnu.encoding").equals("UTF-8");
        return Pattern.compile(isUtf8 ? Pattern.quote(text)
                : text.replaceAll("([^\\w ])", "\\\\$1").replaceAll("\\\\?\\P{ASCII}", ".{1,4}"));
    }

    /** The lines that hold something. */
    Stream<String> lines() {
        return Stream.of(output.split("\\R")).filter(line -> !line.trim().isEmpty());
    }

    private static byte[] allOf(InputStream in) throws IOException {
        ByteArrayOutputStream all = new ByteArrayOutputStream();
        byte[] piece = new byte[4096];
        for (int count = in.read(piece); count >= 0; count = in.read(piece)) {
            all.write(piece, 0, count);
        }
        return all.toByteArray();
    }

    /** Tools print in the system's code page, which is UTF-8 on some systems and not on others. */
    private static String decoded(byte[] bytes) {
        try {
            return StandardCharsets.UTF_8.newDecoder().decode(ByteBuffer.wrap(bytes)).toString();
        } catch (CharacterCodingException e) {
            return new String(bytes, Charset.forName(System.getProperty("sun.jnu.encoding")));
        }
    }
}
