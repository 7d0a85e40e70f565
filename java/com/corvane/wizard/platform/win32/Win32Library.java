package com.corvane.wizard.platform.win32;

import java.io.File;
import java.io.IOException;

/**
 * Finds the native library, {@code corvane_win32.dll}, and loads it, once.
 *
 * <p>The system property {@value #PROPERTY} names the file. Without it, the copy in the jar is unpacked
 * into a new folder that belongs to this process alone, and nothing but that copy is ever loaded: it is
 * compared with the jar while nobody else can change, move or delete it, and stays held until it is loaded.
 * The folder is made in the first of these that serves: the one that {@code java.io.tmpdir} names, the user's
 * own temporary folder ({@code LOCALAPPDATA}), and the one for all users' data ({@code ALLUSERSPROFILE}).
 *
 * <p>Windows keeps a loaded file from being deleted. Copies that nothing uses any more, since their JVM has
 * ended or their class loader is gone, are removed when the library is next unpacked beside them, by a process
 * that may: a program with administrators' rights leaves a copy that only its like can remove.
 *
 * <p>The classes whose methods are native call {@link #load()} themselves when they are first used. When that
 * fails, the first use of such a class throws the {@link UnsatisfiedLinkError}, and each later use of it a
 * {@link NoClassDefFoundError}, as for any class that could not be initialized.
 */
public final class Win32Library {

    /**
     * The system property that names the library's file. A JVM loads one file for one class loader only:
     * where two load these classes, do not set the property, and each gets a copy of its own.
     */
    public static final String PROPERTY = "corvane.win32.library";

    static final String FILE = "corvane_win32.dll";

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
            loadFile(System.getProperty(PROPERTY));
            loaded = true;
        }
    }

    static void requireWindows(String system, String architecture) {
        if (!system.startsWith("Windows") || !architecture.equals("amd64")) {
            throw new UnsatisfiedLinkError(
                    FILE + " needs a 64-bit Windows JVM (x86-64); this one runs on " + system + ", " + architecture);
        }
    }

    private static void loadFile(String named) {
        if (named == null) {
            loadUnpacked();
            return;
        }
        File file = new File(named);
        if (!file.isFile()) {
            throw new UnsatisfiedLinkError("The system property " + PROPERTY + " names no file: " + named);
        }
        System.load(file.getAbsolutePath());
    }

    private static void loadUnpacked() {
        try {
            UnpackedFile.use(FILE, (file, held) -> System.load(file.toString()));
        } catch (IOException e) {
            UnsatisfiedLinkError error = new UnsatisfiedLinkError(e.getMessage() + "; the system property " + PROPERTY
                    + " can name a copy to load instead");
            error.initCause(e);
            throw error;
        }
    }
}
