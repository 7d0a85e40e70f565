package com.corvane.testing;

import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.List;

/**
 * Shortcuts that stay after the test, for another program to read: one folder for each code page, with
 * what each shortcut must hold beside it.
 */
public final class ShortcutsToRead {

    private final Path folder;

    /** Those in the code page of this process. */
    public ShortcutsToRead() throws IOException {
        String codePage = System.getProperty("sun.jnu.encoding").replaceFirst("^\\D*", "cp");
        folder = Path.of(System.getProperty("corvane.test.shortcuts"), codePage);
        Files.createDirectories(folder);
    }

    public String path() {
        return folder.toString();
    }

    /** What the shortcut with this name must hold. One from an earlier run goes away; gives its path. */
    public String expect(String name, List<String> fields) throws IOException {
        Path shortcut = folder.resolve(name + ".lnk");
        Files.deleteIfExists(shortcut);
        Files.writeString(folder.resolve(name + ".txt"), String.join("\n", fields));
        return shortcut.toString();
    }
}
