package com.corvane.wizard.platform.win32;

import java.io.ByteArrayOutputStream;
import java.io.IOException;
import java.io.InputStream;
import java.nio.charset.Charset;
import java.nio.file.Path;
import java.nio.file.Paths;
import java.util.LinkedHashMap;
import java.util.Map;

/** The library in the jar: unpacked in the first place that serves, and loaded from there. */
final class UnpackedLibrary {

    private UnpackedLibrary() {}

    /** @throws UnsatisfiedLinkError when no place serves; it says why each does not, and what helps */
    static void load() {
        byte[] content = content();
        StringBuilder reasons = new StringBuilder();
        for (Map.Entry<String, String> place : places().entrySet()) {
            try {
                loadFrom(place.getValue(), content);
                return;
            } catch (IOException | RuntimeException | UnsatisfiedLinkError e) {
                // Such as a name that is no path, or a place that is denied by the JVM's policy.
                reasons.append("; ").append(place.getKey()).append(" (").append(place.getValue()).append("): ")
                        .append(e);
            }
        }
        throw new UnsatisfiedLinkError("Cannot unpack and load " + Win32Library.FILE + "; the system property "
                + Win32Library.PROPERTY + " can name a copy to load instead" + reasons);
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
    private static void loadFrom(String place, byte[] content) throws IOException {
        boolean interrupted = Thread.interrupted();
        try {
            LibraryCopy.load(folderAt(place), content);
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
        String page = System.getProperty("sun.jnu.encoding");
        if (!Charset.forName(page).newEncoder().canEncode(path)) {
            throw new IOException("the JVM can load nothing from there, because the ANSI code page, " + page
                    + ", lacks characters of the path");
        }
    }

    private static byte[] content() {
        try (InputStream packed = Win32Library.class.getResourceAsStream(Win32Library.FILE)) {
            if (packed == null) {
                throw new UnsatisfiedLinkError(Win32Library.FILE + " is not in the jar, and the system property "
                        + Win32Library.PROPERTY + " is not set");
            }
            ByteArrayOutputStream content = new ByteArrayOutputStream();
            byte[] part = new byte[8192];
            for (int size = packed.read(part); size >= 0; size = packed.read(part)) {
                content.write(part, 0, size);
            }
            return content.toByteArray();
        } catch (IOException e) {
            UnsatisfiedLinkError error = new UnsatisfiedLinkError(
                    "Cannot read " + Win32Library.FILE + " in the jar: " + e);
            error.initCause(e);
            throw error;
        }
    }
}
