package com.corvane.demo;

import static com.corvane.demo.Product.PROGRAM;
import static com.corvane.demo.Product.installed;

import com.corvane.util.FileAttributes;
import com.corvane.wizard.platform.win32.Win32DesktopServiceImpl;
import com.corvane.wizard.service.ServiceException;
import java.io.IOException;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.stream.Stream;

/**
 * Shortcuts in the Start menu and on the desktop, of the user and of all users: made, started, and
 * taken away.
 */
final class ShortcutsChapter implements Chapter {
    private static final int NOT_REMOVED = -80003;
    private static final int ACCESS_DENIED = 5;

    private final Win32DesktopServiceImpl desktop = new Win32DesktopServiceImpl();

    @Override
    public String name() {
        return "Start menu and desktop: shortcuts";
    }

    @Override
    public void run(Stage stage) throws IOException {
        makeGroup(stage);
        Shortcut.ALL.forEach(shortcut -> make(stage, shortcut));
        setAttributes(stage);
        showFolder(stage);
        Shortcut.ALL.forEach(shortcut -> start(stage, shortcut));
        failOnPurpose(stage);
        stage.scene("They are taken away, and their groups");
        Shortcut.ALL.forEach(shortcut -> remove(stage, shortcut));
    }

    private void makeGroup(Stage stage) {
        Shortcut first = Shortcut.ALL.get(0);
        stage.scene("A program group in the user's Start menu");
        stage.does("create " + first.folder + '\\' + first.group,
                () -> desktop.createDesktopFolder(first.folder, first.group));
        stage.gives("the group is there", true, () -> Files.isDirectory(first.file().getParent()));
    }

    private void make(Stage stage, Shortcut shortcut) {
        stage.scene(shortcut.shown());
        stage.does("create the shortcut", () -> desktop.createDesktopItem(
                shortcut.folder, shortcut.group, shortcut.name, installed(PROGRAM),
                shortcut.arguments(), installed(PROGRAM), Product.FOLDER.toString()));
        stage.gives("the shortcut is there", true, () -> Files.isRegularFile(shortcut.file()));
        stage.gives("the program, its folder and arguments are in it", true,
                () -> Stream.of(installed(PROGRAM), Product.FOLDER.toString(), shortcut.arguments())
                        .allMatch(contentOf(shortcut.file())::contains));
    }

    /** A shortcut's texts are stored in 16 bits a character, from any byte on. */
    private static String contentOf(Path file) throws IOException {
        byte[] all = Files.readAllBytes(file);
        return new String(all, StandardCharsets.UTF_16LE)
                + new String(all, 1, all.length - 1, StandardCharsets.UTF_16LE);
    }

    private void setAttributes(Stage stage) throws IOException {
        Shortcut shortcut = Shortcut.READ_ONLY;
        FileAttributes attributes = new FileAttributes();
        attributes.setAttributeState(FileAttributes.ARCHIVE, true);
        stage.scene("Attributes and owner of " + shortcut.shown());
        stage.gives("it may be written", true, () -> isWriteable(shortcut));
        stage.does("make it read-only", () -> desktop.setDesktopItemAttributes(
                shortcut.folder, shortcut.group, shortcut.name, attributes));
        stage.gives("it may be written", false, () -> isWriteable(shortcut));
        stage.gives("it is read-only, as the JDK sees it", true,
                () -> Files.getAttribute(shortcut.file(), "dos:readonly"));
        stage.gives("its owner (the JDK says the same)", Accounts.ownerOf(shortcut.file()),
                () -> desktop.getDesktopItemOwner(shortcut.folder, shortcut.group, shortcut.name));
    }

    private boolean isWriteable(Shortcut shortcut) throws ServiceException {
        return desktop.getDesktopItemAttributes(shortcut.folder, shortcut.group, shortcut.name)
                .getAttributeState(FileAttributes.OWNER_WRITEABLE);
    }

    private void showFolder(Stage stage) {
        Shortcut shortcut = Shortcut.READ_ONLY;
        stage.scene("The group for all users as the system's own tool shows it");
        String answer = stage.run("cmd", "/c", "dir", "/b", shortcut.file().getParent().toString());
        stage.gives("it shows the shortcut and nothing else", true,
                SystemTool.printed(shortcut.name + ".lnk").matcher(answer.trim())::matches);
    }

    /** The shell returns before the program has ended. */
    private void start(Stage stage, Shortcut shortcut) {
        stage.scene("The shell opens " + shortcut.shown());
        stage.run("cmd", "/c", "start", "", shortcut.file().toString());
        stage.gives("the program ran, in its folder", Product.FOLDER.toString(),
                () -> Trace.take(shortcut.trace()));
        stage.gives("the file that it wrote is still there", false,
                () -> Files.exists(shortcut.trace()));
    }

    private void failOnPurpose(Stage stage) {
        Shortcut shortcut = Shortcut.READ_ONLY;
        FileAttributes attributes = new FileAttributes();
        attributes.setAttributeState(FileAttributes.OWNER_WRITEABLE, true);
        stage.scene("A step that must fail");
        stage.refuses("remove " + shortcut.name + ", which is read-only", NOT_REMOVED,
                ACCESS_DENIED, () -> shortcut.remove(desktop));
        stage.gives("the shortcut is still there", true, () -> Files.exists(shortcut.file()));
        stage.does("make it writeable", () -> desktop.setDesktopItemAttributes(
                shortcut.folder, shortcut.group, shortcut.name, attributes));
    }

    private void remove(Stage stage, Shortcut shortcut) {
        stage.does("remove " + shortcut.shown(), () -> shortcut.remove(desktop));
        stage.gives("the shortcut is still there", false, () -> Files.exists(shortcut.file()));
        if (shortcut.topFolder() != null) {
            Path group = shortcut.topFolder();
            stage.gives("the group " + group.getFileName() + " is still there", false,
                    () -> Files.exists(group));
        }
        Path place = shortcut.place();
        stage.gives(place.getFileName() + ", which was there before, is still there", true,
                () -> Files.isDirectory(place));
    }
}
