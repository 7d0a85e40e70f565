package com.corvane.wizard.platform.win32;

import com.corvane.testing.Call;
import com.corvane.testing.FaultSweep;
import com.corvane.testing.TestBed;
import com.corvane.testing.Windows;
import java.util.ArrayList;
import java.util.List;
import org.junit.jupiter.api.DynamicTest;
import org.junit.jupiter.api.TestFactory;
import org.junit.jupiter.api.extension.ExtendWith;

/**
 * Every call of every native for files fails once. Whatever fails, no content is lost, and a result says
 * what is true.
 */
@ExtendWith(TestBed.class)
class FileSweepTest {

    private static final String TREE = " tree\\file=f tree\\sub\\leaf=l";
    /** Both files, and in the tree one of each kind. */
    private static final String FILES = "source=new target=old,read-only" + TREE;

    /** The work goes on when the attributes are not known or not set, and fails itself where they matter. */
    private static final String[] GUARD = {
        "GetFileAttributes[AW] => good then SetFileAttributes[AW] .* -2",
        "SetFileAttributes[AW] => good then ((Copy|Create|Delete)File[AW]|RemoveDirectory[AW]|GetModuleHandleA kernel32.dll)",
        "SetFileAttributes[AW] => 1 then CreateFileA ~.source",
        "WideCharToMultiByte => good or 1 then GetFileAttributesA", "WideCharToMultiByte => error 1113"};

    /** The list of Windows 9x takes a long name too, and needs not end where it ends. */
    private static final String[] LIST = {
        "GetShortPathNameA => 1 then .*", "(CreateFileMappingA|MapViewOfFile) => error 1450 then SetFilePointer",
        "SetFilePointer => 1", "SetEndOfFile => 1"};

    /** The files of a directory go also when a sub-directory fails; a search that breaks off is over. */
    private static final String[] TREES = {
        "(DeleteFile|RemoveDirectory)[AW] .*tree.sub.* => error 1450 then GetFileAttributes[AW] .*tree.file",
        "FindFirstFile[AW] .*sub.* => error 1450 then GetFileAttributes[AW] .*tree.file",
        "FindNextFile[AW] => good or error 145 then GetFileAttributes[AW]",
        "(GetWindowsDirectoryA|CreateFileA|GetFileSize|GetModuleHandleA|GetProcAddress|MoveFileExW)"
                + " => error 1450 then GetFileAttributes[AW] .*tree.file",
        "SetFilePointer|SetEndOfFile => 1 then FindNextFileA",
        "GetFileAttributes[AW] => good then SetFileAttributes[AW] .* -2"};

    private static boolean isWhole(String name, String content, String state) {
        return state.matches("(.* )?" + name + "=" + content + "[ ,].*");
    }

    /** The old file is whole, in its place or aside, or the new one has replaced it. */
    private static boolean targetIsWhole(String state) {
        return isWhole("target", "(old|new)", state) || isWhole("target.delete_on_reboot", "old", state);
    }

    private static boolean isCopied(String failed, String outcome, String state) {
        boolean done = isWhole("target", "new", state);
        boolean told = outcome.equals("0") ? done : !outcome.equals("1") || done || state.contains(" later: ");
        return told && isWhole("source", "new", state) && targetIsWhole(state) && state.contains(TREE);
    }

    /** On Windows 9x the old file is deleted first; and 1 is the answer also where nothing could be written. */
    private static boolean isMoved(String failed, String outcome, String state) {
        boolean told = outcome.equals("0") ? isWhole("target", "new", state) && !isWhole("source", "new", state)
                : !outcome.equals("1") || isWhole("target", "new", state) || state.contains(" later: ")
                        || failed.matches("(GetWindowsDirectory|CreateFile|GetFileSize|MapView).*");
        boolean deleted = failed.startsWith("MoveFileA") || !Call.of("DeleteFileA").isEmpty();
        return told && (targetIsWhole(state) || deleted) && state.contains(TREE)
                && (isWhole("source", "new", state) || isWhole("target(.move_on_reboot)?", "new", state));
    }

    private static boolean isDeleted(String failed, String outcome, String state) {
        boolean told = outcome.equals("0") ? !state.contains("source=")
                : isWhole("source", "new", state) && (!outcome.equals("1") || state.contains(" later: "));
        return told && state.contains("target=old,read-only" + TREE);
    }

