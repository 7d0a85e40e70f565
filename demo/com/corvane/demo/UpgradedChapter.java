package com.corvane.demo;

import com.corvane.wizard.platform.win32.win32service.NTServiceStatus;
import java.util.Collections;

/** After the reboot that {@link UpgradeInUseChapter} waits for: all is new, and the service runs. */
final class UpgradedChapter implements Chapter {
    /** By the setup, by {@link ServiceChapter}, after the upgrade that failed, and by Windows. */
    private static final int STARTS = 4;

    @Override
    public String name() {
        return "After the reboot: the upgrade is complete";
    }

    @Override
    public void run(Stage stage) {
        PendingWork.showNone(stage);
        stage.gives("all files and folders that there are", InstallationChapter.ALL,
                Product::listing);
        for (String name : new String[] {Product.PROGRAM, Product.NOTES, Product.HELP}) {
            stage.gives("version of " + name, 2, () -> Product.versionOf(name));
        }
        stage.gives("state of the service (4: running), though nobody started it",
                NTServiceStatus.SERVICE_RUNNING,
                () -> HarbourWatch.stateOnceIn(NTServiceStatus.SERVICE_RUNNING));
        stage.gives("how often it was started, as it has recorded it", STARTS,
                () -> Collections.frequency(HarbourWatch.record(), HarbourWatch.NAME));
        stage.run("reg", "query", HarbourSetup.ENTRY, "/v", "DisplayVersion");
    }
}
