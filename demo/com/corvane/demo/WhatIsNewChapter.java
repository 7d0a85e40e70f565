package com.corvane.demo;

import java.nio.file.Path;
import java.util.List;

/**
 * What the installation has changed, compared with what {@link BeforeChapter} has written down: so
 * that nobody takes a comparison for good which sees nothing.
 */
final class WhatIsNewChapter implements Chapter {
    @Override
    public String name() {
        return "After the reboot: what is new";
    }

    @Override
    public void run(Stage stage) throws Exception {
        stage.scene("Compared with the registry and the disk before the installation");
        List<String> changes = Snapshot.saved().changesTo(Snapshot.take());
        for (Path shortcut : HarbourSetup.SHORTCUTS) {
            isNew(stage, "a shortcut", shortcut.toString(), changes);
        }
        isNew(stage, "the program", Product.installed(Product.PROGRAM), changes);
        isNew(stage, "the key of the list of programs", "\\Uninstall\\" + HarbourSetup.NAME, changes);
        isNew(stage, "the key of the service", "\\Services\\" + HarbourWatch.NAME, changes);
    }

    private static void isNew(Stage stage, String what, String name, List<String> changes) {
        stage.gives(what + " is seen as new", true, () -> changes.stream()
                .anyMatch(change -> change.startsWith(Snapshot.NEW) && change.contains(name)));
    }
}
