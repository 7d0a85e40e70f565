package com.corvane.demo;

import static com.corvane.demo.Product.FRENCH_HELP;
import static com.corvane.demo.Product.HELP;

import com.corvane.wizard.platform.win32.Win32FileServiceImpl;
import com.corvane.wizard.service.ServiceException;
import java.io.IOException;
import java.nio.file.Path;

/**
 * Owner and group of an installed file. Not every system keeps those that a file is given, so the
 * JDK gives another file away first: the library's file must fare like that one.
 */
final class OwnerChapter implements Chapter {
    private static final String ACCOUNT = "Administrators";
    private static final String UNKNOWN = "nobody of that name";

    private static final int OWNER_NOT_SET = -30013;
    private static final int GROUP_NOT_SET = -30009;
    private static final int NO_SUCH_ACCOUNT = 1332;

    private final Win32FileServiceImpl files = new Win32FileServiceImpl();
    private final Path file = Product.FOLDER.resolve(HELP);
    private final Path other = Product.FOLDER.resolve(FRENCH_HELP);

    @Override
    public String name() {
        return "Owner: to whom " + HELP + " belongs";
    }

    @Override
    public void run(Stage stage) throws Exception {
        String owner = Accounts.ownerOf(file);
        stage.scene("As it is installed");
        stage.gives("its owner (the JDK says the same)", owner, this::owner);
        String answer = stage.run("cmd", "/c", "dir", "/q", file.toString());
        stage.gives("the owner is shown", true, () -> answer.contains(owner));
        String group = group();
        stage.gives("it has a group", true, () -> !group.isEmpty());
        stage.tells("the group is " + Text.of(group));
        giveAway(stage, group);
        failOnPurpose(stage);
    }

    private void giveAway(Stage stage, String group) throws IOException {
        stage.scene("Another owner, which the JDK gives to another file first");
        stage.does("the JDK gives " + FRENCH_HELP + " to " + ACCOUNT,
                () -> Accounts.setOwner(other, ACCOUNT));
        String kept = Accounts.ownerOf(other);
        boolean keeps = kept.equals(ACCOUNT);
        stage.tells("it belongs to " + kept + " afterwards: " + Host.name()
                + (keeps ? " keeps a new owner" : " accepts a new owner, but keeps the old one"));
        stage.tells("therefore the library's file must have this owner, too");
        String what = keeps ? "is the new one" : "is still the old one";
        give(stage, what, kept, keeps ? ACCOUNT : group);
    }

    /** Owner and group are what is expected then. */
    private void give(Stage stage, String what, String owner, String group) {
        stage.scene("The same, by the library");
        stage.does("give " + HELP + " to " + ACCOUNT,
                () -> files.setFileOwner(file.toString(), ACCOUNT));
        stage.gives("its owner " + what + ", too", owner, this::owner);
        stage.does("give it to the group " + ACCOUNT,
                () -> files.setFileOwnerGroup(file.toString(), ACCOUNT));
        stage.gives("its group " + what + ", too", group, this::group);
    }

    private void failOnPurpose(Stage stage) {
        stage.scene("Steps that must fail");
        stage.refuses("give it to an account that is not there", OWNER_NOT_SET, NO_SUCH_ACCOUNT,
                () -> files.setFileOwner(file.toString(), UNKNOWN));
        stage.refuses("give it to a group that is not there", GROUP_NOT_SET, NO_SUCH_ACCOUNT,
                () -> files.setFileOwnerGroup(file.toString(), UNKNOWN));
    }

    private String owner() throws ServiceException {
        return files.getFileOwner(file.toString());
    }

    private String group() throws ServiceException {
        return files.getFileOwnerGroup(file.toString());
    }
}
