package com.corvane.testing;

import static org.junit.jupiter.api.Assertions.assertEquals;

import com.sun.jna.Memory;
import com.sun.jna.WString;
import com.sun.jna.platform.win32.WinReg;
import com.sun.jna.ptr.IntByReference;
import java.nio.charset.StandardCharsets;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.List;

/** What waits for the next start of Windows, and that start itself. */
public final class Reboot {

    /** Where Windows 95, 98 and ME look. */
    public static final Path WIN_INIT = Path.of(System.getenv("SystemRoot"), "WinInit.Ini");

    private static final WString MANAGER = new WString("SYSTEM\\CurrentControlSet\\Control\\Session Manager");
    private static final WString PENDING = new WString("PendingFileRenameOperations");
    private static final int ANY_TYPE = 0xFFFF;
    private static final Memory DATA = new Memory(1 << 18);

    private Reboot() {}

    /** Nothing waits any more. */
    public static void forget() {
        RawRegistry.call("RegDeleteKeyValueW", WinReg.HKEY_LOCAL_MACHINE, MANAGER, PENDING);
        WIN_INIT.toFile().delete();
    }

    /** What waits on the NT family, each as {@code path} to delete it or {@code path > target}. */
    public static List<String> pending() {
        IntByReference size = new IntByReference((int) DATA.size());
        int result = RawRegistry.call(
                "RegGetValueW", WinReg.HKEY_LOCAL_MACHINE, MANAGER, PENDING, ANY_TYPE, null, DATA, size);
        String text = new String(DATA.getByteArray(0, result == 0 ? size.getValue() : 0), StandardCharsets.UTF_16LE);
        List<String> pending = new ArrayList<>();
        String[] texts = text.replaceAll("(?<=^|\0)(!?)\\\\\\?\\?\\\\", "$1").split("\0", -1);
        for (int index = 0; index + 1 < texts.length && !texts[index].isEmpty(); index += 2) {
            pending.add(texts[index] + (texts[index + 1].isEmpty() ? "" : " > " + texts[index + 1]));
        }
        return pending;
    }

    /**
     * Carries out what waits. This is the part of a start of Windows that does it, and every program goes
     * on; the files that they use must be free by now.
     */
    public static void now() throws Exception {
        assertEquals(0, new ProcessBuilder("wineboot.exe", "-r").inheritIO().start().waitFor());
    }
}
