package com.corvane.bench;

import com.sun.jna.Memory;
import com.sun.jna.Native;
import com.sun.jna.Pointer;
import com.sun.jna.platform.win32.Advapi32;
import com.sun.jna.platform.win32.Kernel32;
import com.sun.jna.platform.win32.VerRsrc.VS_FIXEDFILEINFO;
import com.sun.jna.platform.win32.VersionUtil;
import com.sun.jna.platform.win32.W32Service;
import com.sun.jna.platform.win32.W32ServiceManager;
import com.sun.jna.platform.win32.WinNT;
import com.sun.jna.platform.win32.WinNT.PSID;
import com.sun.jna.platform.win32.Winsvc;
import com.sun.jna.platform.win32.Winsvc.SERVICE_STATUS;
import com.sun.jna.ptr.IntByReference;
import com.sun.jna.ptr.PointerByReference;
import com.sun.jna.win32.StdCallLibrary;
import java.io.IOException;
import java.util.stream.IntStream;
import java.util.stream.Stream;

/** The rows' work through JNA's declarations of Windows' functions, and a few of our own. */
final class JnaServices {
    private static final Advapi32 SYSTEM = Advapi32.INSTANCE;
    private static final Authority AUTHORITY = Native.load("advapi32", Authority.class);

    private static final int POLICY_LOOKUP_NAMES = 0x800;
    private static final int ATTRIBUTES_SIZE = 48;
    private static final int SID_SIZE = 1024;
    private static final int DOMAIN_LENGTH = 80;
    private static final int TEXT_SIZE = 16;
    private static final int TEXT_POINTER = 8;
    private static final int NONE_HELD = 2;

    private JnaServices() {}

    /** What JNA does not declare of the security authority. */
    interface Authority extends StdCallLibrary {
        int LsaOpenPolicy(
                Pointer system, Pointer attributes, int access, PointerByReference policy);

        int LsaEnumerateAccountRights(
                Pointer policy, PSID sid, PointerByReference rights, IntByReference count);

        int LsaNtStatusToWinError(int status);

        int LsaFreeMemory(Pointer memory);

        int LsaClose(Pointer policy);
    }

    private static void check(boolean done) throws IOException {
        if (!done) {
            throw new IOException("Win32 error " + Kernel32.INSTANCE.GetLastError());
        }
    }

    static SERVICE_STATUS queryService(String name) throws IOException {
        try (W32ServiceManager manager = new W32ServiceManager(Winsvc.SC_MANAGER_ALL_ACCESS);
                W32Service service = manager.openService(
                        name, WinNT.READ_CONTROL | Winsvc.SERVICE_QUERY_STATUS)) {
            SERVICE_STATUS status = new SERVICE_STATUS();
            check(SYSTEM.QueryServiceStatus(service.getHandle(), status));
            return status;
        }
    }

    static String[] listServices() {
        try (W32ServiceManager manager = new W32ServiceManager(Winsvc.SC_MANAGER_ALL_ACCESS)) {
            int types = WinNT.SERVICE_DRIVER | WinNT.SERVICE_WIN32;
            return Stream.of(manager.enumServicesStatusExProcess(
                            types, Winsvc.SERVICE_STATE_ALL, null))
                    .map(service -> service.lpServiceName).toArray(String[]::new);
        }
    }

    static VS_FIXEDFILEINFO readVersion(String file) {
        return VersionUtil.getFileVersionInfo(file);
    }

    static String[] listRights(String account) throws IOException {
        Memory attributes = new Memory(ATTRIBUTES_SIZE);
        attributes.clear();
        PointerByReference policy = new PointerByReference();
        check(AUTHORITY.LsaOpenPolicy(null, attributes, POLICY_LOOKUP_NAMES, policy) == 0);
        try {
            return listRights(policy.getValue(), findAccount(account));
        } finally {
            AUTHORITY.LsaClose(policy.getValue());
        }
    }

    private static PSID findAccount(String account) throws IOException {
        PSID sid = new PSID(SID_SIZE);
        check(SYSTEM.LookupAccountName(null, account, sid, new IntByReference(SID_SIZE),
                new char[DOMAIN_LENGTH], new IntByReference(DOMAIN_LENGTH),
                new PointerByReference()));
        return sid;
    }

    private static String[] listRights(Pointer policy, PSID sid) throws IOException {
        PointerByReference rights = new PointerByReference();
        IntByReference count = new IntByReference();
        int status = AUTHORITY.LsaEnumerateAccountRights(policy, sid, rights, count);
        if (status != 0) {
            check(AUTHORITY.LsaNtStatusToWinError(status) == NONE_HELD);
            return new String[0];
        }
        Pointer first = rights.getValue();
        String[] texts = IntStream.range(0, count.getValue())
                .mapToObj(i -> (long) i * TEXT_SIZE + TEXT_POINTER)
                .map(place -> first.getPointer(place).getWideString(0))
                .toArray(String[]::new);
        AUTHORITY.LsaFreeMemory(first);
        return texts;
    }
}
