package com.corvane.wizard.platform.win32;

import java.io.File;
import java.io.IOException;
import java.io.InputStream;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.StandardCopyOption;

/**
 * Finds the native library, {@code corvane_win32.dll}, and loads it, once.
 *
 * <p>The system property {@value #PROPERTY} names the file. Without it, the copy in the jar is unpacked
 * to a temporary file of this process. Windows keeps a loaded file from being deleted, so such files are
 * removed by a later process.
 *
 * <p>The classes whose methods are native call {@link #load()} themselves when they are first used.
 */
public final class Win32Library {

    /**
     * The system property that names the library's file. A JVM loads one file for one class loader only:
     * where two load these classes, leave the property away, and each gets a copy of its own.
     */
    public static final String PROPERTY = "corvane.win32.library";

    private static final String FILE = "corvane_win32.dll";
    private static final String PREFIX = "corvane_win32-";
    private static final String SUFFIX = ".dll";

    /** A temporary file that is younger may belong to a process that is about to load it. */
    private static final long STALE_MILLISECONDS = 24L * 60 * 60 * 1000;

    private static boolean loaded;

    private Win32Library() {}

    /**
     * Loads the library unless it is loaded already. A class whose first use failed here stays unusable: each
     * later use is a NoClassDefFoundError.
     *
     * @throws UnsatisfiedLinkError when this is not a 64-bit Windows JVM, or the library cannot be found,
     *     unpacked or loaded; the message says which
     */
    public static synchronized void load() {
        if (!loaded) {
            requireWindows(System.getProperty("os.name"), System.getProperty("os.arch"));
            System.load(libraryFile());
            loaded = true;
        }
    }

    static void requireWindows(String system, String architecture) {
        if (!system.startsWith("Windows") || !architecture.equals("amd64")) {
            throw new UnsatisfiedLinkError(
                    FILE + " needs a 64-bit Windows JVM (x86-64); this one runs on " + system + ", " + architecture);
        }
    }

    private static String libraryFile() {
        String named = System.getProperty(PROPERTY);
        if (named == null) {
            return unpacked().toString();
        }
        File file = new File(named);
        if (!file.isFile()) {
            throw new UnsatisfiedLinkError("The system property " + PROPERTY + " names no file: " + named);
        }
        return file.getAbsolutePath();
    }

    private static Path unpacked() {
        try (InputStream copy = Win32Library.class.getResourceAsStream(FILE)) {
            if (copy == null) {
                throw new UnsatisfiedLinkError(
                        FILE + " is not in the jar, and the system property " + PROPERTY + " is not set");
            }
            Path file = Files.createTempFile(PREFIX, SUFFIX);
            removeStaleFiles(file.getParent());
            Files.copy(copy, file, StandardCopyOption.REPLACE_EXISTING);
            return file;
        } catch (IOException e) {
            UnsatisfiedLinkError error = new UnsatisfiedLinkError("Cannot unpack " + FILE + ": " + e);
            error.initCause(e);
            throw error;
        }
    }

    /** Removes what earlier processes left; a file that is still in use refuses, and stays. */
    private static void removeStaleFiles(Path directory) {
        long stale = System.currentTimeMillis() - STALE_MILLISECONDS;
        File[] files = directory.toFile().listFiles((folder, name) -> name.startsWith(PREFIX) && name.endsWith(SUFFIX));
        if (files == null) {
            return;
        }
        for (File file : files) {
            if (file.lastModified() < stale) {
                file.delete();
            }
        }
    }
}
