package com.corvane.wizard.platform.win32;

import static com.corvane.testing.Outcome.assertFails;
import static com.corvane.wizard.platform.win32.RegistryFixture.HKCU;
import static com.corvane.wizard.platform.win32.RegistryFixture.KEY;
import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.corvane.testing.Bytes;
import com.corvane.testing.Call;
import com.corvane.testing.Folder;
import com.corvane.testing.Hooks;
import com.corvane.testing.Outcome;
import com.corvane.testing.RawRegistry;
import com.corvane.testing.TestBed;
import com.corvane.testing.Windows;
import com.corvane.util.FileAttributes;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.List;
import java.util.concurrent.Callable;
import java.util.concurrent.ExecutorService;
import java.util.concurrent.Executors;
import java.util.concurrent.Future;
import java.util.stream.IntStream;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.extension.ExtendWith;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.EnumSource;

/** What no scene can say: hundreds of things, other threads, and objects of Java's own. */
@ExtendWith(TestBed.class)
class BeyondScenesTest {

    private final Win32RegistryServiceImpl registry = new Win32RegistryServiceImpl();
    private final Win32FileServiceImpl files = new Win32FileServiceImpl();
    private final Folder folder = Folder.named("beyond");

    private static void begin(Windows system) {
        Hooks.reset();
        system.use();
        Hooks.arm();
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void threeHundredNamesAreListed(Windows system) throws Exception {
        String[] names = IntStream.range(0, 300).mapToObj(index -> String.format("name %03d", index))
                .toArray(String[]::new);
        for (String name : names) {
            RawRegistry.createKey(KEY + "\\keys\\" + name);
            RawRegistry.set(KEY + "\\values", name, 4, Bytes.number(1));
        }
        String enumValue = system.function("RegEnumValue");
        begin(system);
        Hooks.capture(enumValue, 3, 4);
        assertArrayEquals(names, registry.getKeyValueNames(HKCU, KEY + "\\values"));
        assertArrayEquals(names, registry.getSubkeyNames(HKCU, KEY + "\\keys"));
        List<Call> values = Call.of(enumValue);
        List<Call> keys = Call.of(system.function("RegEnumKey"));
        assertEquals(List.of(301, 301), List.of(values.size(), keys.size()));
        for (int index = 0; index <= 300; ++index) {
            assertEquals(List.of(index, index), List.of(values.get(index).number(1), keys.get(index).number(1)));
            assertEquals(1024, values.get(index).numberAt(3), "the room for each name");
        }
    }

    /** Also when it is the key that is named, and whether it leads anywhere or not. */
    @Test
    void aLinkGoesAndWhereItLeadsStays() throws Exception {
        RegistryFixture.fill();
        begin(Windows.W10);
        String targets = RawRegistry.dump(KEY + "\\tree");
        for (String target : new String[] {"\\tree", "\\tree\\branch\\leaf", "\\missing", ""}) {
            for (String link : new String[] {"\\product\\deep\\link", "\\alias", "\\another"}) {
                RawRegistry.createLink(KEY + link, KEY + target);
            }
            for (String name : new String[] {"product", "alias", "another\\\\"}) {
                registry.deleteKey(HKCU, KEY, name, true);
            }
            assertArrayEquals(new String[] {"second", "tree"}, registry.getSubkeyNames(HKCU, KEY));
            assertEquals(targets, RawRegistry.dump(KEY + "\\tree"));
        }
    }

    @Test
    void depthCostsNoStack() throws Exception {
        RawRegistry.createKey(KEY + "\\tree" + "\\d".repeat(1500));
        begin(Windows.W10);
        Hooks.disarm();
        registry.deleteKey(HKCU, KEY, "tree", true);
        assertFalse(registry.keyExists(HKCU, KEY + "\\tree"));
    }

    /** Whatever bytes of the heap lie beside it. */
    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void anEmptyTextIsStoredAsOneZero(Windows system) throws Exception {
        RawRegistry.createKey(KEY);
        begin(system);
        for (int round = 0; round < 20; ++round) {
            registry.setStringValue(HKCU, KEY, "v", false, "");
            assertArrayEquals(new byte[system.isAnsi() ? 2 : 1], RawRegistry.data(KEY, "v"));
        }
    }

    @Test
    void theKindsOfDrivesHaveNames() throws Exception {
        int[] kinds = {Win32FileServiceImpl.PARTITION_UNKNOWN, Win32FileServiceImpl.PARTITION_UNKNOWN,
            Win32FileServiceImpl.PARTITION_REMOVABLE, Win32FileServiceImpl.PARTITION_FIXED,
            Win32FileServiceImpl.PARTITION_REMOTE, Win32FileServiceImpl.PARTITION_CD,
            Win32FileServiceImpl.PARTITION_RAM_DISK};
        for (int kind = 0; kind < kinds.length; ++kind) {
            begin(Windows.W10);
            Hooks.answer("GetDriveTypeA", kind);
            assertEquals(kinds[kind], files.getPartitionType("D:\\"));
        }
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void aHundredNamesAreTriedForAProbe(Windows system) throws Exception {
        String create = system.function("CreateFile");
        begin(system);
        Hooks.captureText(create, 0);
        for (int nth = 1; nth <= 100; ++nth) {
            Hooks.fail(create, nth, nth % 2 == 0 ? 80 : 183);
        }
        assertEquals(true, files.isDirectoryWritable(folder.path("")));
        assertEquals(folder.path("zq_test99.txt"), Call.of(create).get(99).text(0));
        assertEquals(100, Call.of(create).size());
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void deepTreesAndManyFilesAreDeleted(Windows system) throws Exception {
        folder.file("d" + "/n".repeat(59) + "/file", "");
        begin(system);
        assertEquals(0, files.win32DeleteDirectory(folder.path("d"), false, true));
        assertFalse(folder.has("d"));
        assertEquals(60, Hooks.peakSearches());
        for (int number = 0; number < 40; ++number) {
            folder.folder("d/" + number);
        }
        for (int number = 0; number < (system.isAnsi() ? 500 : 10_000); ++number) {
            folder.bare("d/" + number % 40, Integer.toString(number));
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
                    registry.setStringValue(HKCU, KEY, name, false, text);
                    assertEquals(text, registry.getStringValue(HKCU, KEY, name, false));
                    assertFails(-100008, 1804, () -> registry.get32BitValue(HKCU, KEY, "a text"));
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
        List<String> came = new ArrayList<>();
        Thread thread = new Thread(() -> {
            begin(Windows.W10);
            Hooks.captureText("SHChangeNotify", 2);
            for (String name : List.of("n0", "n1")) {
                came.add(Outcome.ofVoid(() ->
                        desktop.createDesktopItem(folder.path(""), "", name, "C:\\x.exe", "", "", "")).toString());
            }
            Hooks.disarm();
        });
        thread.start();
        thread.join();
        assertEquals(List.of("returned nothing", "returned nothing"), came);
        List<Call> told = Call.of("SHChangeNotify");
        assertEquals(List.of(8, 2, 8, 2), told.stream().map(call -> call.number(0)).toList());
        for (int index = 0; index < 2; ++index) {
            String shortcut = folder.path("n" + index + ".lnk");
            assertTrue(folder.has("n" + index + ".lnk"));
            assertEquals(shortcut, told.get(2 * index + 1).text(2));
        }
        assertEquals(List.of(2, 2), List.of(Call.of("CoInitialize").size(), Call.of("CoUninitialize").size()));
    }

    @Test
    void whatAJavaMethodThrowsIsWhatJavaSees() {
        FileAttributes throwing = new FileAttributes() {
            @Override
            public boolean getAttributeState(int attribute) {
                throw new IllegalStateException("mine");
            }
        };
        begin(Windows.W10);
        Outcome outcome = Outcome.ofVoid(() -> files.setFileAttributes(folder.file("file", ""), throwing));
        assertEquals("java.lang.IllegalStateException: mine", outcome.toString());
        assertEquals(List.of(), Call.of("SetFileAttributesW"));
    }

    @Test
    void aRealFileHasAnOwner() throws Exception {
        begin(Windows.W10);
        String file = folder.file("file", "f");
        String owner = Files.getOwner(Path.of(file)).getName();
        assertEquals(owner.substring(owner.lastIndexOf('\\') + 1), files.getFileOwner(file));
    }
}
