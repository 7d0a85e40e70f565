package com.corvane.bench;

import com.sun.jna.Native;
import com.sun.jna.platform.win32.AccCtrl.SE_OBJECT_TYPE;
import com.sun.jna.platform.win32.Advapi32;
import com.sun.jna.platform.win32.Advapi32Util;
import com.sun.jna.platform.win32.Kernel32;
import com.sun.jna.platform.win32.W32Errors;
import com.sun.jna.platform.win32.WinBase;
import com.sun.jna.platform.win32.WinDef.DWORD;
import com.sun.jna.platform.win32.WinNT;
import com.sun.jna.platform.win32.WinNT.HANDLEByReference;
import com.sun.jna.platform.win32.WinNT.LARGE_INTEGER;
import com.sun.jna.platform.win32.WinNT.PSID;
import com.sun.jna.platform.win32.WinNT.SID_AND_ATTRIBUTES;
import com.sun.jna.platform.win32.WinNT.TOKEN_GROUPS;
import com.sun.jna.platform.win32.WinNT.TOKEN_INFORMATION_CLASS;
import com.sun.jna.platform.win32.WinNT.WELL_KNOWN_SID_TYPE;
import com.sun.jna.ptr.IntByReference;
import com.sun.jna.ptr.PointerByReference;
import java.io.IOException;
import java.util.Arrays;

/** The rows' work through JNA's declarations of Windows' functions. */
final class JnaInstallation {
    private static final Kernel32 KERNEL = Kernel32.INSTANCE;
    private static final Advapi32 SECURITY = Advapi32.INSTANCE;
    private static final int PATH_LENGTH = 261;

    private JnaInstallation() {}

    private static void check(boolean done) throws IOException {
        if (!done) {
            throw new IOException("Win32 error " + KERNEL.GetLastError());
        }
    }

    static String temporaryDirectory() throws IOException {
        char[] path = new char[PATH_LENGTH];
        check(KERNEL.GetTempPath(new DWORD(PATH_LENGTH), path).intValue() != 0);
        String directory = Native.toString(path);
        check(KERNEL.GetFileAttributes(directory) != WinBase.INVALID_FILE_ATTRIBUTES);
        return directory;
    }

    static long freeSpace(String root) throws IOException {
        LARGE_INTEGER available = new LARGE_INTEGER();
        check(KERNEL.GetDiskFreeSpaceEx(root, available, null, null));
        return available.getValue();
    }

    static boolean isAdministrator() throws IOException {
        HANDLEByReference token = new HANDLEByReference();
        if (!SECURITY.OpenThreadToken(
                KERNEL.GetCurrentThread(), WinNT.TOKEN_QUERY, false, token)) {
            check(KERNEL.GetLastError() == W32Errors.ERROR_NO_TOKEN);
            check(SECURITY.OpenProcessToken(
                    KERNEL.GetCurrentProcess(), WinNT.TOKEN_QUERY, token));
        }
        try {
            return Arrays.stream(groupsOf(token.getValue())).anyMatch(group ->
                    SECURITY.IsWellKnownSid(
                            group.Sid, WELL_KNOWN_SID_TYPE.WinBuiltinAdministratorsSid));
        } finally {
            KERNEL.CloseHandle(token.getValue());
        }
    }

    private static SID_AND_ATTRIBUTES[] groupsOf(WinNT.HANDLE token) throws IOException {
        IntByReference size = new IntByReference();
        SECURITY.GetTokenInformation(token, TOKEN_INFORMATION_CLASS.TokenGroups, null, 0, size);
        TOKEN_GROUPS groups = new TOKEN_GROUPS(size.getValue());
        check(SECURITY.GetTokenInformation(
                token, TOKEN_INFORMATION_CLASS.TokenGroups, groups, size.getValue(), size));
        return groups.getGroups();
    }

    static String ownerOf(String file) throws IOException {
        PointerByReference sid = new PointerByReference();
        PointerByReference descriptor = new PointerByReference();
        check(SECURITY.GetNamedSecurityInfo(file, SE_OBJECT_TYPE.SE_FILE_OBJECT,
                WinNT.OWNER_SECURITY_INFORMATION, sid, null, null, null, descriptor) == 0);
        try {
            return Advapi32Util.getAccountBySid(new PSID(sid.getValue())).name;
        } finally {
            KERNEL.LocalFree(descriptor.getValue());
        }
    }
}
