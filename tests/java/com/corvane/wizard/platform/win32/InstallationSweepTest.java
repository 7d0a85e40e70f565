package com.corvane.wizard.platform.win32;

import com.corvane.testing.Call;
import com.corvane.testing.FaultSweep;
import com.corvane.testing.Folder;
import com.corvane.testing.Hooks;
import com.corvane.testing.Outcome;
import com.corvane.testing.TestBed;
import com.corvane.testing.Windows;
import com.corvane.util.FileAttributes;
import com.corvane.wizard.service.ServiceException;
import java.util.ArrayList;
import java.util.List;
import java.util.Set;
import org.junit.jupiter.api.DynamicTest;
import org.junit.jupiter.api.TestFactory;
import org.junit.jupiter.api.extension.ExtendWith;

/** Every call fails once of the natives that tell who, where and on what, and of owners and shortcuts. */
@ExtendWith(TestBed.class)
class InstallationSweepTest {

    private static final long E_FAIL = 0x80004005L;
    private static final long E_ACCESSDENIED = 0x80070005L;
    private static final int BAD_ARGUMENTS = 160;
    private static final String DRIVE = "C:\\";

    private final Win32FileServiceImpl files = new Win32FileServiceImpl();
    private final Win32DesktopServiceImpl desktop = new Win32DesktopServiceImpl();
    private final Folder folder = Folder.named("installation sweep");
    private final String file = folder.path("file");
    private final String top = folder.path("");

    private void fill() {
        folder.clear();
        folder.file("file", "f");
        folder.file("full/app.lnk", "l");
        folder.folder("empty/inner");
    }

    /** The files, and whether the system's box for critical errors was left as it was found. */
    private String state() {
        List<Call> modes = Call.of("SetErrorMode");
        boolean kept = modes.isEmpty()
                || modes.size() == 3 && modes.get(2).number(0) == modes.get(1).number(0) - 1;
        return folder.names() + (kept ? "" : " error mode");
    }

    private FaultSweep sweep() {
        return new FaultSweep(this::fill, this::state);
    }

    /** After one of these functions the call has this value. */
    private static FaultSweep.Judge value(String functions, String value) {
        return (failed, outcome, state) -> failed.matches(functions) && value.equals(outcome.value());
    }

    private static FaultSweep.Judge failure(String functions, int code, long error) {
        return (failed, outcome, state) -> failed.matches(functions) && outcome.isFailure(code, error);
    }

    private static FaultSweep.Judge any(FaultSweep.Judge... judges) {
        return (failed, outcome, state) ->
                Set.of(judges).stream().anyMatch(judge -> judge.accepts(failed, outcome, state));
    }

    @TestFactory
    List<DynamicTest> administratorAndOwners() {
        FaultSweep sweep = sweep();
        Win32SecurityServiceImpl security = new Win32SecurityServiceImpl();
        // A look-up of the module that fails is followed by its loading; a size that is not told, by a buffer
        // of none.
        sweep.add("isCurrentUserAdmin", -110000, security::isCurrentUserAdmin).accepts(any(
                value("GetModuleHandleW|LoadLibraryW|EqualSid", "true"), value("EqualSid", "false"),
                failure("GetProcAddress", -110000, 127), failure("GetTokenInformation", -110000, 122)));
        sweep.add("getFileOwner", -30012, () -> files.getFileOwner(file)).accepts(owner(-30012));
        sweep.add("getFileOwnerGroup", -30008, () -> files.getFileOwnerGroup(file)).accepts(owner(-30008));
        sweep.addVoid("setFileOwner", -30013, () -> files.setFileOwner(file, "Administrators"))
                .accepts(owner(-30013));
        sweep.addVoid("setFileOwnerGroup", -30009, () -> files.setFileOwnerGroup(file, "Administrators"))
                .accepts(owner(-30009));
        return sweep.on(Windows.W98, Windows.W10);
    }

    /**
     * The first failure of a look-up, or a privilege that is not had; on Windows 9x, an exception that lacks
     * the code for what is not supported.
     */
    private static FaultSweep.Judge owner(int code) {
        return any((failed, outcome, state) -> failed.equals("GetStaticFieldID") && outcome.hasCode(0),
                failure("GetModuleHandleA", code, 126), failure("GetProcAddress", code, 127),
                failure("LookupAccount(Sid|Name)W", code, 122),
                value("GetModuleHandleW|GetProcAddress|OpenProcessToken|LookupPrivilegeValueA"
                        + "|AdjustTokenPrivileges|GetVersionEx[AW]", "null"));
    }

