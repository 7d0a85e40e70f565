package com.corvane.wizard.platform.win32;

import java.io.ByteArrayOutputStream;
import java.io.IOException;
import java.io.InputStream;
import java.nio.file.Path;
import java.nio.file.Paths;
import java.util.LinkedHashMap;
import java.util.Map;

/** A file in the jar, unpacked in the first place that serves. */
final class UnpackedFile {

    private UnpackedFile() {}

    /** @throws IOException when no place serves; it says why each does not */
    static <E extends Exception> void use(String name, JarCopy.Use<E> use) throws IOException, E {
        byte[] content = content(name);
        StringBuilder reasons = new StringBuilder();
        for (Map.Entry<String, String> place : places().entrySet()) {
            try {
                useIn(place.getValue(), name, content, use);
                return;
            } catch (IOException | RuntimeException | UnsatisfiedLinkError e) {
                // Such as a name that is no path, or a place that is denied by the JVM's policy.
                reasons.append("; ").append(place.getKey()).append(" (").append(place.getValue()).append("): ")
                        .append(e);
            }
        }
        throw new IOException("Cannot unpack and use " + name + reasons);
    }

    /**
     * Where a copy may be unpacked, best first. The last is there on every Windows, its name is plain ASCII
     * whatever the user's is, and others may make files in it but not touch ours.
     */
    private static Map<String, String> places() {
        String local = System.getenv("LOCALAPPDATA");
        Map<String, String> places = new LinkedHashMap<>();
        places.put("java.io.tmpdir", System.getProperty("java.io.tmpdir"));
        places.put("LOCALAPPDATA", local == null ? null : local + "\\Temp");
        places.put("ALLUSERSPROFILE", System.getenv("ALLUSERSPROFILE"));
        return places;
    }

    /** Also on a thread that was interrupted: its channels would fail, and the library with them, for good. */
    private static <E extends Exception> void useIn(String place, String name, byte[] content, JarCopy.Use<E> use)
            throws IOException, E {
        boolean interrupted = Thread.interrupted();
        try {
            JarCopy.use(folderAt(place), name, content, use);
        } finally {
            if (interrupted) {
                Thread.currentThread().interrupt();
            }
        }
    }

    /** The folder itself, without links that could lead elsewhere a moment later. */
    private static Path folderAt(String place) throws IOException {
        if (place == null || place.isEmpty()) {
            throw new IOException("it is not set");
        }
        Path folder = Paths.get(place).toRealPath();
        requireAnsi(folder.toString());
        return folder;
    }

    /**
     * The JVM hands the path to Windows in the ANSI code page. Characters that it lacks are replaced on the
     * way, and the path would name nothing, or something else.
     */
    private static void requireAnsi(String path) throws IOException {
        if (!AnsiCodePage.holds(path)) {
            throw new IOException("the JVM can load nothing from there, because the ANSI code page, "
                    + AnsiCodePage.NAME + ", lacks characters of the path");
        }
    }

    private static byte[] content(String name) throws IOException {
        try (InputStream packed = Win32Library.class.getResourceAsStream(name)) {
            if (packed == null) {
                throw new IOException(name + " is not in the jar");
            }
            ByteArrayOutputStream content = new ByteArrayOutputStream();
            byte[] part = new byte[8192];
            for (int size = packed.read(part); size >= 0; size = packed.read(part)) {
                content.write(part, 0, size);
            }
            return content.toByteArray();
        }
    }
}
