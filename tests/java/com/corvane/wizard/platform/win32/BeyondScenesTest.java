package com.corvane.wizard.platform.win32;

import static com.corvane.testing.Outcome.assertFails;
import static com.corvane.testing.RawRegistry.KEY;
import static com.corvane.wizard.platform.win32.Win32RegistryServiceImpl.HKEY_CURRENT_USER;
import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.corvane.testing.Bytes;
import com.corvane.testing.Calls;
import com.corvane.testing.Folder;
import com.corvane.testing.Hooks;
import com.corvane.testing.Outcome;
import com.corvane.testing.Plan;
import com.corvane.testing.RawRegistry;
import com.corvane.testing.TestBed;
import com.corvane.testing.Windows;
import com.corvane.wizard.service.ServiceException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.List;
import java.util.concurrent.Callable;
import java.util.concurrent.ExecutorService;
import java.util.concurrent.Executors;
import java.util.concurrent.Future;
import java.util.concurrent.FutureTask;
import java.util.stream.Collectors;
import java.util.stream.IntStream;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.extension.ExtendWith;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.EnumSource;

/** What no scene can say: hundreds of things, other threads, and what Java alone says. */
@ExtendWith(TestBed.class)
class BeyondScenesTest {

    private final Win32RegistryServiceImpl registry = new Win32RegistryServiceImpl();
    private final Win32FileServiceImpl files = new Win32FileServiceImpl();
    private final Folder folder = Folder.named("beyond");

    /** Each name is asked for by its number, and with room for 1024 characters. */
    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void threeHundredNamesAreListed(Windows system) throws Exception {
        String[] names = IntStream.range(0, 300).mapToObj(index -> String.format("name %03d", index))
                .toArray(String[]::new);
        for (String name : names) {
            RawRegistry.createKey(KEY + "\\keys\\" + name);
            RawRegistry.set(KEY + "\\values", name, 4, Bytes.number(1));
        }
        Plan.begin(system, "");
        assertArrayEquals(names, registry.getKeyValueNames(HKEY_CURRENT_USER, KEY + "\\values"));
        assertArrayEquals(names, registry.getSubkeyNames(HKEY_CURRENT_USER, KEY + "\\keys"));
        for (String function : List.of("RegEnumValue", "RegEnumKey")) {
            List<String> calls = Calls.of(system.function(function));
            assertEquals(301, calls.size());
            for (int index = 0; index < calls.size(); ++index) {
                assertEquals(index + " 0x400", calls.get(index).split(" ", 2)[1].replaceFirst("( 0x400).*", "$1"));
            }
        }
    }

    /** Also when it is the key that is named, and whether it leads anywhere or not. */
    @Test
    void aLinkGoesAndWhereItLeadsStays() throws Exception {
        RawRegistry.createKey(KEY + "\\tree\\branch\\leaf");
        Plan.begin(Windows.W10, "");
        String before = RawRegistry.dump(KEY);
        for (String target : new String[] {"\\tree", "\\tree\\branch\\leaf", "\\missing", ""}) {
            for (String link : new String[] {"\\product\\deep\\link", "\\alias", "\\another"}) {
                RawRegistry.createLink(KEY + link, KEY + target);
            }
            for (String name : new String[] {"product", "alias", "another\\\\"}) {
                registry.deleteKey(HKEY_CURRENT_USER, KEY, name, true);
            }
            assertEquals(before, RawRegistry.dump(KEY));
        }
    }

