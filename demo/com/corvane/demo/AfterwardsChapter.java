package com.corvane.demo;

import static com.corvane.demo.Afterwards.COMMAND;
import static com.corvane.demo.Afterwards.OWN;

import com.corvane.wizard.platform.win32.Win32Cleaner;
import com.corvane.wizard.platform.win32.Win32SystemUtilServiceImpl;
import java.nio.channels.FileChannel;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.StandardOpenOption;
import java.util.Collections;

/** Leaves work to the next start and to the cleaner; {@link AfterStartChapter} shows it done. */
final class AfterwardsChapter implements Chapter {
    private static final String OTHER = "never.exe /run";

    private final Win32SystemUtilServiceImpl system = new Win32SystemUtilServiceImpl();

    @Override
    public String name() {
        return "Afterwards: at the next start, and when the installer has ended";
    }

    @Override
    public void run(Stage stage) throws Exception {
        stage.scene("At the next start");
        stage.does("register " + COMMAND, () -> system.addSystemStartupCommand(COMMAND));
        stage.does("register " + OTHER, () -> system.addSystemStartupCommand(OTHER));
        stage.does("take the second back", () -> system.removeSystemStartupCommand(OTHER));
        stage.gives("the first is registered", true, () -> Afterwards.commands().contains(COMMAND));
        stage.gives("the second is", false, () -> Afterwards.commands().contains(OTHER));
        stage.scene("When the installer has ended");
        Path file = Afterwards.makeOwn();
        // Open until the end of the JVM: there is nothing that could close it before.
        FileChannel.open(file, StandardOpenOption.READ);
        stage.does("hand its own folder, with a file that it uses, to the cleaner",
                () -> Win32Cleaner.deleteAfterExit(
                        Collections.emptyList(), Collections.singleton(OWN.toFile())));
        stage.gives("it is still there", true, () -> Files.exists(file));
    }
}
