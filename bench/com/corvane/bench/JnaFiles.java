package com.corvane.bench;

import com.sun.jna.Native;
import com.sun.jna.platform.win32.Kernel32;
import com.sun.jna.platform.win32.WinBase;
import com.sun.jna.platform.win32.WinBase.FILETIME;
import com.sun.jna.platform.win32.WinBase.WIN32_FIND_DATA;
import com.sun.jna.platform.win32.WinNT;
import com.sun.jna.platform.win32.WinNT.HANDLE;
import com.sun.jna.win32.StdCallLibrary;
import com.sun.jna.win32.W32APIOptions;
import java.io.IOException;

/** The rows' work through JNA's declarations of Windows' functions. */
final class JnaFiles {
    private static final Kernel32 KERNEL = Kernel32.INSTANCE;
    private static final Directories DIRECTORIES =
            Native.load("kernel32", Directories.class, W32APIOptions.DEFAULT_OPTIONS);

    /** A function that JNA's own declarations miss. */
    interface Directories extends StdCallLibrary {
        boolean RemoveDirectory(String path);
    }

    private JnaFiles() {}

    private static void check(boolean done) throws IOException {
        if (!done) {
            throw new IOException("Win32 error " + KERNEL.GetLastError());
        }
    }

    static void copyAll(String[] sources, String[] targets) throws IOException {
        for (int i = 0; i < sources.length; i++) {
            check(KERNEL.CopyFile(sources[i], targets[i], false));
        }
    }

    static void deleteAll(String[] files) throws IOException {
        for (String file : files) {
            check(KERNEL.DeleteFile(file));
        }
    }

    static void deleteTree(String directory) throws IOException {
        WIN32_FIND_DATA found = new WIN32_FIND_DATA();
        HANDLE search = KERNEL.FindFirstFile(directory + "\\*", found.getPointer());
        check(!WinBase.INVALID_HANDLE_VALUE.equals(search));
        do {
            found.read();
            deleteEntry(directory, found);
        } while (KERNEL.FindNextFile(search, found.getPointer()));
        KERNEL.FindClose(search);
        check(DIRECTORIES.RemoveDirectory(directory));
    }

    private static void deleteEntry(String directory, WIN32_FIND_DATA found) throws IOException {
        String name = found.getFileName();
        if (name.equals(".") || name.equals("..")) {
            return;
        }
        String path = directory + '\\' + name;
        if ((found.dwFileAttributes & WinNT.FILE_ATTRIBUTE_DIRECTORY) != 0) {
            deleteTree(path);
        } else {
            check(KERNEL.DeleteFile(path));
        }
    }

    static void setTimes(String file, FILETIME time) throws IOException {
        HANDLE handle = KERNEL.CreateFile(file, WinNT.FILE_WRITE_ATTRIBUTES,
                WinNT.FILE_SHARE_READ | WinNT.FILE_SHARE_WRITE, null, WinNT.OPEN_EXISTING, 0, null);
        check(!WinBase.INVALID_HANDLE_VALUE.equals(handle));
        int done = KERNEL.SetFileTime(handle, time, time, time);
        KERNEL.CloseHandle(handle);
        check(done != 0);
    }

    static void readAttributes(String file) throws IOException {
        check(KERNEL.GetFileAttributes(file) != WinBase.INVALID_FILE_ATTRIBUTES);
    }
}
