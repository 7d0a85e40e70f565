package com.corvane.demo;

import com.corvane.wizard.platform.win32.security.WindowsAccountPrivilegeServiceImpl;
import com.corvane.wizard.service.ServiceException;
import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.Paths;
import java.util.Arrays;
import java.util.List;

/**
 * The right to run services, which an account needs that a service is to run as: granted, listed,
 * taken away. Wine says that it grants rights, but keeps none: there the chapter shows just that.
 */
final class RightsChapter implements Chapter {
    private static final String ACCOUNT = System.getProperty("user.name");
    private static final String UNKNOWN = "nobody of that name";
    private static final String RIGHT = WindowsAccountPrivilegeServiceImpl.LOG_ON_AS_SERVICE;
    private static final String HERE = "";

    /** Is there from before it is granted until it is taken away again. */
    private static final Path NOTE = Paths.get("corvane-demo-right.txt");

    private static final int NOT_GRANTED = -110100;
    private static final int NOT_TAKEN_AWAY = -110102;
    private static final int NOT_LISTED = -110103;
    private static final int NO_SUCH_ACCOUNT = 1332;

    private final WindowsAccountPrivilegeServiceImpl rights =
            new WindowsAccountPrivilegeServiceImpl();

    @Override
    public String name() {
        return "Rights: whether an account may run services";
    }

    @Override
    public void run(Stage stage) throws Exception {
        List<String> before = held();
        stage.scene("What " + ACCOUNT + " holds itself, and not as a member of groups");
        stage.tells(Text.of(before.toArray()));
        if (!before.contains(RIGHT)) {
            Files.write(NOTE, new byte[0]);
        }
        grant(stage);
        if (!before.contains(RIGHT)) {
            stage.does("take it away", () -> {
                takeAway(ACCOUNT);
                Files.delete(NOTE);
            });
        }
        stage.gives("it holds what it held before", before, this::held);
        failOnPurpose(stage);
    }

    private void grant(Stage stage) throws ServiceException {
        stage.does("grant it " + RIGHT, () -> grant(ACCOUNT));
        boolean holds = held().contains(RIGHT);
        if (holds || !Host.isWine()) {
            stage.gives("it holds it now", true, () -> held().contains(RIGHT));
        } else {
            stage.tells(Host.name() + " says that it is granted, but keeps no rights: it lists "
                    + Text.of(held().toArray()));
        }
    }

    private void failOnPurpose(Stage stage) {
        stage.scene("Steps that must fail: an account that is not there");
        stage.refuses("grant it the right", NOT_GRANTED, NO_SUCH_ACCOUNT, () -> grant(UNKNOWN));
        stage.refuses("take it away", NOT_TAKEN_AWAY, NO_SUCH_ACCOUNT, () -> takeAway(UNKNOWN));
        stage.refuses("list what it holds", NOT_LISTED, NO_SUCH_ACCOUNT,
                () -> rights.nativeEnumerateAccountRights(UNKNOWN, HERE));
    }

    /** Also what a run that was broken off has left. */
    static void clear() throws ServiceException, IOException {
        if (Files.exists(NOTE)) {
            RightsChapter chapter = new RightsChapter();
            if (chapter.held().contains(RIGHT)) {
                chapter.takeAway(ACCOUNT);
            }
            Files.delete(NOTE);
        }
    }

    private void grant(String account) throws ServiceException {
        rights.nativeAddAccountRights(account, HERE, new String[] {RIGHT});
    }

    private void takeAway(String account) throws ServiceException {
        rights.nativeRemoveAccountRights(account, HERE, new String[] {RIGHT});
    }

    private List<String> held() throws ServiceException {
        return Arrays.asList(rights.nativeEnumerateAccountRights(ACCOUNT, HERE));
    }
}
