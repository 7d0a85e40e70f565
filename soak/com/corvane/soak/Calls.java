package com.corvane.soak;

import com.corvane.util.FileAttributes;
import com.corvane.wizard.platform.win32.Win32DesktopServiceImpl;
import com.corvane.wizard.platform.win32.Win32FileServiceImpl;
import com.corvane.wizard.platform.win32.Win32RegistryServiceImpl;
import com.corvane.wizard.platform.win32.Win32ServiceImpl;
import com.corvane.wizard.platform.win32.Win32SystemUtilServiceImpl;
import com.corvane.wizard.platform.win32.environment.WindowsEnvironment;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.Arrays;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;
import java.util.concurrent.Callable;

/**
 * The natives that may be called as often as one likes, each as a call whose result is always the same.
 *
 * <p>Left out, because each call leaves something open, as promised: isKeyEmpty, countSubKeys, countValuesInKey,
 * longestSubKeyNameLength, longestValueNameLength, longestValueNameData, getSubkeyNames, getKeyValueNames,
 * systemStartupCommands and removeSystemStartupCommand (a key); isCurrentUserAdmin, win32RegisterUninstaller,
 * win32UnregisterUninstaller and all that set an owner or a group (a token); all about rights of accounts, when they
 * fail (a policy). Because they change the machine or wait for others: what changes users, groups, services and stored
 * variables, runs programs, or leaves work to the next start or to the cleaner. Because they change this process:
 * setProcessAffinity and win32EnableAbort.
 */
final class Calls {

    static final int ROOT = Win32RegistryServiceImpl.HKEY_CURRENT_USER;
    private static final String KEY = "Software\\CorvaneSoak";
    private static final String DRIVE = "C:\\";

    final Map<String, Callable<Object>> all = new LinkedHashMap<>();

    private interface Work {
        void run() throws Exception;
    }

    private void add(String natives, Callable<Object> call) {
        all.put(natives, call);
    }

    private void addWork(String natives, Work work) {
        add(natives, () -> {
            work.run();
            return "done";
        });
    }

    /** Another one in each thread. */
    private static String own(String name) {
        return name + Thread.currentThread().getName();
    }

    private static String own(Path folder, String name) {
        return folder.resolve(own(name)).toString();
    }

    Calls(Path folder) throws Exception {
        registry();
        files(folder);
        system();
        services();
        desktop(folder.toString());
    }

    private void registry() throws Exception {
        Win32RegistryServiceImpl registry = new Win32RegistryServiceImpl();
        registry.createKey(ROOT, "Software", "CorvaneSoak");
        addWork("setStringValue", () -> registry.setStringValue(ROOT, KEY, "text", true, "%SystemRoot%\\\u00e9"));
        addWork("setMultiStringValue",
                () -> registry.setMultiStringValue(ROOT, KEY, "list", new String[] {"one", "", "two"}));
        addWork("set32BitValue", () -> registry.set32BitValue(ROOT, KEY, "number", 7));
        addWork("setBinaryValue", () -> registry.setBinaryValue(ROOT, KEY, "bytes", new byte[3000]));
        for (Callable<Object> set : all.values()) {
            set.call();
        }
        add("keyExists, valueExists, getValueType, get32BitValue", () ->
                "" + registry.keyExists(ROOT, KEY) + registry.valueExists(ROOT, KEY, "text")
                + registry.getValueType(ROOT, KEY, "text") + registry.get32BitValue(ROOT, KEY, "number"));
        add("getStringValue", () -> registry.getStringValue(ROOT, KEY, "text", true));
        add("getStringValue, missing", () -> registry.getStringValue(ROOT, KEY, "none", true));
        add("getMultiStringValue", () -> registry.getMultiStringValue(ROOT, KEY, "list"));
        add("getBinaryValue", () -> registry.getBinaryValue(ROOT, KEY, "bytes"));
        addWork("deleteValue", () -> registry.deleteValue(ROOT, KEY, "none", false));
        addWork("createKey, deleteKey", () -> {
            registry.createKey(ROOT, KEY, own("key"));
            registry.deleteKey(ROOT, KEY, own("key"), true);
        });
    }