    private static boolean isTreeDeleted(String failed, String outcome, String state) {
        boolean told = outcome.equals("0") ? !state.contains(" tree")
                : state.contains(" tree") && (!outcome.equals("1") || state.contains(" later: "));
        return told && state.startsWith("source=new target=old,read-only");
    }

    @TestFactory
    List<DynamicTest> everyCallOfAChangeFails() {
        String copy = "win32CopyFile ~\\source ~\\target true";
        String move = "win32MoveFile ~\\source ~\\target true";
        String delete = "win32DeleteFile ~\\source";
        String tree = "win32DeleteDirectory ~\\tree ";
        List<DynamicTest> tests = new ArrayList<>();
        for (Windows system : List.of(Windows.W98, Windows.W10)) {
            FaultSweep sweep = new FaultSweep(FILES);
            for (String plan : system.isAnsi() ? List.of("", " with CopyFile=32")
                    : List.of("", " with CopyFile=32", " with CopyFile=32; MoveFileExW=5")) {
                sweep.add(copy + plan, -30017).beside("1").after(GUARD).after(LIST)
                        .after("MoveFileExW ~.target ~.target.delete_on_reboot => 1 then CopyFileW .*use_on_reboot",
                                "CopyFileW ~.source ~.target => error 1450 then MoveFileExW .*on_reboot ~.target",
                                "MoveFileExW .*delete_on_reboot null => 1")
                        .tells(FileSweepTest::isCopied);
            }
            for (String plan : system.isAnsi() ? List.of("", " with DeleteFile=5", " with MoveFileA=5")
                    : List.of("", " with MoveFileExW=5", " with MoveFileExW=32; MoveFileExW#2=5")) {
                sweep.add(move + plan, -30018).beside("-1|1").after(GUARD).after(LIST)
                        .after("CreateFileA .*source .* => good then DeleteFileA",
                                "(GetWindowsDirectoryA|CreateFileA .*WinInit.*|GetFileSize) => 1",
                                "(CreateFileMappingA|MapViewOfFile) => 1 then SetFilePointer")
                        .tells(FileSweepTest::isMoved);
            }
            for (String plan : List.of("", " with DeleteFile=32")) {
                sweep.add(delete + plan, -30019).beside("-1").after(GUARD).after(LIST).tells(FileSweepTest::isDeleted);
                sweep.add(tree + "false true" + plan, -30020).beside("-1|1").after(GUARD).after(LIST).after(TREES)
                        .tells(FileSweepTest::isTreeDeleted);
            }
            sweep.add(tree + "true true", -30020).beside("-1").after(GUARD);
            tests.addAll(sweep.on(system));
        }
        return tests;
    }

    /** A look-up in Java's class that fails has no error of Windows. */
    static final String ATTRIBUTES = "(FindClass com.corvane.util.FileAttributes|GetMethodID|GetStaticFieldID)"
            + " => error 2147500037";

    /** Only where giving it back fails, the file is not read-only any more. */
    private static boolean isKept(String failed, String outcome, String state) {
        String left = failed.startsWith("GetFileAttributes") ? "(,read-only|,hidden)+"
                : failed.startsWith("SetFileAttributes") ? "(,read-only)?" : ",read-only";
        return state.matches("source=new target=old" + left + " tree.*");
    }

    @TestFactory
    List<DynamicTest> everyCallOfAttributesAndTimesFails() {
        FaultSweep sweep = new FaultSweep(FILES);
        sweep.add("getFileAttributes ~\\target", -30000).after(ATTRIBUTES);
        sweep.add("setFileAttributes ~\\target []", -30001).after(ATTRIBUTES, "SetFileAttributes[AW] => error 1450");
        String time = " 0x100000000000000";
        sweep.add("win32SetFileCreated ~\\target" + time, -30011).after(GUARD).tells(FileSweepTest::isKept);
        sweep.add("win32SetFileModified ~\\target" + time, -30016).after(GUARD).tells(FileSweepTest::isKept);
        sweep.add("win32SetFileTimes ~\\target" + time + " 0" + time, -30007).after(GUARD)
                .tells(FileSweepTest::isKept);
        return sweep.on(Windows.W98, Windows.W10);
    }
}
