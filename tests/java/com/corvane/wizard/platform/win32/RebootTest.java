package com.corvane.wizard.platform.win32;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.corvane.testing.FileUser;
import com.corvane.testing.Folder;
import com.corvane.testing.Hooks;
import com.corvane.testing.Outcome;
import com.corvane.testing.Reboot;
import com.corvane.testing.TestBed;
import com.corvane.testing.Windows;
import com.corvane.wizard.service.ServiceException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.List;
import java.util.Map;
import java.util.TreeMap;
import org.junit.jupiter.api.DynamicTest;
import org.junit.jupiter.api.TestFactory;
import org.junit.jupiter.api.extension.ExtendWith;

/**
 * Files that another process has in use, and what is left of them after a start of Windows. One start
 * serves all cases of a test: each has a folder of its own.
 */
@ExtendWith(TestBed.class)
class RebootTest {

    private static final int READERS = FileUser.WITH_READERS;
    private static final int READERS_AND_DELETERS = FileUser.WITH_READERS_AND_DELETERS;

    private final Win32FileServiceImpl files = new Win32FileServiceImpl();
    private final List<DynamicTest> checks = new ArrayList<>();
    private int count;

    private interface Native {
        int call(Folder folder) throws ServiceException;
    }

    private Folder newFolder(String name) {
        return Folder.named("reboot " + ++count + " " + name);
    }

    private void start() throws Exception {
        Hooks.disarm();
        Reboot.now();
        assertEquals(List.of(), Reboot.pending());
    }

    /** Makes this the system; the first call of each of these functions fails: "CopyFileW=32 MoveFileExW=5". */
    private static void plan(Windows system, String failures) {
        Hooks.reset();
        system.use();
        for (String failure : failures.isEmpty() ? new String[0] : failures.split(" ")) {
            String[] parts = failure.split("=");
            Hooks.fail(parts[0], 1, Integer.parseInt(parts[1]));
        }
    }

    /** A case with "source", "target" and "tree", in which another process has one file open. */
    private void inUse(Windows system, String name, String file, int sharing, String failures, Native call,
            String before, String after) throws Exception {
        Folder folder = newFolder(system + " " + name);
        folder.file("source", "new");
        folder.file("target", "old");
        folder.file("tree/clean/leaf", "l");
        folder.file("tree/used/leaf", "l");
        FileUser.opens(folder.path(file), sharing).during(() -> {
            plan(system, failures);
            Hooks.arm();
            assertEquals(1, call.call(folder), folder.path(""));
            Hooks.disarm();
        });
        assertEquals(before, shown(folder), folder.path("") + ", before the start");
        checks.add(DynamicTest.dynamicTest(name + " on " + system, () -> assertEquals(after, shown(folder))));
    }

    /** The files with their contents; the parts that no case touches are left out. */
    private static String shown(Folder folder) {
        Map<String, String> state = new TreeMap<>(folder.state());
        state.values().removeIf("a folder"::equals);
        if (state.containsKey("tree\\clean\\leaf")) {
            state.keySet().removeIf(name -> name.startsWith("tree"));
        } else {
            state.keySet().removeIf(name -> !name.startsWith("tree"));
        }
        return state.toString();
    }

