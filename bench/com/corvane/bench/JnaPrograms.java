package com.corvane.bench;

import com.sun.jna.platform.win32.Kernel32;
import com.sun.jna.platform.win32.WinBase;
import com.sun.jna.platform.win32.WinDef.DWORD;
import com.sun.jna.platform.win32.WinNT.HANDLE;
import com.sun.jna.platform.win32.WinNT.HANDLEByReference;
import com.sun.jna.ptr.IntByReference;
import java.io.IOException;
import java.io.OutputStream;

/** The rows' work through JNA's declarations of Windows' functions. */
final class JnaPrograms {
    private static final Kernel32 KERNEL = Kernel32.INSTANCE;
    private static final int READ_SIZE = 1000;
    private static final int LONGEST_VALUE = 32767;

    private JnaPrograms() {}

    private static void check(boolean done) throws IOException {
        if (!done) {
            throw new IOException("Win32 error " + KERNEL.GetLastError());
        }
    }

    /** Reads until the program has closed its end. */
    static void run(String commandLine, OutputStream output) throws IOException {
        WinBase.SECURITY_ATTRIBUTES inherited = new WinBase.SECURITY_ATTRIBUTES();
        inherited.bInheritHandle = true;
        HANDLEByReference readEnd = new HANDLEByReference();
        HANDLEByReference writeEnd = new HANDLEByReference();
        check(KERNEL.CreatePipe(readEnd, writeEnd, inherited, 0));
        WinBase.STARTUPINFO startup = new WinBase.STARTUPINFO();
        startup.dwFlags = WinBase.STARTF_USESTDHANDLES;
        startup.hStdOutput = writeEnd.getValue();
        startup.hStdError = writeEnd.getValue();
        WinBase.PROCESS_INFORMATION child = new WinBase.PROCESS_INFORMATION();
        check(KERNEL.CreateProcess(null, commandLine, null, null, true,
                new DWORD(WinBase.CREATE_NEW_CONSOLE), null, null, startup, child));
        KERNEL.CloseHandle(writeEnd.getValue());
        drain(readEnd.getValue(), output);
        KERNEL.WaitForSingleObject(child.hProcess, WinBase.INFINITE);
        check(KERNEL.GetExitCodeProcess(child.hProcess, new IntByReference()));
        KERNEL.CloseHandle(readEnd.getValue());
        KERNEL.CloseHandle(child.hThread);
        KERNEL.CloseHandle(child.hProcess);
    }

    private static void drain(HANDLE pipe, OutputStream output) throws IOException {
        byte[] bytes = new byte[READ_SIZE];
        IntByReference count = new IntByReference();
        while (KERNEL.ReadFile(pipe, bytes, bytes.length, count, null) && count.getValue() > 0) {
            output.write(bytes, 0, count.getValue());
        }
        output.close();
    }

    static String readVariable(String name) throws IOException {
        char[] value = new char[LONGEST_VALUE];
        int length = KERNEL.GetEnvironmentVariable(name, value, value.length);
        check(length != 0);
        return new String(value, 0, length);
    }

    static void setVariable(String name, String value) throws IOException {
        check(KERNEL.SetEnvironmentVariable(name, value));
    }
}
