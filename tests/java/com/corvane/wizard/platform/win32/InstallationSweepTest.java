package com.corvane.wizard.platform.win32;

import static org.junit.jupiter.api.Assertions.assertEquals;

import com.corvane.testing.Call;
import com.corvane.testing.FaultSweep;
import com.corvane.testing.Outcome;
import com.corvane.testing.TestBed;
import com.corvane.testing.Windows;
import com.corvane.wizard.service.ServiceException;
import java.util.ArrayList;
import java.util.List;
import org.junit.jupiter.api.DynamicTest;
import org.junit.jupiter.api.TestFactory;
import org.junit.jupiter.api.extension.ExtendWith;

/** Every call fails once of the natives that tell who, where and on what, and of owners and shortcuts. */
@ExtendWith(TestBed.class)
class InstallationSweepTest {

    private static final int UNEXPECTED = ServiceException.UNEXPECTED;
    private static final String FILES = "file=f full\\app.lnk=l empty\\inner";

    /** A module that is not loaded is loaded; a size that is not told makes a buffer of none, which is too small. */
    private static final String[] ADMINISTRATOR = {
        "GetModuleHandleW advapi32.dll => good then GetSystemDirectoryW", "EqualSid => good or false then EqualSid",
        "GetTokenInformation \\w+ 2 0 0 => error 122 then GetTokenInformation",
        "GetTokenInformation \\w+ 2 & \\d+ => error 1450 then AllocateAndInitializeSid"};

    /**
     * A size is asked for first, too; a privilege that is not had is done without; and on Windows 9x the
     * exception may lack the code for what is not supported.
     */
    private static final String[] OWNER = {
        "LookupAccountSidW null \\w+ 0 0 => error 122 then LookupAccountSidW",
        "LookupAccountNameW null Administrators 0 0 0 => error 122 then LookupAccountNameW",
        "GetModuleHandleW advapi32.dll => done then GetSystemDirectoryW",
        "(GetProcAddress (OpenProcessToken|LookupPrivilegeValueA|AdjustTokenPrivileges)|OpenProcessToken"
                + "|LookupPrivilegeValueA|AdjustTokenPrivileges)"
                + " => done then (GetModuleHandleW advapi32.dll|InitializeSecurityDescriptor)",
        "GetStaticFieldID OPERATION_NOT_SUPPORTED => 0 without a message"};

    @TestFactory
    List<DynamicTest> administratorAndOwners() {
        FaultSweep sweep = new FaultSweep(FILES);
        sweep.add("isCurrentUserAdmin", -110000).after(ADMINISTRATOR);
        sweep.add("getFileOwner ~\\file", -30012).after(OWNER);
        sweep.add("getFileOwnerGroup ~\\file", -30008).after(OWNER);
        sweep.add("setFileOwner ~\\file Administrators", -30013).after(OWNER);
        sweep.add("setFileOwnerGroup ~\\file Administrators", -30009).after(OWNER);
        sweep.add("getDesktopItemOwnerGroup ~ full app", -80010).after(OWNER);
        sweep.add("setDesktopItemOwnerGroup ~ full app Administrators", -80011).after(OWNER);
        sweep.add("getDesktopItemOwner ~ full app", -80012).after(OWNER);
        sweep.add("setDesktopItemOwner ~ full app Administrators", -80013).after(OWNER);
        sweep.add("getDesktopFolderOwnerGroup ~ full", -80014).after(OWNER);
        sweep.add("setDesktopFolderOwnerGroup ~ full Administrators", -80015).after(OWNER);
        sweep.add("getDesktopFolderOwner ~ full", -80016).after(OWNER);
        sweep.add("setDesktopFolderOwner ~ full Administrators", -80017).after(OWNER);
        return sweep.on(Windows.W98, Windows.W10);
    }

    /** The system's box for critical errors is as it was found, and no probe stays behind. */
    private static boolean isBoxKept(String failed, String outcome, String state) {
        List<Call> modes = Call.of("SetErrorMode");
        return state.equals("empty\\inner " + FILES.replace(" empty\\inner", "")) && (modes.isEmpty()
                || modes.size() == 3 && modes.get(2).number(0) == modes.get(1).number(0) - 1);
    }

