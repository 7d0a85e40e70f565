package com.corvane.testing;

import com.corvane.wizard.platform.win32.Win32DesktopServiceImpl;
import com.corvane.wizard.platform.win32.Win32Library;
import com.corvane.wizard.platform.win32.Win32RegistryServiceImpl;

/**
 * A program that loads the library as an installer does, and says how that went. Where "corvane.test.com"
 * says so, COM is started first, and a shortcut is tried.
 */
public final class LoadProbe {

    private LoadProbe() {}

    public static void main(String[] arguments) throws Exception {
        String com = System.getProperty("corvane.test.com");
        try {
            if (com != null) {
                Hooks.load();
                Apartment.start(com.equals("multithreaded"));
            }
            Win32Library.load();
            Win32Library.load();
            System.out.println("loaded, answers " + new Win32RegistryServiceImpl().keyExists(3, null));
            if (com != null) {
                System.out.println(shortcut());
            }
        } catch (UnsatisfiedLinkError error) {
            System.out.println(error.getMessage());
        }
    }

    private static Outcome shortcut() {
        String folder = System.getProperty("java.io.tmpdir");
        return Outcome.ofVoid(() ->
                new Win32DesktopServiceImpl().createDesktopItem(folder, "group", "n", "C:\\x.exe", "", "", ""));
    }
}