    @TestFactory
    List<DynamicTest> whatIsInUseChangesAtTheReboot() throws Exception {
        Reboot.forget();
        Native copy = folder -> files.win32CopyFile(folder.path("source"), folder.path("target"), true);
        Native move = folder -> files.win32MoveFile(folder.path("source"), folder.path("target"), true);
        Native delete = folder -> files.win32DeleteFile(folder.path("target"));
        Native tree = folder -> files.win32DeleteDirectory(folder.path("tree"), false, true);
        Windows nt = Windows.W10;
        inUse(nt, "copy, aside", "target", READERS_AND_DELETERS, "", copy,
                "{source=new, target=new, target.delete_on_reboot=old}", "{source=new, target=new}");
        inUse(nt, "copy, waiting", "target", READERS, "", copy,
                "{source=new, target=old, target.use_on_reboot=new}", "{source=new, target=new}");
        // Windows refuses what Wine does at once: to move onto a file that is open.
        inUse(nt, "move, aside", "target", READERS_AND_DELETERS, "MoveFileExW=5", move,
                "{target=new, target.delete_on_reboot=old}", "{target=new}");
        inUse(nt, "move, waiting", "target", READERS, "", move,
                "{target=old, target.move_on_reboot=new}", "{target=new}");
        inUse(nt, "delete", "target", READERS, "", delete, "{source=new, target=old}", "{source=new}");
        inUse(nt, "tree", "tree\\used\\leaf", READERS, "", tree, "{tree\\used\\leaf=l}", "{}");
        for (Windows old : new Windows[] {Windows.W98, Windows.ME}) {
            inUse(old, "copy", "target", READERS, "", copy,
                    "{source=new, target=old, target.use_on_reboot=new}", "{source=new, target=new}");
            inUse(old, "move", "target", READERS, "DeleteFileA=5", move,
                    "{source=new, target=old}", "{target=new}");
            inUse(old, "move to nothing", "source", READERS, "DeleteFileA=5",
                    folder -> files.win32MoveFile(folder.path("source"), "", false),
                    "{source=new, target=old}", "{target=old}");
            inUse(old, "delete", "target", READERS, "", delete, "{source=new, target=old}", "{source=new}");
            inUse(old, "tree", "tree\\used\\leaf", READERS, "", tree, "{tree\\used\\leaf=l}", "{}");
        }
        start();
        return checks;
    }

    @TestFactory
    List<DynamicTest> aRunningProgramIsReplaced() throws Exception {
        Reboot.forget();
        Folder folder = newFolder("program");
        String source = folder.file("new.exe", "new");
        String program = folder.path("program.exe");
        Files.copy(Path.of(FileUser.PROGRAM), Path.of(program));
        FileUser.runs(program).during(() -> assertEquals(1, files.win32CopyFile(source, program, true)));
        start();
        return List.of(DynamicTest.dynamicTest("program",
                () -> assertEquals("{=a folder, new.exe=new, program.exe=new}", folder.state().toString())));
    }

    /** The call ends before its n-th call of Windows, for each n; and once it ends as it should. */
    private void powerGoes(Windows system, String name, String failures, boolean moves, Native call) {
        int calls = withPower(Integer.MAX_VALUE, system, name, failures, moves, call);
        for (int nth = 1; nth <= calls; ++nth) {
            withPower(nth, system, name, failures, moves, call);
        }
    }

    private int withPower(int until, Windows system, String name, String failures, boolean moves, Native call) {
        Folder folder = newFolder("power");
        folder.file("source", "new");
        folder.file("target", "old");
        plan(system, failures);
        Hooks.failFrom(until);
        Hooks.arm();
        Outcome.of(() -> call.call(folder));
        Hooks.disarm();
        checks.add(DynamicTest.dynamicTest(name + " on " + system + " until call " + until,
                () -> assertWhole(folder, moves, system.isAnsi())));
        return Hooks.failable(false);
    }

    /** On Windows 9x, the target of a move is deleted first: the new file is whole then. */
    private static void assertWhole(Folder folder, boolean moves, boolean deletesFirst) {
        Map<String, String> state = folder.state();
        boolean source = "new".equals(state.get("source"))
                || moves && (state.get("target") + state.get("target.move_on_reboot")).contains("new");
        boolean target = List.of("old", "new").contains(state.getOrDefault("target", ""))
                || !state.containsKey("target") && "old".equals(state.get("target.delete_on_reboot"))
                || moves && deletesFirst && !state.containsKey("target");
        assertTrue(source && target, state.toString());
    }

    @TestFactory
    List<DynamicTest> nothingIsLostWhenThePowerGoes() throws Exception {
        Reboot.forget();
        Native copy = folder -> files.win32CopyFile(folder.path("source"), folder.path("target"), true);
        Native move = folder -> files.win32MoveFile(folder.path("source"), folder.path("target"), true);
        powerGoes(Windows.W10, "copy, aside", "CopyFileW=32", false, copy);
        powerGoes(Windows.W10, "copy, waiting", "CopyFileW=32 MoveFileExW=5", false, copy);
        powerGoes(Windows.W10, "move, aside", "MoveFileExW=32", true, move);
        powerGoes(Windows.W98, "copy", "CopyFileA=32", false, copy);
        powerGoes(Windows.W98, "move", "DeleteFileA=5", true, move);
        start();
        return checks;
    }
}
