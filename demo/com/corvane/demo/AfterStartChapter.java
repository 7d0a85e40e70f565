package com.corvane.demo;

import static com.corvane.demo.Afterwards.COMMAND;
import static com.corvane.demo.Afterwards.MADE;
import static com.corvane.demo.Afterwards.OWN;

import java.nio.file.Files;

/** What {@link AfterwardsChapter} has left to be done is done. */
final class AfterStartChapter implements Chapter {
    @Override
    public String name() {
        return "After the reboot: what was left to be done";
    }

    @Override
    public void run(Stage stage) {
        stage.scene("By the start of Windows");
        stage.gives("the command has run", true, () -> Files.isDirectory(MADE));
        stage.gives("it is registered", false, () -> Afterwards.commands().contains(COMMAND));
        stage.does("remove what it has made", () -> Files.deleteIfExists(MADE));
        stage.scene("By the cleaner");
        stage.gives("the installer's own folder is still there", false, () -> Files.exists(OWN));
    }
}
