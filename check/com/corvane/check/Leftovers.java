package com.corvane.check;

import com.corvane.testing.RawRegistry;
import com.sun.jna.platform.win32.Advapi32Util;
import com.sun.jna.platform.win32.WinReg;
import com.sun.jna.platform.win32.WinReg.HKEY;
import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.List;

/**
 * Takes back what tests leave outside of the work folder when they fail or are stopped. What is not there is none of
 * its business; what cannot be taken back ends it.
 */
final class Leftovers {

    private static final String CURRENT = "Software\\Microsoft\\Windows\\CurrentVersion\\";
    private static final String PROGRAMS = CURRENT + "Uninstall\\";
    private static final String RUN_ONCE = CURRENT + "RunOnce";
    private static final String FOLDERS = CURRENT + "Explorer\\Shell Folders";
    private static final List<HKEY> ROOTS = List.of(WinReg.HKEY_CURRENT_USER, WinReg.HKEY_LOCAL_MACHINE);

    private Leftovers() {}

    public static void main(String[] none) throws Exception {
        for (String order : List.of("stop", "delete")) {
            new ProcessBuilder("sc", order, "CorvaneTest").start().waitFor();
        }
        for (String name : List.of("CORVANE", "CORVANE_DEMO")) {
            deleteValue(WinReg.HKEY_CURRENT_USER, "Environment", name);
        }
        for (HKEY root : ROOTS) {
            if (Advapi32Util.registryKeyExists(root, PROGRAMS + "Corvane sweep")) {
                Advapi32Util.registryDeleteKey(root, PROGRAMS + "Corvane sweep");
            }
            for (String folder : List.of("Programs", "Start Menu", "Desktop", "Startup")) {
                deleteFrom(root, folder);
                deleteFrom(root, "Common " + folder);
            }
        }
        Advapi32Util.registryGetValues(WinReg.HKEY_LOCAL_MACHINE, RUN_ONCE).forEach((name, command) -> {
            if (String.valueOf(command).contains(WorkFolder.FOLDER.toString())) {
                deleteValue(WinReg.HKEY_LOCAL_MACHINE, RUN_ONCE, name);
            }
        });
        Files.deleteIfExists(Check.WIN_INIT);
        // Has registry links in it, which lead other programs astray.
        RawRegistry.deleteTree("Software\\Corvane");
    }

    private static void deleteValue(HKEY root, String key, String name) {
        if (Advapi32Util.registryValueExists(root, key, name)) {
            Advapi32Util.registryDeleteValue(root, key, name);
        }
    }

    /** The shell itself notes where its folders are. */
    private static void deleteFrom(HKEY root, String folder) throws IOException {
        if (Advapi32Util.registryValueExists(root, FOLDERS, folder)) {
            Path place = Path.of(Advapi32Util.registryGetStringValue(root, FOLDERS, folder));
            Files.deleteIfExists(place.resolve("Corvane test.lnk"));
            WorkFolder.deleteTree(place.resolve("Corvane test"));
        }
    }
}
