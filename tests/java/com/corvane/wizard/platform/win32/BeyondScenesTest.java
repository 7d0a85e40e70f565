package com.corvane.wizard.platform.win32;

import static com.corvane.testing.Outcome.assertFails;
import static com.corvane.testing.RawRegistry.KEY;
import static com.corvane.wizard.platform.win32.Win32RegistryServiceImpl.HKEY_CURRENT_USER;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.corvane.testing.Bytes;
import com.corvane.testing.Folder;
import com.corvane.testing.Hooks;
import com.corvane.testing.Outcome;
import com.corvane.testing.Plan;
import com.corvane.testing.RawRegistry;
import com.corvane.testing.TestBed;
import com.corvane.testing.Windows;
import com.corvane.util.FileAttributes;
import com.corvane.wizard.platform.win32.security.WindowsAccountPrivilegeServiceImpl;
import com.corvane.wizard.platform.win32.win32service.NTServiceConfig;
import com.corvane.wizard.platform.win32.win32service.NTServiceStatus;
import com.corvane.wizard.platform.win32.win32service.Win2kSCAction;
import com.corvane.wizard.platform.win32.win32service.Win2kServiceStatusProcess;
import com.corvane.wizard.service.ServiceException;
import com.sun.jna.platform.win32.WinNT;
import com.sun.jna.platform.win32.Winsvc;
import java.lang.reflect.Field;
import java.util.Collections;
import java.util.List;
import java.util.concurrent.Callable;
import java.util.concurrent.ExecutorService;
import java.util.concurrent.Executors;
import java.util.concurrent.Future;
import java.util.stream.Collectors;
import java.util.stream.Stream;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.extension.ExtendWith;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.CsvSource;
import org.junit.jupiter.params.provider.EnumSource;

/** What no scene can say: hundreds of things, other threads, and what Java alone says. */
@ExtendWith(TestBed.class)
class BeyondScenesTest {

    private final Win32RegistryServiceImpl registry = new Win32RegistryServiceImpl();
    private final Win32FileServiceImpl files = new Win32FileServiceImpl();
    private final Win32ServiceImpl services = new Win32ServiceImpl();
    private final Folder folder = Folder.named("beyond");

