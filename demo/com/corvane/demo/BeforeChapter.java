package com.corvane.demo;

import com.corvane.util.FileAttributes;
import com.corvane.wizard.platform.win32.Win32DesktopServiceImpl;
import com.corvane.wizard.service.ServiceException;
import java.nio.file.Files;

/** Writes down what there is before the installation, for {@link NothingLeftChapter}. */
final class BeforeChapter implements Chapter {
    @Override
    public String name() {
        return "Before: what there is";
    }

    @Override
    public void run(Stage stage) {
        clear(stage);
        stage.scene("The registry and the disk");
        stage.does("write down what is in them", () -> Snapshot.take().save());
        stage.gives("both are there to compare with", true, () -> Snapshot.saved().isWhole());
    }

    static void clear(Stage stage) {
        stage.scene("What a run that was broken off has left");
        stage.does("clear registry entries", RegistryChapter::clear);
        stage.does("clear the product", HarbourSetup::clear);
        stage.does("clear shortcuts", BeforeChapter::clearShortcuts);
        stage.does("clear rights", RightsChapter::clear);
    }

    private static void clearShortcuts() throws ServiceException {
        Win32DesktopServiceImpl desktop = new Win32DesktopServiceImpl();
        FileAttributes writeable = new FileAttributes();
        writeable.setAttributeState(FileAttributes.OWNER_WRITEABLE, true);
        for (Shortcut shortcut : Shortcut.ALL) {
            if (Files.exists(shortcut.file())) {
                desktop.setDesktopItemAttributes(
                        shortcut.folder, shortcut.group, shortcut.name, writeable);
            }
            shortcut.remove(desktop);
        }
    }
}