    @TestFactory
    List<DynamicTest> drivesAndDirectories() {
        FaultSweep sweep = sweep();
        sweep.add("getPartitionFreeSpace", -30004, () -> files.getPartitionFreeSpace(DRIVE) > 0)
                .accepts(value("GetModuleHandleA|GetProcAddress", "true"));
        sweep.add("getPartitionNames", ServiceException.UNEXPECTED, files::getPartitionNames)
                .accepts(value("GetLogicalDriveStrings[AW]", "[]"));
        sweep.add("getPartitionType", ServiceException.UNEXPECTED, () -> files.getPartitionType(DRIVE))
                .accepts(value("GetDriveTypeA", "-1"));
        sweep.add("getPartitionFormat", -30010, () -> files.getPartitionFormat(DRIVE));
        sweep.add("supportsLongFileNames", -30015, () -> files.supportsLongFileNames(DRIVE));
        sweep.add("getTempDirectory", -60002, files::getTempDirectory)
                .accepts(failure("GetTempPath[AW]", -60002, 3));
        sweep.add("win32GetWindowsDirectory", -60000, files::win32GetWindowsDirectory)
                .accepts(value("GetWindowsDirectory[AW]", ""));
        sweep.add("getLibraryDirectory", ServiceException.UNEXPECTED, files::getLibraryDirectory)
                .accepts(value("GetSystemDirectory[AW]|GetFileAttributes[AW]", ""));
        sweep.add("getStandardInstallDirectory", -60001, files::getStandardInstallDirectory);
        sweep.add("win32GetCommonDirectory", -30022, files::win32GetCommonDirectory)
                .accepts(value("Reg.*|WideCharToMultiByte|MultiByteToWideChar", ""));
        sweep.add("win32GetVPDDirectory", -30023, files::win32GetVPDDirectory)
                .accepts(any(value("Reg.*|WideCharToMultiByte|MultiByteToWideChar", ""),
                        value("Reg.*|GetTempFileNameA|DeleteFileA", System.getenv("APPDATA"))));
        sweep.add("isDirectoryWritable", ServiceException.UNEXPECTED, () -> files.isDirectoryWritable(top))
                .accepts(value("CreateFile[AW]|FormatMessage[AW]", "false"));
        sweep.add("win32EnableAbort", ServiceException.UNEXPECTED, () -> files.win32EnableAbort(true))
                .allows(state -> true);
        return sweep.on(Windows.W98, Windows.W10);
    }

    @TestFactory
    List<DynamicTest> theSystem() {
        FaultSweep sweep = sweep();
        Win32SystemUtilServiceImpl system = new Win32SystemUtilServiceImpl();
        sweep.add("getOSServiceLevel", -70005, system::getOSServiceLevel)
                .accepts(failure("GetVersionEx[AW]", -70005, 87));
        sweep.add("isWinNTor2K", ServiceException.UNEXPECTED, system::isWinNTor2K)
                .accepts((failed, outcome, state) -> failed.startsWith("GetVersionEx"));
        sweep.add("isWinME", ServiceException.UNEXPECTED, system::isWinME)
                .accepts((failed, outcome, state) -> failed.startsWith("GetVersionEx"));
        sweep.add("getBootDirectory", -70009, system::getBootDirectory)
                .accepts(failure("GetDriveType[AW]", -70009, 0xFFFFFFFFL));
        sweep.addVoid("setProcessAffinity", ServiceException.UNEXPECTED,
                () -> new Win32WizardInitializeServiceImpl().setProcessAffinity())
                .meets(version -> Hooks.answer("SetProcessAffinityMask", 1))
                .accepts(value("GetModuleHandleA|GetProcAddress|SetProcessAffinityMask", "null"));
        return sweep.on(Windows.W98, Windows.W10);
    }

    @TestFactory
    List<DynamicTest> foldersAndShortcuts() {
        FaultSweep sweep = sweep();
        // What was made is removed again, unless what failed is the text for the shell.
        sweep.addVoid("createDesktopFolder", -80000, () -> desktop.createDesktopFolder(top, "new\\folder"))
                .accepts(failure("GetFileAttributes[AW]", -80000, 2));
        sweep.addVoid("removeDesktopFolder", -80001, () -> desktop.removeDesktopFolder(top, "empty\\inner"))
                .accepts(value("GetFileAttributes[AW]|RemoveDirectoryA", "null"))
                .allows(state -> !folder.has("empty\\inner") && folder.has("empty"));
        sweep.addVoid("createDesktopItem", -80002,
                () -> desktop.createDesktopItem(top, "new", "app", "C:\\app.exe", "-a", "C:\\app.ico", "C:\\"))
                .accepts(any(failure("CoCreateInstance|I.*", -80002, E_ACCESSDENIED),
                        failure("GetFileAttributes[AW]", -80002, 2),
                        value("IShellLinkA::SetIconLocation", "null")))
                .allows(state -> folder.has("new"));
        sweep.addVoid("removeDesktopItem", -80003, () -> desktop.removeDesktopItem(top, "full", "app"))
                .accepts(value("GetFileAttributes[AW]|RemoveDirectoryA|SHGetSpecialFolderPathA", "null"))
                .allows(state -> !folder.has("full\\app.lnk") || folder.has("full"));
        sweep.addVoid("removeDesktopItem of a token", -80003,
                () -> desktop.removeDesktopItem("$AllUsersDesktop$", "", "corvane none"))
                .accepts(any(value("GetFileAttributes[AW]", "null"),
                        failure("SHGetSpecialFolderLocation", -80003, E_ACCESSDENIED),
                        failure("SHGetPathFromIDListA", -80003, BAD_ARGUMENTS)));
        return sweep.on(Windows.W98, Windows.W10);
    }

