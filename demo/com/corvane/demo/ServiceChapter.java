package com.corvane.demo;

import static com.corvane.demo.HarbourWatch.COMMAND;
import static com.corvane.demo.HarbourWatch.KEY;
import static com.corvane.demo.HarbourWatch.NAME;
import static com.corvane.demo.HarbourWatch.TITLE;

import com.corvane.wizard.platform.win32.Win32ServiceImpl;
import com.corvane.wizard.platform.win32.win32service.NTServiceConfig;
import com.corvane.wizard.platform.win32.win32service.NTServiceStatus;
import com.corvane.wizard.platform.win32.win32service.Win2kSCAction;
import com.corvane.wizard.platform.win32.win32service.Win2kServiceFailureActions;
import java.util.Arrays;

/** The service that {@link InstallationChapter} has made is described, configured, controlled. */
final class ServiceChapter implements Chapter {
    private static final String DESCRIPTION = "Keeps an eye on the harbour (見張り).";
    private static final String DEPENDENCY = "RpcSs";
    private static final String PLACE = "quay no. 7";

    private static final int SECONDS_A_DAY = 86_400;
    private static final int CODE_OF_ITS_OWN = 200;

    private static final int NOT_CREATED = -120000;
    private static final int NOT_STARTED = -120002;
    private static final int NOT_STOPPED = -120003;
    private static final int FAILURE_ACTIONS_UNKNOWN = -1200010;
    private static final int SERVICE_EXISTS = 1073;
    private static final int ALREADY_RUNNING = 1056;
    private static final int NOT_ACTIVE = 1062;

    private final Win32ServiceImpl services = new Win32ServiceImpl();

    @Override
    public String name() {
        return "Service: the product's own, which the system starts by itself";
    }

    @Override
    public void run(Stage stage) throws Exception {
        describe(stage);
        configure(stage);
        sayWhatFailureBrings(stage);
        startIt(stage);
        controlIt(stage);
        askTheSystem(stage);
        failOnPurpose(stage);
    }

    private void describe(Stage stage) {
        stage.scene("As the setup has made it");
        stage.gives("there is such a service", true, () -> services.serviceExists(NAME));
        stage.gives("the name that people see", TITLE,
                () -> services.getNTServiceDisplayName(NAME));
        stage.gives("the name behind that", NAME, () -> services.getNTServiceKeyName(TITLE));
        stage.does("describe it otherwise",
                () -> services.changeWin2kServiceDescription(NAME, DESCRIPTION));
        stage.gives("its description", DESCRIPTION,
                () -> services.queryWin2kServiceDescription(NAME));
        String entry = stage.run("reg", "query", KEY);
        stage.gives("its titles and its command are shown", true, () -> entry.contains(TITLE)
                && SystemTool.printed(DESCRIPTION).matcher(entry).find() && entry.contains(COMMAND));
    }

    /** Nothing else is changed by what is not said. */
    private void configure(Stage stage) throws Exception {
        NTServiceConfig change = new NTServiceConfig();
        change.setDependencies(new String[] {DEPENDENCY});
        stage.scene("Its configuration");
        stage.does("start it after " + DEPENDENCY,
                () -> services.changeNTServiceConfig(NAME, change));
        stage.gives("how it is started (2: with Windows)", NTServiceConfig.SERVICE_AUTO_START,
                () -> services.queryNTServiceConfig(NAME).getStartType());
        stage.gives("its command is as it was", COMMAND,
                () -> services.queryNTServiceConfig(NAME).getCommand());
        stage.gives("the account that it runs as", "LocalSystem",
                () -> services.queryNTServiceConfig(NAME).getUserName());
        String entry = stage.run("reg", "query", KEY, "/v", "DependOnService");
        stage.gives("what it depends on is shown", true, () -> entry.contains(DEPENDENCY));
        stage.tells("asked for it, " + Host.name() + " tells "
                + Arrays.toString(services.queryNTServiceConfig(NAME).getDependencies()));
    }

