package com.corvane.demo;

import com.corvane.util.FileAttributes;
import com.corvane.wizard.platform.win32.Win32DesktopServiceImpl;
import com.corvane.wizard.service.ServiceException;
import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;

/** Takes away what {@link ShortcutsChapter} and {@link ProgramListChapter} have made. */
final class UninstallationChapter implements Chapter {
    private static final int NOT_REMOVED = -80003;
    private static final int ACCESS_DENIED = 5;

    private final Win32DesktopServiceImpl desktop = new Win32DesktopServiceImpl();

    @Override
    public String name() {
        return "Uninstallation: shortcuts, groups and the entry in the list of programs";
    }

    @Override
    public void run(Stage stage) {
        failOnPurpose(stage);
        stage.scene("Shortcuts and their groups");
        Shortcut.ALL.forEach(shortcut -> remove(stage, shortcut));
        removeEntry(stage);
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

    private static void removeEntry(Stage stage) {
        stage.scene("The list of programs");
        stage.does("remove the entry", ProgramListEntry::remove);
        String list = stage.run(ProgramListEntry.LIST);
        stage.gives("the product is still in it", false, () -> list.contains(ProgramListEntry.KEY));
    }
}
