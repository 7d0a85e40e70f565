package com.corvane.wizard.platform.win32;

import static org.junit.jupiter.api.Assertions.assertAll;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.corvane.testing.Folder;
import com.corvane.testing.Hooks;
import com.corvane.testing.Outcome;
import com.corvane.testing.Plan;
import com.corvane.testing.Reboot;
import com.corvane.testing.TestBed;
import com.corvane.testing.Windows;
import com.corvane.wizard.service.ServiceException;
import java.nio.channels.FileChannel;
import java.nio.file.OpenOption;
import java.nio.file.Path;
import java.nio.file.StandardOpenOption;
import java.util.ArrayList;
import java.util.List;
import java.util.Map;
import java.util.TreeMap;
import org.junit.jupiter.api.Tag;
import org.junit.jupiter.api.extension.ExtendWith;
import org.junit.jupiter.api.function.Executable;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.CsvSource;
import org.junit.jupiter.params.provider.EnumSource;

/**
 * Files that are in use, and what is left of them after a start of Windows. One start serves all cases of a
 * test: each has a folder of its own.
 */
@ExtendWith(TestBed.class)
@Tag("restart")
class RebootTest {

    /**
     * The system; what is done; the file that is open, and perhaps may be moved meanwhile; the first calls that
     * fail; the files before and after the start. (Windows refuses what Wine does: to move onto an open file.)
     */
    private static final String IN_USE = """
            W10 | copy | target movable | | source=new, target=new, target.delete_on_reboot=old | source=new, target=new
            W10 | copy | target | | source=new, target=old, target.use_on_reboot=new | source=new, target=new
            W10 | move | target movable | MoveFileExW=5 | target=new, target.delete_on_reboot=old | target=new
            W10 | move | target | | target=old, target.move_on_reboot=new | target=new
            W10 | delete | target | | source=new, target=old | source=new
            W10 | tree | tree\\used\\leaf | | tree\\used\\leaf=l |
            W98 | copy | target | | source=new, target=old, target.use_on_reboot=new | source=new, target=new
            W98 | move | target | DeleteFileA=5 | source=new, target=old | target=new
            W98 | lose | target | DeleteFileA=5 | source=new, target=old | source=new
            W98 | delete | target | | source=new, target=old | source=new
            W98 | tree | tree\\used\\leaf | | tree\\used\\leaf=l |
            """;

    private final Win32FileServiceImpl files = new Win32FileServiceImpl();
    /** What must be found after the start. */
    private final List<Executable> checks = new ArrayList<>();

    /** Of a name that no other has: all tests may wait for the same start. It is as it was left when that is over. */
    private Folder newFolder(String name, String call) {
        Folder folder = Folder.named("reboot " + name + " " + checks.size());
        if (Reboot.isOver()) {
            return folder;
        }
        boolean isTree = call.equals("tree");
        folder.file(isTree ? "tree/clean/leaf" : "source", isTree ? "l" : "new");
        folder.file(isTree ? "tree/used/leaf" : "target", isTree ? "l" : "old");
        return folder;
    }

    /** Calls it on this system until the power goes: every call of Windows fails from then on. */
    private int call(Windows system, String call, String failures, int until, Folder folder) throws ServiceException {
        Plan.begin(system, failures);
        Hooks.fail(Hooks.ANY, until, 0, true);
        String source = folder.path("source");
        String target = folder.path("target");
        try {
            return switch (call) {
                case "copy" -> files.win32CopyFile(source, target, true);
                case "move" -> files.win32MoveFile(source, target, true);
                case "lose" -> files.win32MoveFile(target, "", false);
                case "delete" -> files.win32DeleteFile(target);
                default -> files.win32DeleteDirectory(folder.path("tree"), false, true);
            };
        } finally {
            Hooks.disarm();
        }
    }

    /** All files with their contents. */
    private static Map<String, String> state(Folder folder) {
        Map<String, String> state = new TreeMap<>(folder.state());
        state.values().removeIf("a folder"::equals);
        return state;
    }

    /** Nobody but Wine still does what Windows 95, 98 and ME did at their start. */
    private static void begin(Windows family) {
        if (family.isAnsi()) {
            Windows.onlyWine("no Windows of today reads WinInit.Ini at its start");
        }
        Reboot.forget();
    }

    private void start() throws Exception {
        Hooks.reset();
        Reboot.now();
        assertEquals(List.of(), Reboot.pending());
        assertAll(checks);
    }

    @ParameterizedTest
    @EnumSource(names = {"W98", "W10"})
    void whatIsInUseChangesAtTheNextStart(Windows system) throws Exception {
        begin(system);
        for (String row : IN_USE.split("\n")) {
            if (row.startsWith(system.name())) {
                inUse(system, row.split(" *\\| *", -1));
            }
        }
        start();
    }

    private void inUse(Windows system, String[] cells) throws Exception {
        String shown = cells[1] + " on " + system;
        Folder folder = newFolder(shown, cells[1]);
        checks.add(() -> assertEquals("{" + cells[5] + "}", state(folder).toString(), shown));
        if (Reboot.isOver()) {
            return;
        }
        String[] open = cells[2].split(" ");
        OpenOption alsoDenied = open.length > 1 ? StandardOpenOption.READ : JarCopy.option(JarCopy.DENY_DELETE);
        try (FileChannel held = FileChannel.open(Path.of(folder.path(open[0])), StandardOpenOption.READ,
                JarCopy.option(JarCopy.DENY_WRITE), alsoDenied)) {
            assertEquals(1, call(system, cells[1], cells[3], Integer.MAX_VALUE, folder), shown);
            assertTrue(held.isOpen());
        }
        assertEquals("{" + cells[4] + "}", state(folder).toString(), shown + ", before the start");
    }

    /** The call ends before its n-th call of Windows, for each n; and once it ends as it should. */
    private void powerGoes(Windows system, String call, String failures) {
        int calls = Integer.MAX_VALUE;
        for (int until = calls; until > 0; until = Math.min(until - 1, calls)) {
            Folder folder = newFolder(call + " without power " + failures.replaceAll("\\W", ""), call);
            int last = until;
            if (!Reboot.isOver()) {
                Outcome.thrownBy(() -> call(system, call, failures, last, folder));
                calls = Hooks.failable();
            } else if (!folder.has("")) {
                break;
            }
            checks.add(() -> assertWhole(state(folder), call.equals("move"), system.isAnsi()));
        }
    }

    /** On Windows 9x, the target of a move is deleted first: the new file is whole then. */
    private static void assertWhole(Map<String, String> state, boolean moves, boolean deletesFirst) {
        boolean source = "new".equals(state.get("source"))
                || moves && (state.get("target") + state.get("target.move_on_reboot")).contains("new");
        boolean target = List.of("old", "new").contains(state.getOrDefault("target", ""))
                || !state.containsKey("target") && "old".equals(state.get("target.delete_on_reboot"))
                || moves && deletesFirst && !state.containsKey("target");
        assertTrue(source && target, state.toString());
    }

    @ParameterizedTest
    @CsvSource(delimiter = '|', value = {"W10 | copy | CopyFileW=32", "W10 | copy | CopyFileW=32; MoveFileExW=5",
        "W10 | move | MoveFileExW=32", "W98 | copy | CopyFileA=32", "W98 | move | DeleteFileA=5"})
    void nothingIsLostWhenThePowerGoes(Windows system, String call, String failures) throws Exception {
        begin(system);
        powerGoes(system, call, failures);
        start();
    }
}
