package com.corvane.demo;

import static com.corvane.demo.HarbourSetup.FAILED;
import static com.corvane.demo.HarbourSetup.RESTART_NEEDED;
import static com.corvane.demo.Product.NOTES;
import static com.corvane.demo.Product.PROGRAM;

import com.corvane.wizard.platform.win32.win32service.NTServiceStatus;

/**
 * What {@link InstallationChapter} has installed is upgraded while it runs. The next start of Windows
 * completes it; {@link UpgradedChapter} goes on from there.
 */
final class UpgradeInUseChapter implements Chapter {
    @Override
    public String name() {
        return "Upgrade: files in use";
    }

    @Override
    public void run(Stage stage) throws Exception {
        failOnPurpose(stage);
        try (RunningProgram program = RunningProgram.ofProduct();
                RunningProgram holder = RunningProgram.holding(NOTES)) {
            upgrade(stage);
            stage.gives("both programs go on running", true,
                    () -> program.isRunning() && holder.isRunning());
            showPending(stage);
        }
        stage.scene("Once more before the reboot, which would bring the waiting files over the new ones");
        String answer = stage.run(FAILED, HarbourSetup.command());
        stage.gives("the reason is told", true, () -> answer.contains("must be restarted first"));
        stage.scene("Version 1, which is older");
        stage.does("make its medium", () -> Product.makeMedium(1));
        String other = stage.run(FAILED, HarbourSetup.command());
        stage.gives("the reason is told", true, () -> other.contains("newer version: 2.0.0.0"));
    }

    private static void failOnPurpose(Stage stage) {
        stage.scene("Version 2 with a service that cannot be started");
        stage.does("make its medium", () -> Product.makeMedium(2));
        stage.does("put a library in the place of " + HarbourWatch.PROGRAM, Product::breakMedium);
        stage.run(FAILED, HarbourSetup.command());
        stage.gives("version of " + PROGRAM, 1, () -> Product.versionOf(PROGRAM));
        stage.gives("state of the service (4: running, again)", NTServiceStatus.SERVICE_RUNNING,
                () -> HarbourWatch.stateOnceIn(NTServiceStatus.SERVICE_RUNNING));
        stage.gives("all files and folders that there are", InstallationChapter.ALL,
                Product::listing);
    }

    private static void upgrade(Stage stage) {
        stage.scene("Version 2, while " + PROGRAM + " runs and another program has " + NOTES + " open");
        stage.does("make its medium", () -> Product.makeMedium(2));
        stage.run(RESTART_NEEDED, HarbourSetup.command());
        stage.gives("version of " + PROGRAM + "; the old file is set aside", 2,
                () -> Product.versionOf(PROGRAM));
        stage.gives("version of " + NOTES + ", which cannot even be renamed", 1,
                () -> Product.versionOf(NOTES));
        stage.gives("state of the service (1: stopped, as not all is new)",
                NTServiceStatus.SERVICE_STOPPED,
                () -> HarbourWatch.stateOnceIn(NTServiceStatus.SERVICE_STOPPED));
    }

    private static void showPending(Stage stage) {
        stage.scene("What waits for the reboot, as the system's own tools show it");
        stage.run("cmd", "/c", "dir", "/b", Product.FOLDER.toString());
        String answer = PendingWork.show(stage);
        stage.gives("the old " + PROGRAM + " is to go", true, () -> answer.contains(
                Product.installed(PROGRAM) + ".delete_on_reboot"));
        stage.gives("the new " + NOTES + " is to come", true, () -> answer.contains(
                Product.installed(NOTES) + ".use_on_reboot"));
    }
}
