package com.corvane.wizard.platform.win32;

import com.corvane.testing.Call;
import com.corvane.testing.FaultSweep;
import com.corvane.testing.Folder;
import com.corvane.testing.Hooks;
import com.corvane.testing.Outcome;
import com.corvane.testing.Reboot;
import com.corvane.testing.TestBed;
import com.corvane.testing.Windows;
import com.corvane.util.FileAttributes;
import java.nio.file.Files;
import java.util.List;
import java.util.Map;
import java.util.concurrent.Callable;
import java.util.function.Consumer;
import java.util.function.Predicate;
import org.junit.jupiter.api.DynamicTest;
import org.junit.jupiter.api.TestFactory;
import org.junit.jupiter.api.extension.ExtendWith;

/**
 * Every call of every native for files fails once. Whatever fails, no content is lost, and a result says
 * what is true.
 */
@ExtendWith(TestBed.class)
class FileSweepTest {

    private static final long E_FAIL = 0x80004005L;

    private final Win32FileServiceImpl files = new Win32FileServiceImpl();
    private final Folder folder = Folder.named("sweep");
    private final String source = folder.path("source");
    private final String target = folder.path("target");

    /** Both files, and in the tree one of each kind. */
    private void fill() {
        Reboot.forget();
        folder.clear();
        folder.file("source", "new");
        folder.file("target", "old");
        folder.setAttributes("target", Folder.READ_ONLY);
        folder.file("tree/file", "f");
        folder.file("tree/sub/leaf", "l");
    }

    private String state() {
        return folder.state() + (isReadOnly() ? " read-only" : "");
    }

    private boolean isReadOnly() {
        return folder.has("target") && (folder.attributes("target") & Folder.READ_ONLY) != 0;
    }

    private String content(String name) {
        return folder.content(name);
    }

    /** The old file is whole, in its place or aside, or the new one has replaced it. */
    private boolean targetIsWhole() {
        String now = content("target");
        boolean aside = "old".equals(content("target.delete_on_reboot"));
        return "old".equals(now) || "new".equals(now) || now == null && aside;
    }

    private boolean sourceIsWhole() {
        Map<String, String> state = folder.state();
        return List.of("source", "target", "target.move_on_reboot").stream()
                .anyMatch(name -> "new".equals(state.get(name)));
    }

    /** 0 tells that it is done, and 1 that something waits; what is raised has the code of the native. */
    private FaultSweep.Judge told(int code, Predicate<Integer> done) {
        return (failed, outcome, state) -> outcome.isException()
                ? outcome.hasCode(code)
                : done.test(Integer.parseInt(outcome.value()));
    }

    private static boolean somethingWaits() {
        return !Reboot.pending().isEmpty() || Files.exists(Reboot.WIN_INIT);
    }

    private static Consumer<Windows> fails(String function, int error) {
        boolean wide = function.endsWith("W");
        return system -> Hooks.fail(wide ? function : system.function(function), 1, error);
    }

    /** {@code done} says whether a result is true. */
    private void add(FaultSweep sweep, String name, int code, Callable<Integer> call,
            Consumer<Windows> meets, Predicate<String> allowed, Predicate<Integer> done) {
        sweep.add(name, code, call).meets(meets).allows(allowed).accepts(told(code, done));
    }

