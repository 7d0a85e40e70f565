package com.corvane.demo;

import static com.corvane.demo.HarbourSetup.FAILED;
import static com.corvane.demo.HarbourSetup.RESTART_NEEDED;
import static com.corvane.demo.Product.PROGRAM;

import com.corvane.wizard.platform.win32.Win32FileServiceImpl;
import java.nio.file.Files;
import java.nio.file.Path;

/**
 * What {@link UpgradeInUseChapter} has upgraded is removed while it runs. The next start of Windows
 * completes it; {@link NothingLeftChapter} goes on from there.
 */
final class RemovalInUseChapter implements Chapter {
    /** The log of the service waits for the last step, which removes the folder. */
    private static final String[] LEFT = {"program\\", "program\\" + PROGRAM, "watch.log"};

    private final Win32FileServiceImpl files = new Win32FileServiceImpl();

    @Override
    public String name() {
        return "Removal: a program of the product runs";
    }

    @Override
    public void run(Stage stage) throws Exception {
        try (RunningProgram program = RunningProgram.ofProduct()) {
            remove(stage);
            stage.gives("the program goes on running", true, program::isRunning);
        }
        showPending(stage);
        stage.scene("It cannot be installed again until then: what waits would remove it");
        String answer = stage.run(FAILED, HarbourSetup.command());
        stage.gives("the reason is told", true, () -> answer.contains("must be restarted first"));
        stage.gives("delete the medium", 0, () -> files.win32DeleteDirectory(
                Product.MEDIUM.toString(), false, true));
    }

    private static void remove(Stage stage) throws Exception {
        stage.scene("By the command in the list of programs");
        stage.run(RESTART_NEEDED, HarbourSetup.removal());
        stage.gives("the cleaner is still at work", false,
                () -> Waiting.forAnswer(cleans -> !cleans, HarbourSetup::isCleaning));
        stage.gives("what is left", LEFT, Product::listing);
        for (Path shortcut : HarbourSetup.SHORTCUTS) {
            stage.gives(shortcut + " is there", false, () -> Files.exists(shortcut));
        }
        stage.run(1, "reg", "query", HarbourWatch.KEY);
        stage.run(1, "reg", "query", HarbourSetup.ENTRY);
    }

    private static void showPending(Stage stage) {
        stage.scene("What waits for the reboot");
        String answer = PendingWork.show(stage);
        stage.gives("the program is listed", true,
                () -> answer.contains(Product.installed(PROGRAM)));
        String command = PendingWork.showCommands(stage);
        stage.gives("so is the command that removes the folder", true,
                () -> command.contains(Product.ROOT.toString()));
    }
}
