package com.corvane.demo;

import com.corvane.wizard.platform.win32.Win32ProductServiceImpl;
import com.corvane.wizard.service.ServiceException;

/** The product in the system's list of programs, which {@link #LIST} shows. */
final class ProgramListEntry {
    static final String KEY = "Corvane Harbour Notes";
    static final String TITLE = "Harbour Notes 2.1 (Häfen, 港)";
    static final String COMMAND = '"' + Product.installed(Product.PROGRAM) + "\" /c exit";
    static final String[] LIST = {"uninstaller", "--list"};

    private ProgramListEntry() {}

    static void remove() throws ServiceException {
        new Win32ProductServiceImpl().win32UnregisterUninstaller(KEY, KEY);
    }
}
