package com.corvane.testing;

import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.List;

/** What waits for the next start of Windows, and that start itself. */
public final class Reboot {

    /** Where Windows 95, 98 and ME look. */
    public static final Path WIN_INIT = Path.of(System.getenv("SystemRoot"), "WinInit.Ini");

    private Reboot() {}

    /** Nothing waits any more. */
    public static void forget() {
        dropPending();
        try {
            Files.deleteIfExists(WIN_INIT);
        } catch (IOException failure) {
            throw new AssertionError(failure);
        }
    }

    /** What waits on the NT family, each as {@code path} to delete it or {@code path > target}. */
    public static List<String> pending() {
        List<String> pending = new ArrayList<>();
        String[] texts = pendingData().split("\0", -1);
        for (int index = 0; index + 1 < texts.length && !texts[index].isEmpty(); index += 2) {
            String target = plain(texts[index + 1]);
            pending.add(plain(texts[index]) + (target.isEmpty() ? "" : " > " + target));
        }
        return pending;
    }

    /**
     * Carries out what waits. This is the part of a start of Windows that does it, and every program goes
     * on; the files that they use must be free by now.
     */
    public static void now() throws Exception {
        Process start = new ProcessBuilder("wineboot.exe", "-r").inheritIO().start();
        if (start.waitFor() != 0) {
            throw new AssertionError("the start failed: " + start.exitValue());
        }
    }

    private static String plain(String path) {
        return path.replaceFirst("^(!)?\\\\\\?\\?\\\\", "$1");
    }

    private static native String pendingData();

    private static native void dropPending();
}