    @TestFactory
    List<DynamicTest> everyCallOfAChangeFails() {
        FaultSweep sweep = new FaultSweep(this::fill, this::state);
        Consumer<Windows> nothing = system -> { };
        Predicate<String> copied = state -> "new".equals(content("source")) && targetIsWhole();
        Predicate<Integer> copyDone = result -> result == 0 && "new".equals(content("target"));
        add(sweep, "copy", -30017, () -> files.win32CopyFile(source, target, true), nothing, copied, copyDone);
        add(sweep, "copy onto a file in use", -30017, () -> files.win32CopyFile(source, target, true),
                fails("CopyFile", 32), copied, result -> result == 0 ? "new".equals(content("target"))
                        : "new".equals(content("target")) || somethingWaits());
        add(sweep, "copy onto a file that does not move", -30017, () -> files.win32CopyFile(source, target, true),
                fails("CopyFile", 32).andThen(fails("MoveFileExW", 5)), copied,
                result -> result == 1 && somethingWaits());
        // On Windows 9x the old file is deleted first; the call answers 0 also where it moves nothing, and 1
        // also where nothing could be written.
        Predicate<String> moved = state -> sourceIsWhole() && (targetIsWhole() || !Call.of("DeleteFileA").isEmpty());
        add(sweep, "move", -30018, () -> files.win32MoveFile(source, target, true), nothing, moved, result -> true);
        add(sweep, "move onto a file in use", -30018, () -> files.win32MoveFile(source, target, true),
                system -> Hooks.fail(system.isAnsi() ? "DeleteFileA" : "MoveFileExW", 1, 5), moved, result -> true);
        add(sweep, "move onto a file that does not move", -30018, () -> files.win32MoveFile(source, target, true),
                system -> {
                    Hooks.fail("MoveFileExW", 1, 32);
                    Hooks.fail("MoveFileExW", 2, 5);
                }, moved, result -> true);
        add(sweep, "delete", -30019, () -> files.win32DeleteFile(source), nothing, state -> true,
                result -> result == 0 ? !folder.has("source") : somethingWaits() && folder.has("source"));
        add(sweep, "delete of a file in use", -30019, () -> files.win32DeleteFile(source), fails("DeleteFile", 32),
                state -> "new".equals(content("source")), result -> result == 1 && somethingWaits());
        Predicate<String> rest = state -> "new".equals(content("source")) && "old".equals(content("target"));
        Predicate<Integer> gone =
                result -> result == 0 ? !folder.has("tree") : somethingWaits() && folder.has("tree");
        add(sweep, "delete of a tree", -30020, () -> files.win32DeleteDirectory(folder.path("tree"), false, true),
                nothing, rest, gone);
        add(sweep, "delete of a tree in use", -30020,
                () -> files.win32DeleteDirectory(folder.path("tree"), false, true), fails("DeleteFile", 32), rest,
                result -> result == 1 && somethingWaits() && "l".equals(content("tree/sub/leaf")));
        add(sweep, "delete of a directory", -30020,
                () -> files.win32DeleteDirectory(folder.path("tree"), true, true), nothing, rest, gone);
        return sweep.on(Windows.W98, Windows.W10);
    }

    /** A look-up in Java's class that fails has no error of Windows. */
    private static boolean hasNoName(int code, String failed, Outcome outcome) {
        return failed.matches("FindClass|GetMethodID|GetStaticFieldID") && outcome.isFailure(code, E_FAIL);
    }

    private FaultSweep.Judge unnoticed(int code) {
        String guard = "[GS]etFileAttributes[AW]|WideCharToMultiByte";
        return (failed, outcome, state) ->
                failed.matches(guard) && !outcome.isException() || outcome.hasCode(code);
    }

    @TestFactory
    List<DynamicTest> everyCallOfAttributesAndTimesFails() {
        FaultSweep sweep = new FaultSweep(this::fill, this::state);
        sweep.add("getFileAttributes", -30000,
                () -> files.getFileAttributes(target).getAttributeState(FileAttributes.OWNER_WRITEABLE))
                .accepts((failed, outcome, state) -> hasNoName(-30000, failed, outcome));
        sweep.addVoid("setFileAttributes", -30001, () -> files.setFileAttributes(target, new FileAttributes()))
                .accepts((failed, outcome, state) -> hasNoName(-30001, failed, outcome));
        // Only where giving it back fails, the file is not read-only any more.
        Predicate<String> kept = state -> "old".equals(content("target"))
                && (isReadOnly() || Hooks.failed().startsWith("SetFileAttributes"));
        sweep.addVoid("win32SetFileCreated", -30011, () -> files.win32SetFileCreated(target, 1L << 56))
                .accepts(unnoticed(-30011)).allows(kept);
        sweep.addVoid("win32SetFileModified", -30016, () -> files.win32SetFileModified(target, 1L << 56))
                .accepts(unnoticed(-30016)).allows(kept);
        sweep.addVoid("win32SetFileTimes", -30007, () -> files.win32SetFileTimes(target, 1L << 56, 0, 1L << 56))
                .accepts(unnoticed(-30007)).allows(kept);
        return sweep.on(Windows.W98, Windows.W10);
    }
}
