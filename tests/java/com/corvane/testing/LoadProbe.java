package com.corvane.testing;

import com.corvane.wizard.platform.win32.Win32DesktopServiceImpl;
import com.corvane.wizard.platform.win32.Win32Library;
import com.corvane.wizard.platform.win32.Win32RegistryServiceImpl;

/**
 * A program that loads the library as an installer does, and says how that went. With the tests' own
 * natives at hand, COM is started first in a way that the library cannot join, and a shortcut is tried.
 */
public final class LoadProbe {

    private LoadProbe() {}

    public static void main(String[] arguments) throws Exception {
        boolean withoutCom = System.getProperty("corvane.test.support") != null;
        try {
            if (withoutCom) {
                Hooks.load();
                Apartment.joinMultithreaded();
            }
            Win32Library.load();
            Win32Library.load();
            System.out.println("loaded, answers " + new Win32RegistryServiceImpl().keyExists(3, null));
            if (withoutCom) {
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
