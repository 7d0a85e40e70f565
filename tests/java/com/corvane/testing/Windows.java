package com.corvane.testing;

import java.nio.file.Files;
import java.nio.file.Path;
import java.util.Arrays;
import java.util.List;
import org.junit.jupiter.api.Assumptions;

/** The Windows that the library believes to run on. */
public enum Windows {
    W95(1, 4, 0, false),
    W98(1, 4, 10, true),
    ME(1, 4, 90, true),
    NT4(2, 4, 0, false),
    W2000(2, 5, 0, true),
    XP(2, 5, 1, true),
    W2003(2, 5, 2, true),
    VISTA(2, 6, 0, true),
    W10(2, 10, 0, true),
    /** One that does not tell what it is. */
    UNKNOWN(0, 0, 0, false);

    private static final int SHORT_RECORD = 148;
    private static final int LONG_RECORD = 156;
    private static final int WIDE_RECORD = 276;
    private static final int INSUFFICIENT_BUFFER = 122;

    /** Its program that starts Windows anew. */
    static final boolean IS_WINE = Files.exists(Path.of(System.getenv("SystemRoot"), "system32", "wineboot.exe"));

    /** What would change the accounts or the services of this machine, where a scene says nothing in its place. */
    private static final List<String> NEVER_CALLED = List.of("LsaClose", "LsaAddAccountRights", "LsaRemoveAccountRights",
            "NetUserAdd", "NetUserDel", "NetLocalGroupAdd", "NetLocalGroupDel", "NetLocalGroupAddMembers",
            "NetGroupAdd", "NetGroupDel", "NetGroupAddUser", "CreateServiceW", "ChangeServiceConfigW",
            "ChangeServiceConfig2W", "StartServiceW", "ControlService", "DeleteService", "SetUserObjectSecurity");

    private final int platform;
    private final int major;
    private final int minor;
    private final boolean knowsLongRecord;

    Windows(int platform, int major, int minor, boolean knowsLongRecord) {
        this.platform = platform;
        this.major = major;
        this.minor = minor;
        this.knowsLongRecord = knowsLongRecord;
    }

    /** What follows is true under Wine alone, for this reason: on any other Windows, the test is skipped. */
    public static void onlyWine(String reason) {
        Assumptions.assumeTrue(IS_WINE, "needs Wine: " + reason);
    }

    /** Makes this the system, until the next reset of the hooks. */
    public void use() {
        NEVER_CALLED.forEach(function -> Hooks.answer(function, 0, 0, true));
        for (int size : new int[] {SHORT_RECORD, LONG_RECORD, WIDE_RECORD}) {
            boolean knows = size == LONG_RECORD ? knowsLongRecord : this != UNKNOWN;
            byte[] record = Arrays.copyOf(Bytes.number(size, major, minor, 0, platform), knows ? size : 0);
            String call = "GetVersionEx" + (size == WIDE_RECORD ? "W\t" : "A\t") + size;
            Hooks.answer(call, knows ? 1 : 0, knows ? 0 : INSUFFICIENT_BUFFER, true);
            Hooks.writeTo(0, record, record.length);
        }
    }

    /** Whether the ANSI functions are called. */
    public boolean isAnsi() {
        return platform == 1;
    }

    /** The name of a function in the family of this system: with an A or a W at its end. */
    public String function(String name) {
        return name + (isAnsi() ? "A" : "W");
    }
}