    @TestFactory
    List<DynamicTest> drivesDirectoriesAndTheSystem() {
        FaultSweep sweep = new FaultSweep(FILES);
        String noValue = "(Reg\\w+|WideCharToMultiByte|MultiByteToWideChar) => ''";
        sweep.add("getPartitionFreeSpace C:\\", -30004).after(
                "(GetModuleHandleA kernel32.dll|GetProcAddress GetDiskFreeSpaceEx.)"
                        + " => a number then GetDiskFreeSpace[AW]",
                "GetVersionExA => a number then .*").tells(InstallationSweepTest::isBoxKept);
        sweep.add("getPartitionNames", UNEXPECTED).after(
                "GetLogicalDriveStrings[AW] 0 => [] then GetLogicalDriveStrings[AW] 1",
                "GetLogicalDriveStrings[AW] => [] then FindClass java.lang.String");
        sweep.add("getPartitionType C:\\", UNEXPECTED).after("GetDriveTypeA => -1");
        sweep.add("getPartitionFormat C:\\", -30010).tells(InstallationSweepTest::isBoxKept);
        sweep.add("supportsLongFileNames C:\\", -30015).tells(InstallationSweepTest::isBoxKept);
        sweep.add("getTempDirectory", -60002)
                .after("GetTempPath[AW] [1-9].* => error 3 then GetFileAttributes[AW] ''");
        sweep.add("win32GetWindowsDirectory", -60000).after("GetWindowsDirectory[AW] [1-9].* => ''");
        sweep.add("getLibraryDirectory", UNEXPECTED).after("GetFileAttributes[AW] => ''",
                "GetSystemDirectory[AW] => '' then GetFileAttributes[AW] ''");
        sweep.add("getStandardInstallDirectory", -60001);
        sweep.add("win32GetCommonDirectory", -30022).after(noValue);
        sweep.add("win32GetVPDDirectory", -30023).after(noValue,
                "Reg\\w+ => " + System.getenv("APPDATA") + " then GetTempFileNameA ''",
                "(GetTempFileNameA|DeleteFileA) => " + System.getenv("APPDATA") + " then SHGetSpecialFolderLocation",
                "WideCharToMultiByte => error 1113, " + System.getenv("CommonProgramFiles"));
        sweep.add("isDirectoryWritable ~", UNEXPECTED).after("CreateFile[AW] => false",
                "FormatMessage[AW] => false then CreateFile[AW] ''").tells(InstallationSweepTest::isBoxKept);
        sweep.add("win32EnableAbort true", UNEXPECTED);
        sweep.add("getOSServiceLevel", -70005);
        sweep.add("isWinNTor2K", UNEXPECTED);
        sweep.add("isWinME", UNEXPECTED);
        sweep.add("getBootDirectory", -70009).after("GetDriveType[AW] => error 4294967295");
        sweep.add("setProcessAffinity with SetProcessAffinityMask: 1", UNEXPECTED).after(
                "(GetModuleHandleA kernel32.dll|GetProcAddress SetProcessAffinityMask|SetProcessAffinityMask) => done");
        return sweep.on(Windows.W98, Windows.W10);
    }

    /** A heap that fails once is told under the natives' own codes where a command was to be registered. */
    @TestFactory
    List<DynamicTest> variablesStartAndExit() {
        FaultSweep sweep = new FaultSweep(FILES);
        String counted = "malloc|calloc|realloc => error 2147500037";
        String named = "RegEnumValue: 0, 2 'ZELQ00001\u2400'; RegEnumValue: 259; value 1 'c\u2400'";
        String started = " with Sleep: 0*; GetWindow: 0*; CreateFileA: 0x5000; CreateProcess: 1, 9 q0x6000 q0x6004 n7 n8";
        sweep.add("addSystemStartupCommand c with RegQueryValueEx: 2; RegSetValueEx: 0", -70002).after(counted,
                "malloc => good then .*");
        sweep.add("systemStartupCommands with " + named, -70003).beside("an object").after(
                "Reg\\w+ => error 1450 then GetMethodID elements",
                "(WideCharToMultiByte|MultiByteToWideChar) => error 1113 or lost then GetMethodID elements");
        sweep.add("removeSystemStartupCommand c with RegDeleteValue: 0; " + named, -70004).after(counted,
                "malloc => good then .*");
        sweep.add("nativeDeleteFilesAfterExit [a] [b] true c" + started, -70007).after(
                "CreateFileA|WaitForInputIdle => done then .*");
        sweep.add("getProcessEnvironmentVariable CORVANE with GetEnvironmentVariable: 300; "
                + "GetEnvironmentVariable: 1, 1 'v'", UNEXPECTED).after("GetEnvironmentVariable[AW] => null");
        sweep.add("setProcessEnvironmentVariable CORVANE null", -70008);
        String told = "SendMessageTimeoutA => done";
        for (String family : new String[] {"winNT", "winME"}) {
            String whose = family.equals("winNT") ? " false" : "";
            String key = "RegOpenKeyEx: 0, 4 q0x80000001; ";
            sweep.add(family + "SetEnvironmentVariable CORVANE v" + whose, -70000).after(told);
            sweep.add(family + "GetRawEnvironmentVariable CORVANE" + whose, -70010);
        }
        return sweep.on(Windows.ME, Windows.W10);
    }