    private void files(Path folder) throws Exception {
        Win32FileServiceImpl files = new Win32FileServiceImpl();
        String file = Files.writeString(folder.resolve("a long name.txt"), "text").toString();
        FileAttributes attributes = files.getFileAttributes(file);
        add("getFileAttributes", () -> files.getFileAttributes(file));
        addWork("setFileAttributes", () -> files.setFileAttributes(file, attributes));
        addWork("win32SetFileCreated, win32SetFileModified, win32SetFileTimes", () -> {
            String target = own(folder, "file");
            Files.writeString(Path.of(target), "");
            files.win32SetFileCreated(target, 1_000_000_000);
            files.win32SetFileModified(target, 1_000_000_000);
            files.win32SetFileTimes(target, 1_000_000, 2_000_000, 3_000_000);
        });
        add("getFileOwner, getFileOwnerGroup", () -> files.getFileOwner(file) + files.getFileOwnerGroup(file));
        add("win32CopyFile, win32MoveFile, win32DeleteFile", () ->
                "" + files.win32CopyFile(file, own(folder, "copy"), true)
                + files.win32MoveFile(own(folder, "copy"), own(folder, "moved"), true)
                + files.win32DeleteFile(own(folder, "moved")));
        add("win32DeleteDirectory", () -> {
            Files.createDirectories(Path.of(own(folder, "tree"), "in", "it"));
            return files.win32DeleteDirectory(own(folder, "tree"), false, true);
        });
        add("getPartitionFreeSpace", () -> files.getPartitionFreeSpace(DRIVE) > 0);
        add("getPartitionNames, getPartitionType, getPartitionFormat, supportsLongFileNames", () ->
                Arrays.toString(files.getPartitionNames()) + files.getPartitionType(DRIVE)
                + files.getPartitionFormat(DRIVE) + files.supportsLongFileNames(DRIVE));
        add("the places where things go", () -> List.of(files.getTempDirectory(), files.win32GetWindowsDirectory(),
                files.getLibraryDirectory(), files.getStandardInstallDirectory(), files.win32GetCommonDirectory(),
                files.win32GetVPDDirectory()));
        add("isDirectoryWritable", () -> files.isDirectoryWritable(folder.toString()));
        Win32ServiceImpl versions = new Win32ServiceImpl();
        add("getFixedFileInfo", () -> versions.getFixedFileInfo("C:\\windows\\system32\\kernel32.dll"));
        add("getFixedFileInfo, none", () -> versions.getFixedFileInfo(file));
        add("getShortPath", () -> versions.getShortPath(file));
    }

    private void system() {
        Win32SystemUtilServiceImpl system = new Win32SystemUtilServiceImpl();
        add("getOSServiceLevel, isWinNTor2K, isWinME, getBootDirectory", () ->
                system.getOSServiceLevel() + system.isWinNTor2K() + system.isWinME() + system.getBootDirectory());
        WindowsEnvironment environment = new WindowsEnvironment();
        add("setProcessEnvironmentVariable, getProcessEnvironmentVariable", () -> {
            environment.setProcessEnvironmentVariable("soak", "value".repeat(100));
            return environment.getProcessEnvironmentVariable("soak");
        });
        add("winNTGetRawEnvironmentVariable", () -> environment.winNTGetRawEnvironmentVariable("Path", true));
        add("winMEGetRawEnvironmentVariable", () -> environment.winMEGetRawEnvironmentVariable("soak"));
    }

    /** One at a time: Wine's service manager loses handles when several threads ask it, whoever asks. */
    private void addAlone(String natives, Callable<Object> call) {
        add(natives, () -> {
            synchronized (all) {
                return call.call();
            }
        });
    }

    private void services() throws Exception {
        Win32ServiceImpl services = new Win32ServiceImpl();
        String service = services.enumNTServiceKeys(0x30, 3)[0];
        addAlone("enumNTServiceKeys", () -> services.enumNTServiceKeys(0x30, 3));
        addAlone("serviceExists", () -> "" + services.serviceExists(service) + services.serviceExists("none"));
        addAlone("queryNTServiceConfig", () -> services.queryNTServiceConfig(service));
        addAlone("queryNTServiceStatus", () -> services.queryNTServiceStatus(service));
        addAlone("getNTServiceDisplayName, getNTServiceKeyName", () ->
                services.getNTServiceKeyName(services.getNTServiceDisplayName(service)));
        addAlone("queryWin2kServiceDescription", () -> services.queryWin2kServiceDescription(service));
        addAlone("queryWin2kServiceFailureActions", () -> services.queryWin2kServiceFailureActions(service));
        addAlone("queryWin2kServiceStatusProcess", () -> services.queryWin2kServiceStatusProcess(service));
    }

    private static void createItem(Win32DesktopServiceImpl desktop, String folder, String name) throws Exception {
        desktop.createDesktopItem(folder, "", name, "C:\\windows\\notepad.exe", "", "", "");
    }

    private void desktop(String folder) throws Exception {
        Win32DesktopServiceImpl desktop = new Win32DesktopServiceImpl();
        createItem(desktop, folder, "item");
        addWork("createDesktopFolder, removeDesktopFolder", () -> {
            desktop.createDesktopFolder(folder, own("group") + "/inner");
            desktop.removeDesktopFolder(folder, own("group") + "/inner");
        });
        addWork("createDesktopItem, removeDesktopItem", () -> {
            createItem(desktop, folder, own("item"));
            desktop.removeDesktopItem(folder, "", own("item"));
        });
        add("getDesktopItemOwner, getDesktopItemOwnerGroup", () ->
                desktop.getDesktopItemOwner(folder, "", "item") + desktop.getDesktopItemOwnerGroup(folder, "", "item"));
        add("getDesktopItemAttributes", () -> desktop.getDesktopItemAttributes(folder, "", "item"));
        addWork("setDesktopItemAttributes", () ->
                desktop.setDesktopItemAttributes(folder, "", "item", new FileAttributes()));
        add("getDesktopFolderOwner, getDesktopFolderOwnerGroup", () ->
                desktop.getDesktopFolderOwner("$UserDesktop$", "")
                + desktop.getDesktopFolderOwnerGroup("$UserDesktop$", ""));
        add("getDesktopFolderAttributes", () -> desktop.getDesktopFolderAttributes("$UserDesktop$", ""));
        addWork("setDesktopFolderAttributes", () ->
                desktop.setDesktopFolderAttributes(folder, "", desktop.getDesktopFolderAttributes(folder, "")));
    }
}