    @Test
    void depthCostsNoStack() throws Exception {
        RawRegistry.createKey(KEY + "\\tree" + "\\d".repeat(1500));
        Hooks.disarm();
        registry.deleteKey(HKEY_CURRENT_USER, KEY, "tree", true);
        assertFalse(registry.keyExists(HKEY_CURRENT_USER, KEY + "\\tree"));
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void deepTreesAndManyFilesAreDeleted(Windows system) throws Exception {
        folder.file("d" + "/n".repeat(59) + "/file", "");
        for (int number = 0; number < 500; ++number) {
            folder.file("d/" + number % 40 + "/" + number, "");
        }
        Plan.begin(system, "");
        assertEquals(0, files.win32DeleteDirectory(folder.path("d"), false, true));
        assertFalse(folder.has("d"));
    }

    @Test
    void threadsDoNotDisturbEachOther() throws Exception {
        RawRegistry.set(KEY, "a text", 1, Bytes.utf16("x\0"));
        Callable<Void> work = () -> {
            String name = Thread.currentThread().getName();
            for (int round = 0; round < 200; ++round) {
                String text = (name + " round " + round + ";").repeat(1 + round % 40);
                registry.setStringValue(HKEY_CURRENT_USER, KEY, name, false, text);
                assertEquals(text, registry.getStringValue(HKEY_CURRENT_USER, KEY, name, false));
                assertFails(-100008, 1804, () -> registry.get32BitValue(HKEY_CURRENT_USER, KEY, "a text"));
            }
            return null;
        };
        ExecutorService threads = Executors.newFixedThreadPool(4);
        for (Future<Void> done : threads.invokeAll(Collections.nCopies(4, work))) {
            done.get();
        }
        threads.shutdown();
    }

    @ParameterizedTest
    @CsvSource({"'Denied.\r\n (5)', 5", "'x86 (32-bit) or x64 (64-bit). (216)', 216",
        "' (2147942414)', 0x8007000E", "(5), 0", "Denied (5)., 0", "Denied (x), 0", "Denied (4294967296), 0", "'', 0", ", 0"})
    void anExceptionTellsTheErrorAsANumberAndItsCodeInItsText(String message, long reason) {
        ServiceException exception = new ServiceException(-5, message);
        assertEquals((int) reason, exception.getReason());
        assertEquals(ServiceException.class.getName() + ": -5" + (message == null ? "" : ": " + message),
                exception.toString());
    }

    /** What is set stays set, and what is cleared cleared. */
    @Test
    void aStateOfAFileIsSetAndCleared() {
        FileAttributes attributes = new FileAttributes();
        for (boolean state : new boolean[] {true, true, false, false}) {
            attributes.setAttributeState(FileAttributes.HIDDEN, state);
            assertEquals(state, attributes.getAttributeState(FileAttributes.HIDDEN));
        }
    }

    /** Callers have them compiled into their own classes. */
    @Test
    void theConstantsKeepTheirValues() {
        assertEquals("ARCHIVE=1024 DONE=0 DONE_AT_REBOOT=1 FLAG_DEBUG=1 FLAG_PATCHED=4 FLAG_PRERELEASE=2 "
                + "FLAG_PRIVATE_BUILD=8 FLAG_SPECIAL_BUILD=32 GROUP_EXECUTABLE=32 GROUP_READABLE=8 GROUP_WRITEABLE=16 "
                + "HIDDEN=512 HKEY_CLASSES_ROOT=1 HKEY_CURRENT_CONFIG=2 HKEY_CURRENT_USER=3 HKEY_LOCAL_MACHINE=4 "
                + "HKEY_USERS=5 LOG_ON_AS_BATCH_JOB=SeBatchLogonRight LOG_ON_AS_SERVICE=SeServiceLogonRight "
                + "LOG_ON_FROM_NETWORK=SeNetworkLogonRight LOG_ON_LOCALLY=SeInteractiveLogonRight "
                + "OPERATION_NOT_SUPPORTED=-1 OWNER_EXECUTABLE=4 OWNER_READABLE=1 OWNER_WRITEABLE=2 PARTITION_CD=4 "
                + "PARTITION_FIXED=1 PARTITION_RAM_DISK=5 PARTITION_REMOTE=3 PARTITION_REMOVABLE=2 PARTITION_UNKNOWN=-1 "
                + "REG_BINARY=3 REG_DWORD=4 REG_EXPAND_SZ=2 REG_MULTI_SZ=7 REG_SZ=1 SIGNATURE=-17890115 SYSTEM=2048 "
                + "TYPE_APPLICATION=1 TYPE_DRIVER=3 TYPE_FONT=4 TYPE_LIBRARY=2 UNEXPECTED=-2147467259 WINDOW_HIDDEN=0 "
                + "WINDOW_MAXIMIZED=3 WINDOW_MINIMIZED=2 WINDOW_NORMAL=1 WORLD_EXECUTABLE=256 WORLD_READABLE=64 "
                + "WORLD_WRITEABLE=128",
                Stream.of(Win32FileServiceImpl.class, FileAttributes.class, Win32RegistryServiceImpl.class,
                        ProcessRequest.class, WindowsFixedFileInfo.class, WindowsAccountPrivilegeServiceImpl.class,
                        ServiceException.class).flatMap(type -> Stream.of(type.getFields()))
                        .map(constant -> constant.getName() + "=" + Outcome.sure(() -> constant.get(null))).sorted()
                        .collect(Collectors.joining(" ")));
    }

    /** They have the values of these names in Windows' own headers, as JNA tells them. */
    @Test
    void theConstantsOfServicesAreTheSystems() throws ReflectiveOperationException {
        for (Class<?> type : List.of(NTServiceConfig.class, NTServiceStatus.class, Win2kServiceStatusProcess.class,
                Win2kSCAction.class, Win32ServiceImpl.class)) {
            for (Field constant : type.getFields()) {
                Field theirs = Stream.of(Winsvc.class, WinNT.class).flatMap(all -> Stream.of(all.getFields()))
                        .filter(other -> other.getName().equals(constant.getName())).findAny().orElse(constant);
                assertTrue(constant != theirs || constant.getName().equals("SERVICE_NO_CHANGE"), constant.toString());
                assertEquals(theirs.getInt(null), constant.getInt(null), constant.toString());
            }
        }
    }

    /** Each in its own place: no file of the system has something in all of them. */
    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void aVersionHasAllItsFields(Windows system) throws Exception {
        Plan.begin(system, "GetFileVersionInfoSize: 92, 1 n7; GetFileVersionInfo: 1, 3 x5C0034000000 "
                + "x560053005F00560045005200530049004F004E005F0049004E0046004F00 x00000000 n0xFEEF04BD "
                + "n2 n3 n4 n5 n6 n7 n8 n9 n10 n11 n12 n13");
        WindowsFixedFileInfo info = services.getFixedFileInfo("C:\\any");
        assertEquals(0xFEEF04BD, info.getSignature());
        int value = 1;
        for (String field : List.of("StrucVersion", "FileVersionMS", "FileVersionLS", "ProductVersionMS",
                "ProductVersionLS", "FileFlagsMask", "FileFlags", "FileOS", "FileType", "FileSubtype", "FileDateMS",
                "FileDateLS")) {
            assertEquals(++value, WindowsFixedFileInfo.class.getMethod("get" + field).invoke(info), field);
        }
    }
}