    @Test
    void depthCostsNoStack() throws Exception {
        RawRegistry.createKey(KEY + "\\tree" + "\\d".repeat(1500));
        Plan.begin(Windows.W10, "");
        Hooks.disarm();
        registry.deleteKey(HKEY_CURRENT_USER, KEY, "tree", true);
        assertFalse(registry.keyExists(HKEY_CURRENT_USER, KEY + "\\tree"));
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void aHundredNamesAreTriedForAProbe(Windows system) throws Exception {
        String create = system.function("CreateFile");
        Plan.begin(system, IntStream.rangeClosed(1, 100).mapToObj(nth -> "CreateFile#" + nth + "=" + (nth % 2 == 0 ? 80 : 183))
                .collect(Collectors.joining("; ")));
        assertTrue(files.isDirectoryWritable(folder.path("")));
        List<String> probes = Calls.of(create);
        assertEquals(100, probes.size());
        assertEquals(create + " " + folder.path("zq_test99.txt"), probes.get(99).replaceFirst("(\\.txt).*", "$1"));
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void deepTreesAndManyFilesAreDeleted(Windows system) throws Exception {
        folder.file("d" + "/n".repeat(59) + "/file", "");
        Plan.begin(system, "");
        assertEquals(0, files.win32DeleteDirectory(folder.path("d"), false, true));
        assertFalse(folder.has("d"));
        assertEquals(60, Hooks.peak("search"));
        for (int number = 0; number < 40; ++number) {
            folder.folder("d/" + number);
        }
        for (int number = 0; number < (system.isAnsi() ? 500 : 10_000); ++number) {
            Files.createFile(Path.of(folder.path("d"), Integer.toString(number % 40), Integer.toString(number)));
        }
        Hooks.disarm();
        assertEquals(0, files.win32DeleteDirectory(folder.path("d"), false, true));
        assertFalse(folder.has("d"));
    }

    @Test
    void threadsDoNotDisturbEachOther() throws Exception {
        List<Callable<Void>> works = new ArrayList<>();
        for (int thread = 0; thread < 4; ++thread) {
            String name = "thread " + thread;
            works.add(() -> {
                for (int round = 0; round < 200; ++round) {
                    String text = (name + " round " + round + ";").repeat(1 + round % 40);
                    registry.setStringValue(HKEY_CURRENT_USER, KEY, name, false, text);
                    assertEquals(text, registry.getStringValue(HKEY_CURRENT_USER, KEY, name, false));
                    assertFails(-100008, 1804, () -> registry.get32BitValue(HKEY_CURRENT_USER, KEY, "a text"));
                }
                return null;
            });
        }
        RawRegistry.set(KEY, "a text", 1, Bytes.utf16("x\0"));
        ExecutorService threads = Executors.newFixedThreadPool(works.size());
        for (Future<Void> work : threads.invokeAll(works)) {
            work.get();
        }
        threads.shutdown();
    }

    /**
     * On a thread without COM it is started for a shortcut, which is announced then, and stopped again: the
     * next shortcut finds it as the first did.
     */
    @Test
    void aThreadWithoutCom() throws Exception {
        Win32DesktopServiceImpl desktop = new Win32DesktopServiceImpl();
        List<String> expected = new ArrayList<>();
        for (String name : List.of("n0", "n1")) {
            expected.addAll(List.of("SHChangeNotify 8 1 " + folder.path("") + "\\ 0",
                    "SHChangeNotify 2 1 " + folder.path(name + ".lnk") + " 0"));
        }
        FutureTask<Void> task = new FutureTask<>(() -> {
            Plan.begin(Windows.W10, "");
            for (String name : List.of("n0", "n1")) {
                desktop.createDesktopItem(folder.path(""), "", name, "C:\\x.exe", "", "", "");
            }
            Hooks.disarm();
            return null;
        });
        new Thread(task).start();
        task.get();
        assertEquals(expected, Calls.of("SHChangeNotify"));
        assertTrue(folder.has("n0.lnk") && folder.has("n1.lnk"));
        assertEquals(List.of(2, 2), List.of(Calls.of("CoInitialize").size(), Calls.of("CoUninitialize").size()));
    }

    @Test
    void aRealFileHasAnOwner() throws Exception {
        Plan.begin(Windows.W10, "");
        String file = folder.file("file", "f");
        String owner = Files.getOwner(Path.of(file)).getName();
        assertEquals(owner.substring(owner.lastIndexOf('\\') + 1), files.getFileOwner(file));
    }

    /** The kinds of drives have names; an exception tells the error as a number, and its code in its text. */
    @Test
    void whatJavaAloneSays() {
        assertEquals(List.of(-1, 2, 1, 3, 4, 5), List.of(Win32FileServiceImpl.PARTITION_UNKNOWN,
                Win32FileServiceImpl.PARTITION_REMOVABLE, Win32FileServiceImpl.PARTITION_FIXED,
                Win32FileServiceImpl.PARTITION_REMOTE, Win32FileServiceImpl.PARTITION_CD,
                Win32FileServiceImpl.PARTITION_RAM_DISK));
        String[] messages = {"Denied.\r\n (5)", " (2147942414)", "(5)", "Denied (5).", "Denied (x)",
            "Denied (4294967296)", ""};
        int[] reasons = {5, 0x8007000E, 0, 0, 0, 0, 0};
        for (int index = 0; index < reasons.length; ++index) {
            assertEquals(reasons[index], new ServiceException(-5, messages[index]).getReason(), messages[index]);
        }
        assertEquals(0, new ServiceException(-5).getReason());
        String name = ServiceException.class.getName();
        assertEquals(name + ": -5: Denied. (7)", new ServiceException(-5, "Denied. (7)").toString());
        assertEquals(name + ": -5", new ServiceException(-5).toString());
    }
}
