package com.corvane.demo;

import static com.corvane.demo.Product.FRENCH_HELP;
import static com.corvane.demo.Product.HELP;
import static com.corvane.demo.Product.NOTES;
import static com.corvane.demo.Product.PROGRAM;
import static com.corvane.demo.Product.WORDS;
import static com.corvane.demo.Product.installed;
import static com.corvane.demo.Product.onMedium;

import com.corvane.wizard.platform.win32.Win32FileServiceImpl;
import com.corvane.wizard.service.ServiceException;
import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Paths;
import java.util.stream.Stream;

/**
 * A product that runs is updated: a program, and two files that another program holds open. The next
 * start of Windows completes it; {@link RemovalInUseChapter} goes on from there.
 */
final class UpdateInUseChapter implements Chapter {
    private final Win32FileServiceImpl files = new Win32FileServiceImpl();

    @Override
    public String name() {
        return "Files in use: a product is updated while it runs";
    }

    @Override
    public void run(Stage stage) throws Exception {
        install(stage);
        try (RunningProgram program = RunningProgram.ofProduct();
                RunningProgram holder = RunningProgram.holding(NOTES, WORDS)) {
            update(stage);
            stage.gives("both programs go on running", true,
                    () -> program.isRunning() && holder.isRunning());
            showPending(stage);
        }
        stage.gives("delete the medium", 0, () -> files.win32DeleteDirectory(
                Product.MEDIUM.toString(), false, true));
    }

    private void install(Stage stage) {
        stage.scene("Version 1");
        stage.does("make its medium", () -> Product.makeMedium(1));
        stage.does("make the product's folders", Product::makeFolders);
        for (String name : new String[] {PROGRAM, NOTES, WORDS, HELP, FRENCH_HELP}) {
            stage.gives("copy " + name, 0, () -> copy(name));
        }
    }

    private void update(Stage stage) throws IOException {
        stage.scene("Version 2, while " + PROGRAM + " runs and another program has two files open");
        stage.does("make its medium", () -> Product.makeMedium(2));
        stage.gives("copy " + PROGRAM + " (1: done at the next reboot)", 1,
                () -> copy(PROGRAM));
        stage.gives("its version now; the old file is set aside", 2,
                () -> Product.versionOf(PROGRAM));
        stage.gives("copy " + NOTES + ", which cannot even be renamed", 1, () -> copy(NOTES));
        stage.gives("its version until then; the new file waits", 1,
                () -> Product.versionOf(NOTES));
        stage.gives("move " + WORDS + ", which cannot be renamed either", 1,
                () -> files.win32MoveFile(onMedium(WORDS), installed(WORDS), true));
        stage.gives("copy " + HELP, 0, () -> copy(HELP));
    }

    private void showPending(Stage stage) {
        stage.scene("What waits for the reboot, as the system's own tools show it");
        stage.run("cmd", "/c", "dir", "/b", Product.FOLDER.toString());
        String[] waiting = {
            installed(PROGRAM) + ".delete_on_reboot", installed(NOTES) + ".use_on_reboot",
            installed(WORDS) + ".move_on_reboot"
        };
        String answer = PendingWork.show(stage);
        Stream.of(waiting).map(Paths::get).forEach(file ->
                stage.gives(file.getFileName() + " is there and listed", true,
                        () -> Files.exists(file) && answer.contains(file.toString())));
    }

    private int copy(String name) throws ServiceException {
        return files.win32CopyFile(onMedium(name), installed(name), true);
    }
}
