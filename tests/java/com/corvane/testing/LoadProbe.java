package com.corvane.testing;

import com.corvane.wizard.platform.win32.Win32Library;
import com.corvane.wizard.platform.win32.Win32RegistryServiceImpl;

/** A program that loads the library as an installer does, and says how that went. */
public final class LoadProbe {

    private LoadProbe() {}

    public static void main(String[] arguments) throws Exception {
        try {
            Win32Library.load();
            Win32Library.load();
            System.out.println("loaded, answers " + new Win32RegistryServiceImpl().keyExists(3, null));
        } catch (UnsatisfiedLinkError error) {
            System.out.println(error.getMessage());
        }
    }
}