    @TestFactory
    List<DynamicTest> foldersAndShortcuts() {
        FaultSweep sweep = new FaultSweep(FILES);
        String noPlace = "GetFileAttributes[AW] ~ => error 2";
        String missing = "GetFileAttributes[AW] => done then (SHChangeNotify|GetFileAttributesA)";
        // What was made is removed again.
        String undone = " then RemoveDirectory[AW] ~.new";
        sweep.add("createDesktopFolder ~ new\\folder", -80000).after(noPlace, "malloc => unexpected" + undone,
                "malloc => good then .*", "WideCharToMultiByte => error 1113" + undone,
                "CreateDirectory[AW] => error 1450" + undone);
        sweep.add("removeDesktopFolder ~ empty\\inner", -80001).after(missing, "RemoveDirectoryA => done")
                .tells((failed, outcome, state) -> state.contains("file=f full\\app.lnk=l")
                        && (!outcome.equals("done") || !state.contains("inner")
                                || failed.matches("(GetFile|RemoveDirectoryA).*")));
        sweep.add("createDesktopItem ~ new app C:\\app.exe -a C:\\app.ico C:\\", -80002)
                .after(noPlace, "IShellLinkA::SetIconLocation => done then IPersistFile::Save")
                .tells((failed, outcome, state) -> state.contains("file=f full\\app.lnk=l")
                        && (outcome.equals("done") == state.contains("new\\app.lnk=a-shortcut")));
        sweep.add("removeDesktopItem ~ full app", -80003).after(missing, "RemoveDirectoryA => done",
                "SHGetSpecialFolderPathA => done then (SHGetSpecialFolderPathA|GetFileAttributes[AW])")
                .tells((failed, outcome, state) -> state.startsWith("empty\\inner file=f") && (!outcome.equals("done")
                        || !state.contains("app.lnk") || failed.startsWith("GetFileAttributes")));
        sweep.add("removeDesktopItem $AllUsersDesktop$ '' 'corvane none'", -80003)
                .after(missing, "SHGetPathFromIDListA => error 160");
        sweep.add("getDesktopItemAttributes ~ full app", -80018).after(FileSweepTest.ATTRIBUTES);
        sweep.add("setDesktopItemAttributes ~ full app []", -80019).after(FileSweepTest.ATTRIBUTES);
        sweep.add("getDesktopFolderAttributes ~ full", -80020).after(FileSweepTest.ATTRIBUTES);
        sweep.add("setDesktopFolderAttributes ~ full []", -80021).after(FileSweepTest.ATTRIBUTES);
        return sweep.on(Windows.W98, Windows.W10);
    }

    /** Who is not known is nobody: a user with a list of their own. */
    private static final String NOBODY = "(GetProcAddress|OpenThreadToken|OpenProcessToken|GetTokenInformation"
            + "|AllocateAndInitializeSid|EqualSid) => done then "
            + "(RegOpenKeyExW HKCU|GetTokenInformation|AllocateAndInitializeSid|EqualSid)";
    private static final String LIST = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall";
    private static final String NAME = "Corvane sweep";

    private final Win32RegistryServiceImpl registry = new Win32RegistryServiceImpl();

    /** The entry of the product for all users and for the user; each with the number of its values. */
    private String entries() {
        StringBuilder entries = new StringBuilder();
        for (int root : new int[] {4, 3}) {
            entries.append(Outcome.of(() -> registry.countValuesInKey(root, LIST + "\\" + NAME)).value()).append(' ');
        }
        return entries.toString();
    }

    private void dropEntries() {
        try {
            for (int root : new int[] {4, 3}) {
                if (registry.keyExists(root, LIST + "\\" + NAME)) {
                    registry.deleteKey(root, LIST, NAME, false);
                }
            }
        } catch (ServiceException failure) {
            throw new AssertionError(failure);
        }
        assertEquals("null null ", entries());
    }

    private void makeEntry() {
        dropEntries();
        assertEquals("returned nothing", Outcome.ofVoid(() -> registry.createKey(4, LIST, NAME)).toString());
    }

    /** Who is taken for an ordinary user has a list of their own; an entry may have been begun. */
    @TestFactory
    List<DynamicTest> theListOfPrograms() {
        FaultSweep adding = new FaultSweep(this::dropEntries, this::entries);
        adding.add("win32RegisterUninstaller '" + NAME + "' name command", -90000).after(ADMINISTRATOR).after(NOBODY)
                .tells((failed, outcome, state) -> outcome.equals("done")
                        ? state.equals("2 null ") || NOBODY.contains(failed.split(" ")[0]) && state.equals("null 2 ")
                        : state.matches("(null|[01]) null "));
        FaultSweep removing = new FaultSweep(this::makeEntry, this::entries);
        removing.add("win32UnregisterUninstaller '" + NAME + "' 'Corvane sweep 2'", -90001)
                .after(ADMINISTRATOR).after(NOBODY).after(RegistrySweepTest.LINKS);
        List<DynamicTest> tests = new ArrayList<>(adding.on(Windows.W98, Windows.W10));
        tests.addAll(removing.on(Windows.W98, Windows.W10));
        tests.add(DynamicTest.dynamicTest("the list is left as it was", this::dropEntries));
        return tests;
    }
}