    /** Not every system keeps it; whether this one does, its registry says. */
    private void sayWhatFailureBrings(Stage stage) throws Exception {
        Win2kSCAction restart = new Win2kSCAction(Win2kSCAction.SC_ACTION_RESTART, 1000);
        Win2kServiceFailureActions actions = new Win2kServiceFailureActions();
        actions.setResetPeriod(SECONDS_A_DAY);
        actions.addAction(restart);
        stage.scene("What Windows is to do when it fails");
        stage.does("start it again, after a second",
                () -> services.changeWin2kServiceFailureActions(NAME, actions));
        boolean keeps = new SystemTool("reg", "query", KEY, "/v", "FailureActions").run() == 0;
        stage.tells(Host.name() + (keeps ? " keeps it, its registry says"
                : " accepts that, but keeps nothing, its registry says"));
        if (keeps) {
            stage.gives("what it does first", restart.toString(), () -> services
                    .queryWin2kServiceFailureActions(NAME).getActionAt(0).toString());
        } else {
            stage.refuses("ask what it does", FAILURE_ACTIONS_UNKNOWN,
                    () -> services.queryWin2kServiceFailureActions(NAME));
        }
    }

    private void startIt(Stage stage) throws Exception {
        stage.scene("It stops, and runs again");
        stage.does("stop it", HarbourWatch::stop);
        stage.gives("the code of its own with which it has ended", HarbourWatch.EXIT_CODE,
                () -> services.queryNTServiceStatus(NAME).getServiceSpecificExitCode());
        stage.refuses("stop it again", NOT_STOPPED, NOT_ACTIVE, HarbourWatch::stop);
        stage.does("start it, to watch " + PLACE,
                () -> services.startNTService(NAME, new String[] {PLACE}));
        isIn(stage, "its state (4: running)", NTServiceStatus.SERVICE_RUNNING);
        stage.gives("its program is in use, as the JDK sees it", true,
                HarbourWatch::isProgramInUse);
        stage.gives("it is among the services that run", true,
                () -> HarbourWatch.isListed(Win32ServiceImpl.SERVICE_ACTIVE));
        stage.tells("" + services.queryWin2kServiceStatusProcess(NAME));
    }

    private void controlIt(Stage stage) {
        stage.scene("It is controlled");
        stage.does("pause it", () -> control(Win32ServiceImpl.SERVICE_CONTROL_PAUSE));
        isIn(stage, "its state (7: paused)", NTServiceStatus.SERVICE_PAUSED);
        stage.does("let it go on", () -> control(Win32ServiceImpl.SERVICE_CONTROL_CONTINUE));
        isIn(stage, "its state (4: running)", NTServiceStatus.SERVICE_RUNNING);
        stage.does("send it a code of its own", () -> control(CODE_OF_ITS_OWN));
        String[] told = {NAME, "control 1", NAME, PLACE, "control 2", "control 3", "control " + CODE_OF_ITS_OWN};
        stage.gives("what it was told, as it has recorded it", told,
                () -> HarbourWatch.record().toArray());
    }

    private void control(int code) throws Exception {
        services.controlNTService(NAME, code);
    }

    private static void isIn(Stage stage, String what, int state) {
        stage.gives(what, state, () -> HarbourWatch.stateOnceIn(state));
    }

    private static void askTheSystem(Stage stage) {
        stage.scene("The system's own tools");
        String answer = stage.run("sc", "query", NAME);
        stage.gives("it is shown running", true, () -> answer.contains("RUNNING"));
        String list = stage.run("net", "start");
        stage.gives("it is in the list", true, () -> list.contains(TITLE));
    }

    private void failOnPurpose(Stage stage) {
        stage.scene("Steps that must fail");
        stage.refuses("create it again", NOT_CREATED, SERVICE_EXISTS,
                () -> services.createNTService(NAME, new NTServiceConfig(TITLE, COMMAND)));
        stage.refuses("start it again", NOT_STARTED, ALREADY_RUNNING,
                () -> services.startNTService(NAME, null));
    }
}
