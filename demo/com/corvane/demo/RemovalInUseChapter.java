package com.corvane.demo;

import static com.corvane.demo.Product.PROGRAM;
import static com.corvane.demo.Product.VENDOR_FOLDER;

import com.corvane.wizard.platform.win32.Win32FileServiceImpl;
import java.util.stream.Stream;

/**
 * After the reboot that {@link UpdateInUseChapter} waits for: the update is complete, and the
 * product is removed while it runs. {@link NothingLeftChapter} goes on from there.
 */
final class RemovalInUseChapter implements Chapter {
    private static final String FOLDER = Product.FOLDER.getFileName() + "\\";

    private final Win32FileServiceImpl files = new Win32FileServiceImpl();

    @Override
    public String name() {
        return "After the reboot: the product is removed while it runs";
    }

    @Override
    public void run(Stage stage) throws Exception {
        showUpdated(stage);
        try (RunningProgram program = RunningProgram.ofProduct()) {
            stage.scene("The product is removed while " + PROGRAM + " runs");
            stage.gives("remove its folder (1: done at the next reboot)", 1,
                    () -> files.win32DeleteDirectory(VENDOR_FOLDER.toString(), false, true));
            stage.gives("what is left", new String[] {FOLDER, FOLDER + PROGRAM}, Product::listing);
            stage.gives("the program goes on running", true, program::isRunning);
        }
        String answer = PendingWork.show(stage);
        stage.gives("the program is listed", true,
                () -> answer.contains(Product.installed(PROGRAM)));
    }

    private void showUpdated(Stage stage) {
        stage.scene("What the reboot did");
        PendingWork.showNone(stage);
        for (String name : new String[] {PROGRAM, Product.NOTES, Product.WORDS, Product.HELP}) {
            stage.gives("version of " + name, 2, () -> Product.versionOf(name));
        }
        String[] all = {
            "", PROGRAM, Product.NOTES, Product.WORDS, "help\\", Product.HELP, "help\\french\\",
            Product.FRENCH_HELP
        };
        stage.gives("all files and folders that there are",
                Stream.of(all).map(FOLDER::concat).sorted().toArray(), Product::listing);
    }
}
