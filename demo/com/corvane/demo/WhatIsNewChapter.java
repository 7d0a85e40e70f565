package com.corvane.demo;

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
        for (Shortcut shortcut : Shortcut.ALL) {
            isNew(stage, "the shortcut " + shortcut.name, shortcut.file().toString(), changes);
        }
        isNew(stage, "the program", Product.installed(Product.PROGRAM), changes);
        isNew(stage, "the key of the list of programs", ProgramListEntry.KEY, changes);
        isNew(stage, "the key of the service", "\\Services\\" + HarbourWatch.NAME, changes);
    }

    private static void isNew(Stage stage, String what, String name, List<String> changes) {
        stage.gives(what + " is seen as new", true, () -> changes.stream()
                .anyMatch(change -> change.startsWith(Snapshot.NEW) && change.contains(name)));
    }
}
