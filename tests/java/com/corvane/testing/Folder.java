package com.corvane.testing;

import static com.corvane.testing.Outcome.sure;

import java.io.IOException;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.LinkOption;
import java.nio.file.Path;
import java.util.Comparator;
import java.util.List;
import java.util.Map;
import java.util.TreeMap;

/** A folder of small text files for a test. What goes wrong in here is an error of the test. */
public final class Folder {

    private final Path path;

    private Folder(Path path) {
        this.path = path;
    }

    /** The folder with this name below the temporary one, as it is. */
    static Folder at(String name) {
        return new Folder(Path.of(System.getProperty("java.io.tmpdir"), "corvane test", name));
    }

    /** The same, made anew; or what was left in it before a start of Windows. */
    public static Folder named(String name) {
        Folder folder = at(name);
        if (!Reboot.isAfter()) {
            folder.clear();
        }
        return folder;
    }

    /** Takes everything away and makes the folder anew. */
    public void clear() {
        sure(() -> {
            for (Path entry : Files.exists(path, LinkOption.NOFOLLOW_LINKS) ? all() : List.<Path>of()) {
                Files.setAttribute(entry, "dos:readonly", false, LinkOption.NOFOLLOW_LINKS);
                Files.delete(entry);
            }
            return Files.createDirectories(path);
        });
    }

    /** The whole path of something in the folder, as natives take it; of the folder itself for "". */
    public String path(String name) {
        return name.isEmpty() ? path.toString() : path + "\\" + name;
    }

    /** A file with this content; folders on the way are made. Gives its path. */
    public String file(String name, String content) {
        return sure(() -> {
            Path file = Path.of(path(name));
            Files.createDirectories(file.getParent());
            return Files.writeString(file, content).toString();
        });
    }

    public String folder(String name) {
        return sure(() -> Files.createDirectories(Path.of(path(name))).toString());
    }

    public boolean has(String name) {
        return Files.exists(Path.of(path(name)), LinkOption.NOFOLLOW_LINKS);
    }

    /** Whether it is "readonly" or "hidden". */
    boolean is(String mark, String name) {
        return sure(() -> (Boolean) Files.getAttribute(Path.of(path(name)), "dos:" + mark));
    }

    public void mark(String mark, String name) {
        sure(() -> Files.setAttribute(Path.of(path(name)), "dos:" + mark, true));
    }

    /** All files with their contents, a byte for each character, and all folders, however deep and in order. */
    public Map<String, String> state() {
        Map<String, String> state = new TreeMap<>();
        for (Path entry : sure(this::all)) {
            state.put(path.relativize(entry).toString(), Files.isRegularFile(entry)
                    ? sure(() -> Files.readString(entry, StandardCharsets.ISO_8859_1)) : "a folder");
        }
        return state;
    }

    /** Everything in it and itself, what is deepest first. */
    private List<Path> all() throws IOException {
        try (var found = Files.walk(path)) {
            return found.sorted(Comparator.reverseOrder()).toList();
        }
    }
}
