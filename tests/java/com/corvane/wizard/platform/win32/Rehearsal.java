package com.corvane.wizard.platform.win32;

import static org.junit.jupiter.api.Assertions.assertEquals;

import com.corvane.testing.Call;
import com.corvane.testing.Folder;
import com.corvane.testing.Hooks;
import com.corvane.testing.Outcome;
import com.corvane.testing.Reboot;
import com.corvane.testing.Windows;
import com.corvane.wizard.service.ServiceException;
import java.io.IOException;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.util.ArrayList;
import java.util.List;
import java.util.Map;
import java.util.function.Supplier;
import java.util.regex.Matcher;
import java.util.regex.Pattern;

/**
 * Calls of the natives that copy, move and delete, in which no file changes: Windows' part is played as a
 * case says, and the calls are written down. "source" and "target" are in the folder of the test.
 */
final class Rehearsal {

    /** The functions that are written down, and their arguments: text, number, or one to be left out. */
    private static final Map<String, String> FUNCTIONS = Map.of(
            "CopyFile", "ttn",
            "MoveFile", "tt",
            "MoveFileEx", "ttn",
            "DeleteFile", "t",
            "RemoveDirectory", "t",
            "GetFileAttributes", "t",
            "SetFileAttributes", "tn",
            "CreateFile", "tnnnnnn",
            "GetProcAddress", "-t");

    /** These succeed unless the case says otherwise. The others are the system's own. */
    private static final List<String> PLAYED =
            List.of("CopyFile", "MoveFile", "MoveFileEx", "DeleteFile", "RemoveDirectory");

    private static final Pattern FAILURE = Pattern.compile("(\\w+?)(?:#(\\d))?=(\\d+|none)");

    private final Windows system;
    private final Folder folder;

    Rehearsal(Windows system, Folder folder) {
        this.system = system;
        this.folder = folder;
    }

    /**
     * Asserts one case.
     *
     * @param outcome the result, and "error" with its number: "-1 error 5"
     * @param call "copy", "move" (with "over": overwriting; with "to nothing": to an empty path), "delete"
     *     or "remove", which is of a directory
     * @param failures {@code CopyFile=32} for the first call of a function, {@code MoveFileEx#2=5} for
     *     another one; {@code =none} without an error; {@code no MoveFileExW}
     * @param calls in order, and the lines that are in WinInit.Ini afterwards
     */
    void expect(String outcome, String call, String failures, String... calls) throws IOException {
        String name = system + ": " + call + ", " + failures;
        Outcome seen = play(failures, () -> Outcome.of(() -> callNative(call)));
        String beside = Hooks.returned().isEmpty() ? "0" : Hooks.returned();
        assertEquals(String.join("\n", calls), String.join("\n", written()), name);
        if (!seen.isException()) {
            assertEquals(outcome, seen.value(), name);
            return;
        }
        assertEquals(codeOf(call), ((ServiceException) seen.thrown()).getCode(), name);
        // With an exception, the result of a directory's removal has no meaning.
        String result = call.equals("remove") ? "" : beside + " ";
        assertEquals(outcome, result + "error " + seen.errorNumber(), name);
    }

    private static int codeOf(String call) {
        return Map.of("copy", -30017, "move", -30018, "delete", -30019, "remove", -30020).get(call.split(" ")[0]);
    }

    private int callNative(String call) throws ServiceException {
        Win32FileServiceImpl files = new Win32FileServiceImpl();
        String source = folder.path("source");
        boolean over = call.contains("over");
        return switch (call.split(" ")[0]) {
            case "copy" -> files.win32CopyFile(source, targetOf(call), over);
            case "move" -> files.win32MoveFile(source, targetOf(call), over);
            case "delete" -> files.win32DeleteFile(targetOf(call));
            default -> files.win32DeleteDirectory(targetOf(call), true, false);
        };
    }

    private String targetOf(String call) {
        return call.contains("to nothing") ? "" : folder.path("target");
    }

    private <T> T play(String failures, Supplier<T> call) {
        Reboot.forget();
        Hooks.reset();
        system.use();
        FUNCTIONS.forEach(this::watch);
        for (String function : PLAYED) {
            for (int count = 0; count < 6; ++count) {
                answer(function);
            }
        }
        // A path without a short name is used as it is.
        for (int nth = 1; nth <= 4; ++nth) {
            Hooks.fail("GetShortPathNameA", nth, 5);
        }
        plan(failures);
        Hooks.arm();
        T result = call.get();
        Hooks.disarm();
        return result;
    }

    private void watch(String function, String arguments) {
        for (int index = 0; index < arguments.length(); ++index) {
            if (arguments.charAt(index) == 't') {
                Hooks.captureText(full(function), index);
            }
        }
    }

    /** With the letter of the family, where it has one. */
    private String full(String function) {
        return switch (function) {
            case "GetProcAddress" -> function;
            case "MoveFileEx" -> "MoveFileExW";
            case "MoveFile" -> "MoveFileA";
            default -> system.function(function);
        };
    }

    private void answer(String function) {
        Hooks.answer(full(function), 1);
    }

    private void plan(String failures) {
        if (failures.contains("no MoveFileExW")) {
            Hooks.hide("MoveFileExW");
        }
        Matcher failure = FAILURE.matcher(failures);
        while (failure.find()) {
            int nth = failure.group(2) == null ? 1 : Integer.parseInt(failure.group(2));
            String error = failure.group(3);
            Hooks.fail(full(failure.group(1)), nth, error.equals("none") ? Hooks.NO_ERROR : Integer.parseInt(error));
        }
    }

    private List<String> written() throws IOException {
        List<String> lines = new ArrayList<>();
        for (Call call : Call.all()) {
            String function = FUNCTIONS.keySet().stream().filter(name -> full(name).equals(call.name())).findAny()
                    .orElse(null);
            if (function != null) {
                lines.add(line(function, call));
            }
        }
        lines.removeIf(line -> line.contains("WinInit.Ini"));
        if (Files.exists(Reboot.WIN_INIT)) {
            Files.readString(Reboot.WIN_INIT, StandardCharsets.ISO_8859_1).lines().skip(1)
                    .forEach(line -> lines.add(line.replace(folder.path("") + "\\", "")));
        }
        return lines;
    }

    private String line(String function, Call call) {
        StringBuilder line = new StringBuilder(function);
        String arguments = FUNCTIONS.get(function);
        for (int index = 0; index < arguments.length(); ++index) {
            switch (arguments.charAt(index)) {
                case 't' -> line.append(' ').append(shown(call.text(index)));
                case 'n' -> line.append(' ').append(shown(call.number(index)));
                default -> { }
            }
        }
        return line.toString();
    }

    private String shown(String path) {
        return path == null ? "null" : path.isEmpty() ? "''" : path.replace(folder.path("") + "\\", "");
    }

    private static String shown(int number) {
        return number >= 0 && number < 100 ? Integer.toString(number) : "0x" + Integer.toHexString(number);
    }
}
