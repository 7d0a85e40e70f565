package com.corvane.wizard.platform.win32;

/** What an installer does with its own process when it starts. */
public class Win32WizardInitializeServiceImpl {

    static {
        Win32Library.load();
    }

    /** Makes an object without state: one serves as well as another. */
    public Win32WizardInitializeServiceImpl() {}

    /**
     * Keeps the process on one processor: the active one with the lowest number, of the first 32. Does
     * nothing on Windows 95, 98 and ME, and where Windows refuses. Throws nothing. Windows:
     * SetProcessAffinityMask.
     */
    public native void setProcessAffinity();
}
