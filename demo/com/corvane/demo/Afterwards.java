package com.corvane.demo;

import com.corvane.wizard.platform.win32.Win32SystemUtilServiceImpl;
import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.Paths;
import java.util.Collections;
import java.util.List;

/** What an installer leaves to be done: by the next start of Windows, and when it has ended. */
final class Afterwards {
    private static final Path TEMPORARY = Paths.get(System.getProperty("java.io.tmpdir"));

    /** Made by the command that runs at the next start. */
    static final Path MADE = TEMPORARY.resolve("corvane-demo-started");

    /** The installer's own; it has a file in it open. */
    static final Path OWN = TEMPORARY.resolve("corvane-demo-own");

    static final String COMMAND = "cmd.exe /c mkdir \"" + MADE + "\"";

    private Afterwards() {}

    static Path makeOwn() throws IOException {
        Files.createDirectories(OWN.resolve("parts"));
        Files.write(OWN.resolve("parts\\list.txt"), new byte[1]);
        return Files.write(OWN.resolve("setup.dat"), new byte[1]);
    }

    static List<String> commands() throws Exception {
        return Collections.list(new Win32SystemUtilServiceImpl().systemStartupCommands());
    }
}
