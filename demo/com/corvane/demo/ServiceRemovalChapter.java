package com.corvane.demo;

import static com.corvane.demo.HarbourWatch.EXIT_CODE;
import static com.corvane.demo.HarbourWatch.KEY;
import static com.corvane.demo.HarbourWatch.NAME;
import static com.corvane.demo.HarbourWatch.PROGRAM;
import static com.corvane.demo.HarbourWatch.RECORD;

import com.corvane.wizard.platform.win32.Win32FileServiceImpl;
import com.corvane.wizard.platform.win32.Win32ServiceImpl;
import com.corvane.wizard.platform.win32.win32service.NTServiceStatus;
import java.util.Collections;

/**
 * The service that {@link VersionChapter} has left, which Windows has started by itself: stopped
 * and removed, before the files of the product are.
 */
final class ServiceRemovalChapter implements Chapter {
    private static final int NOT_STOPPED = -120003;
    private static final int NOT_ACTIVE = 1062;

    private final Win32ServiceImpl services = new Win32ServiceImpl();

    @Override
    public String name() {
        return "After the reboot: the service is stopped and removed";
    }

    @Override
    public void run(Stage stage) {
        stage.scene("What the reboot did");
        stage.gives("its state (4: running), though nobody started it",
                NTServiceStatus.SERVICE_RUNNING,
                () -> HarbourWatch.stateOnceIn(NTServiceStatus.SERVICE_RUNNING));
        stage.gives("how often it was started, as it has recorded it", 3,
                () -> Collections.frequency(HarbourWatch.record(), NAME));
        stop(stage);
        remove(stage);
    }

    private void stop(Stage stage) {
        stage.scene("It stops");
        stage.does("stop it", HarbourWatch::stop);
        String answer = stage.run("sc", "query", NAME);
        stage.gives("it is shown stopped", true, () -> answer.contains("STOPPED"));
        stage.gives("the code of its own with which it has ended", EXIT_CODE,
                () -> services.queryNTServiceStatus(NAME).getServiceSpecificExitCode());
        stage.gives("that is shown, too", true,
                () -> answer.contains("SERVICE_EXIT_CODE  : " + EXIT_CODE));
        stage.refuses("stop it again", NOT_STOPPED, NOT_ACTIVE, HarbourWatch::stop);
    }

    private void remove(Stage stage) {
        Win32FileServiceImpl files = new Win32FileServiceImpl();
        stage.scene("It goes");
        stage.does("remove it", () -> services.deleteNTService(NAME));
        stage.gives("there is such a service", false, () -> services.serviceExists(NAME));
        stage.gives("it is among all services", false,
                () -> HarbourWatch.isListed(Win32ServiceImpl.SERVICE_STATE_ALL));
        stage.run(1, "reg", "query", KEY);
        stage.gives("delete " + PROGRAM, 0,
                () -> files.win32DeleteFile(Product.installed(PROGRAM)));
        stage.gives("delete its record", 0, () -> files.win32DeleteFile(RECORD.toString()));
    }
}
