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
import org.junit.jupiter.api.Assumptions;

/**
 * What waits for the next start of Windows, and that start itself. Where nobody can carry it out at once, a test is run
 * twice, "before" the start and "after" it, as "corvane.test.half" says: what is before the start is left out then.
 */
public final class Reboot {

    private static final String HALF = System.getProperty("corvane.test.half", "");

    /** Where Windows 95, 98 and ME look. */
    public static final Path WIN_INIT = Path.of(System.getenv("SystemRoot"), "WinInit.Ini");

    private static final WString MANAGER = new WString("SYSTEM\\CurrentControlSet\\Control\\Session Manager");
    private static final WString PENDING = new WString("PendingFileRenameOperations");
    private static final int ANY_TYPE = 0xFFFF;
    private static final int REG_MULTI_SZ = 7;
    private static final int NO_VALUE = 2;
    private static final Memory DATA = new Memory(1 << 24);
    /** What waits for others, and is none of ours. */
    private static String others = raw();

    private Reboot() {}

    /** Whether it was already. Skips the test when nobody is there to carry it out. */
    public static boolean isOver() {
        Assumptions.assumeTrue(Windows.IS_WINE || !HALF.isEmpty(), "needs a restart in the middle: check.cmd before");
        return isAfter();
    }

    static boolean isAfter() {
        return HALF.equals("after");
    }

    /** Whether what a test has left must stay. */
    public static boolean isAwaited() {
        return HALF.equals("before");
    }

    /** Nothing waits any more; what other tests want to find after the start is others' from now on. */
    public static void forget() {
        String all = raw();
        if (isAwaited()) {
            others = all;
            return;
        }
        // Where nothing has come, nobody may have the right to write.
        if (!all.equals(others)) {
            DATA.write(0, others.toCharArray(), 0, others.length());
            RawRegistry.require(others.isEmpty()
                    ? RawRegistry.call("RegDeleteKeyValueW", WinReg.HKEY_LOCAL_MACHINE, MANAGER, PENDING)
                    : RawRegistry.call("RegSetKeyValueW", WinReg.HKEY_LOCAL_MACHINE, MANAGER, PENDING, REG_MULTI_SZ,
                            DATA, 2 * others.length()));
        }
        WIN_INIT.toFile().delete();
    }

    /** What cannot be read must not pass for nothing: it would be deleted. */
    private static String raw() {
        IntByReference size = new IntByReference((int) DATA.size());
        int result = RawRegistry.call(
                "RegGetValueW", WinReg.HKEY_LOCAL_MACHINE, MANAGER, PENDING, ANY_TYPE, null, DATA, size);
        RawRegistry.require(result == NO_VALUE ? 0 : result);
        return new String(DATA.getByteArray(0, result == 0 ? size.getValue() : 0), StandardCharsets.UTF_16LE);
    }

    /** What waits on the NT family, each as {@code path} to delete it or {@code path > target}. */
    public static List<String> pending() {
        // A new entry stands behind the others, in the place of the NUL that ends them all.
        String text = raw().substring(Math.max(0, others.length() - 1));
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
        Assumptions.assumeFalse(isAwaited(), "goes on after the restart: check.cmd after");
        if (isOver()) {
            return;
        }
        assertEquals(0, new ProcessBuilder("wineboot.exe", "-r").inheritIO().start().waitFor());
    }
}