    private static FaultSweep.Judge attributes(int code) {
        return failure("FindClass|GetMethodID|GetStaticFieldID", code, E_FAIL);
    }

    @TestFactory
    List<DynamicTest> ownersAndAttributesOfShortcuts() {
        FaultSweep sweep = sweep();
        FileAttributes none = new FileAttributes();
        String admins = "Administrators";
        sweep.add("getDesktopItemOwnerGroup", -80010, () -> desktop.getDesktopItemOwnerGroup(top, "full", "app"))
                .accepts(owner(-80010));
        sweep.addVoid("setDesktopItemOwnerGroup", -80011,
                () -> desktop.setDesktopItemOwnerGroup(top, "full", "app", admins)).accepts(owner(-80011));
        sweep.add("getDesktopItemOwner", -80012, () -> desktop.getDesktopItemOwner(top, "full", "app"))
                .accepts(owner(-80012));
        sweep.addVoid("setDesktopItemOwner", -80013,
                () -> desktop.setDesktopItemOwner(top, "full", "app", admins)).accepts(owner(-80013));
        sweep.add("getDesktopFolderOwnerGroup", -80014, () -> desktop.getDesktopFolderOwnerGroup(top, "full"))
                .accepts(owner(-80014));
        sweep.addVoid("setDesktopFolderOwnerGroup", -80015,
                () -> desktop.setDesktopFolderOwnerGroup(top, "full", admins)).accepts(owner(-80015));
        sweep.add("getDesktopFolderOwner", -80016, () -> desktop.getDesktopFolderOwner(top, "full"))
                .accepts(owner(-80016));
        sweep.addVoid("setDesktopFolderOwner", -80017,
                () -> desktop.setDesktopFolderOwner(top, "full", admins)).accepts(owner(-80017));
        sweep.add("getDesktopItemAttributes", -80018, () -> {
            FileAttributes read = desktop.getDesktopItemAttributes(top, "full", "app");
            return read.getAttributeState(FileAttributes.OWNER_READABLE);
        }).accepts(attributes(-80018));
        sweep.addVoid("setDesktopItemAttributes", -80019,
                () -> desktop.setDesktopItemAttributes(top, "full", "app", none)).accepts(attributes(-80019));
        sweep.add("getDesktopFolderAttributes", -80020, () -> {
            FileAttributes read = desktop.getDesktopFolderAttributes(top, "full");
            return read.getAttributeState(FileAttributes.OWNER_READABLE);
        }).accepts(attributes(-80020));
        sweep.addVoid("setDesktopFolderAttributes", -80021,
                () -> desktop.setDesktopFolderAttributes(top, "full", none)).accepts(attributes(-80021));
        return sweep.on(Windows.W98, Windows.W10);
    }

    private static final String LIST = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall";
    private static final String TOKEN_CALLS = "GetModuleHandleW|LoadLibraryW|GetProcAddress|Open.*Token"
            + "|GetTokenInformation|AllocateAndInitializeSid|EqualSid|malloc|calloc|GetVersionExA";

    private final Win32RegistryServiceImpl registry = new Win32RegistryServiceImpl();

    /** The entry of the product for all users and for the user; each with the number of its values. */
    private String entries() {
        StringBuilder entries = new StringBuilder();
        for (int root : new int[] {4, 3}) {
            entries.append(Outcome.of(() -> registry.countValuesInKey(root, LIST + "\\Corvane sweep")).value())
                    .append(' ');
        }
        return entries.toString();
    }

    private void dropEntries() {
        for (int root : new int[] {4, 3}) {
            Outcome.ofVoid(() -> registry.deleteKey(root, LIST, "Corvane sweep", false));
        }
    }

    /** Who is taken for an ordinary user has a list of their own; an entry may have been begun. */
    @TestFactory
    List<DynamicTest> theListOfPrograms() {
        Win32ProductServiceImpl product = new Win32ProductServiceImpl();
        FaultSweep adding = new FaultSweep(this::dropEntries, this::entries);
        adding.addVoid("win32RegisterUninstaller", -90000,
                () -> product.win32RegisterUninstaller("Corvane sweep", "name", "command"))
                .accepts(value(TOKEN_CALLS, "null")).allows(state -> state.matches("[01] null |null 2 "));
        FaultSweep removing = new FaultSweep(() -> {
            dropEntries();
            Outcome.ofVoid(() -> registry.createKey(4, LIST, "Corvane sweep"));
        }, this::entries);
        removing.addVoid("win32UnregisterUninstaller", -90001,
                () -> product.win32UnregisterUninstaller("Corvane sweep", "Corvane sweep 2"))
                .accepts(value(TOKEN_CALLS + "|GetModuleHandleA|DuplicateHandle|NtQueryValueKey", "null"));
        List<DynamicTest> tests = new ArrayList<>(adding.on(Windows.W98, Windows.W10));
        tests.addAll(removing.on(Windows.W98, Windows.W10));
        tests.add(DynamicTest.dynamicTest("the list is left as it was", this::dropEntries));
        return tests;
    }
}
