package com.corvane.testing;

import com.corvane.testing.Words.Word;
import com.corvane.wizard.platform.win32.RegistryFixture;
import java.io.IOException;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;
import java.util.TreeSet;
import java.util.stream.Collectors;

/** Where a scene plays: a folder, which it calls "~", and a key of the registry, which it calls "KEY". */
final class Stage {

    private static final List<String> MARKS = List.of("read-only", "hidden");

    private final Folder folder = Folder.at("scene");
    private final boolean usesFiles;
    private final boolean usesRegistry;

    /** For a scene that is written so; what it does not name is not made ready. */
    Stage(String scene) {
        usesFiles = scene.contains("~");
        usesRegistry = scene.contains("KEY");
    }

    /** With the whole names of the folder and the key, and each character spelled out. */
    String real(String text) {
        return Words.spelledOut(text.replaceAll("~(?!\\d)", folder.path("").replace("\\", "\\\\"))
                .replaceAll("\\bKEY\\b", RawRegistry.KEY.replace("\\", "\\\\")));
    }

    /** As a scene says it. */
    String shown(String text) {
        return text.replace(folder.path(""), "~").replace(RawRegistry.KEY, "KEY").replace('\0', '\u2400');
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
            List<String> parts = Arrays.asList(name[1].split(",", -1));
            folder.file(name[0], parts.get(0));
            int marks = 0;
            for (String mark : parts.subList(1, parts.size())) {
                marks |= 1 << MARKS.indexOf(mark);
            }
            folder.setAttributes(name[0], marks);
        }
        if (fullKey) {
            RegistryFixture.fill();
        } else if (usesRegistry) {
            RawRegistry.deleteTree(RawRegistry.KEY);
            RawRegistry.createKey(RawRegistry.KEY);
        }
    }

    /** What is in the folder, as {@link #set} takes it; of folders, the empty ones. */
    String files() {
        if (!usesFiles) {
            return "";
        }
        TreeSet<String> shown = new TreeSet<>();
        List<String> names = folder.names();
        names.forEach(name -> {
            if (!Files.isDirectory(Path.of(folder.path(name)))) {
                shown.add(name + "=" + content(name) + marks(name));
            } else if (!name.isEmpty() && names.stream().noneMatch(other -> other.startsWith(name + "\\"))) {
                shown.add(name);
            }
        });
        return String.join(" ", shown);
    }

    private String content(String name) {
        try {
            String content = Files.readString(Path.of(folder.path(name)), StandardCharsets.ISO_8859_1);
            return content.startsWith("L\0\0\0") ? "a-shortcut" : content;
        } catch (IOException failure) {
            throw new AssertionError(failure);
        }
    }

    private String marks(String name) {
        int attributes = folder.attributes(name);
        return MARKS.stream().filter(mark -> (attributes & 1 << MARKS.indexOf(mark)) != 0)
                .map(mark -> "," + mark).collect(Collectors.joining());
    }

    /** What waits for the next start of Windows. */
    String later() {
        if (!usesFiles) {
            return "";
        }
        try {
            List<String> waits = new ArrayList<>(Reboot.pending());
            if (Files.exists(Reboot.WIN_INIT)) {
                waits.addAll(Files.readString(Reboot.WIN_INIT, Call.ANSI).lines().toList());
            }
            return shown(String.join("; ", waits));
        } catch (IOException failure) {
            throw new AssertionError(failure);
        }
    }
}
