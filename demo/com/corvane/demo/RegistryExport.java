package com.corvane.demo;

import java.io.IOException;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;

/** A root of the registry as the system's own tool writes it down. */
final class RegistryExport {
    /** Bytes go on in the next line, behind two spaces. */
    private static final String CONTINUATION = "\\\\\\R  ";

    /** All of it; or, where it is large and others write all the time, what installations change of it. */
    static final List<String> ROOTS = Host.isWine() ? Arrays.asList("HKLM", "HKCU") : Arrays.asList(
            "HKLM\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall",
            "HKLM\\SYSTEM\\CurrentControlSet\\Services", "HKCU\\Environment");

    private RegistryExport() {}

    /** Every key; and every value, with its key before it. */
    static List<String> lines(String root) throws IOException, InterruptedException {
        Path file = Files.createTempFile("corvane-demo", ".reg");
        try {
            SystemTool tool = new SystemTool("reg", "export", root, file.toString(), "/y");
            if (tool.run() != 0) {
                throw new IOException("reg export " + root + ": " + tool.output());
            }
            return lines(Files.readAllBytes(file));
        } finally {
            Files.delete(file);
        }
    }

    private static List<String> lines(byte[] export) {
        String text = new String(export, StandardCharsets.UTF_16).replaceAll(CONTINUATION, "");
        List<String> lines = new ArrayList<>();
        String key = "";
        for (String line : text.split("\\R+")) {
            boolean isKey = line.startsWith("[");
            key = isKey ? line : key;
            lines.add(isKey ? line : key + ' ' + line);
        }
        return lines;
    }
}
