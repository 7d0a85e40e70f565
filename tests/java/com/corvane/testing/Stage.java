package com.corvane.testing;

import com.corvane.testing.Words.Word;
import com.corvane.wizard.platform.win32.Win32RegistryServiceImpl;
import java.io.IOException;
import java.nio.file.Files;
import java.util.ArrayList;
import java.util.List;
import java.util.Map;
import java.util.stream.Collectors;
import java.util.stream.Stream;

/** Where a scene plays: a folder, which it calls "~", and a key of the registry, which it calls "KEY". */
final class Stage {

    private static final List<String> MARKS = List.of("read-only", "hidden");
    /** Windows' own directory, and how scenes write it. */
    private static final String ROOT = System.getenv("SystemRoot");
    private static final String SHOWN_ROOT = "C:\\windows";

    private final Folder folder = Folder.at("scene");
    private final boolean usesFiles;
    private final boolean usesRegistry;

    /** For a scene that is written so; what it does not name is not made ready. */
    Stage(String scene) {
        usesFiles = scene.contains("~");
        usesRegistry = scene.contains("KEY") || scene.contains("leads=");
    }

    /** With the whole names of the folder and the key, and each character spelled out. */
    String real(String text) {
        return Words.spelledOut(text.replaceAll("~(?!\\d)", folder.path("").replace("\\", "\\\\"))
                .replaceAll("\\bKEY\\b", RawRegistry.KEY.replace("\\", "\\\\")).replace(SHOWN_ROOT, ROOT));
    }

    /** As a scene says it. */
    String shown(String text) {
        return text.replace(folder.path(""), "~").replace(RawRegistry.KEY, "KEY").replace(ROOT, SHOWN_ROOT)
                .replace('\0', '\u2400');
    }

    /** Nothing there but these files; the registry's key is empty, or full of one value of each kind. */
    void set(List<Word> files, boolean fullKey, String waiting) throws IOException {
        if (usesFiles) {
            Reboot.forget();
            folder.clear();
        }
        if (!waiting.isEmpty()) {
            Files.writeString(Reboot.WIN_INIT, waiting.replaceAll("; |$", "\r\n"));
        }
        for (Word file : files) {
            String[] name = file.text().split("=", 2);
            if (name.length == 1) {
                folder.folder(name[0]);
                continue;
            }
            String[] parts = name[1].split(",", -1);
            folder.file(name[0], parts[0]);
            Stream.of(parts).skip(1).forEach(mark -> folder.mark(mark.replace("-", ""), name[0]));
        }
        if (usesRegistry) {
            RawRegistry.deleteTree(RawRegistry.KEY);
            RawRegistry.createKey(RawRegistry.KEY);
        }
        if (fullKey) {
            fill(RawRegistry.KEY);
        }
    }

    /** One value of each kind, two that are longer than the first buffer of a read, and a tree with a link. */
    private static void fill(String key) {
        String text = "0123456789".repeat(120) + "\0";
        List.of("\\tree\\branch\\leaf", "\\tree\\other", "\\second").forEach(name -> RawRegistry.createKey(key + name));
        RawRegistry.createLink(key + "\\tree\\link", key + "\\second");
        RawRegistry.set(key, "", Win32RegistryServiceImpl.REG_SZ, Bytes.utf16("default\0"));
        RawRegistry.set(key, "text", Win32RegistryServiceImpl.REG_SZ, Bytes.utf16("some text\0"));
        RawRegistry.set(key, "long", Win32RegistryServiceImpl.REG_SZ, Bytes.utf16(text));
        RawRegistry.set(key, "path", Win32RegistryServiceImpl.REG_EXPAND_SZ, Bytes.utf16("%CORVANE_BED%;rest\0"));
        RawRegistry.set(key, "number", Win32RegistryServiceImpl.REG_DWORD, Bytes.number(0x12345678));
        RawRegistry.set(key, "binary", Win32RegistryServiceImpl.REG_BINARY, new byte[] {0, 1, 2, -1});
        RawRegistry.set(key, "list", Win32RegistryServiceImpl.REG_MULTI_SZ, Bytes.utf16("first\0second\0\0"));
        RawRegistry.set(key, "long list", Win32RegistryServiceImpl.REG_MULTI_SZ, Bytes.utf16(text + text + "\0"));
    }

    /** All of it, in words. */
    String state() {
        String later = later();
        return files() + (later.isEmpty() ? "" : " later: " + later)
                + (usesRegistry ? RawRegistry.dump(RawRegistry.KEY) : "");
    }

    /** What is in the folder, as {@link #set} takes it; of folders, the empty ones. */
    String files() {
        Map<String, String> state = usesFiles ? folder.state() : Map.of();
        return state.keySet().stream().filter(name -> !name.isEmpty())
                .filter(name -> state.keySet().stream().noneMatch(inner -> inner.startsWith(name + "\\")))
                .map(name -> state.get(name).equals("a folder") ? name : name + "=" + content(name, state.get(name)))
                .sorted().collect(Collectors.joining(" "));
    }

    private String content(String name, String content) {
        return MARKS.stream().filter(mark -> folder.is(mark.replace("-", ""), name)).map(mark -> "," + mark)
                .collect(Collectors.joining("", content.startsWith("L\0\0\0") ? "a-shortcut" : content, ""));
    }

    /** What waits for the next start of Windows. */
    String later() {
        if (!usesFiles) {
            return "";
        }
        List<String> waits = new ArrayList<>(Reboot.pending());
        if (Files.exists(Reboot.WIN_INIT)) {
            waits.addAll(Outcome.sure(() -> Files.readAllLines(Reboot.WIN_INIT, Bytes.ANSI)));
        }
        return shown(String.join("; ", waits));
    }
}
