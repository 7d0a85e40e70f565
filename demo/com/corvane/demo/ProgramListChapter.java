package com.corvane.demo;

import static com.corvane.demo.ProgramListEntry.COMMAND;
import static com.corvane.demo.ProgramListEntry.KEY;
import static com.corvane.demo.ProgramListEntry.LIST;
import static com.corvane.demo.ProgramListEntry.TITLE;

import com.corvane.wizard.platform.win32.Win32ProductServiceImpl;
import java.util.stream.Stream;

/** The product enters the list of programs; {@link UninstallationChapter} takes it out. */
final class ProgramListChapter implements Chapter {
    private static final String LOCATION =
            "HKLM\\Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\";

    @Override
    public String name() {
        return "List of programs: the product can be removed";
    }

    @Override
    public void run(Stage stage) {
        stage.scene("Before");
        String before = stage.run(LIST);
        stage.gives("the product is in the list", false, () -> before.contains(KEY));
        stage.scene("The entry");
        stage.does("register the uninstaller", () ->
                new Win32ProductServiceImpl().win32RegisterUninstaller(KEY, TITLE, COMMAND));
        stage.scene("The system's own list");
        String list = stage.run(LIST);
        stage.gives("the product is in it, with its title", true,
                () -> Stream.of(list.split("\\R")).anyMatch((KEY + "|||" + TITLE)::equals));
        stage.scene("And what it starts to remove it");
        String entry = stage.run("reg", "query", LOCATION + KEY, "/v", "UninstallString");
        stage.gives("the command is shown", true, () -> entry.contains(COMMAND));
    }
}
