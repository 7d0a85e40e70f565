package com.corvane.demo;

import java.nio.file.Files;
import java.util.List;

/**
 * After the reboot that {@link RemovalInUseChapter} waits for: what was in use is gone, and all is
 * as {@link BeforeChapter} has found it.
 */
final class NothingLeftChapter implements Chapter {
    /** A list of all, when something goes quite wrong, would be long. */
    private static final int SHOWN = 50;

    @Override
    public String name() {
        return "After another reboot: nothing is left";
    }

    @Override
    public void run(Stage stage) throws Exception {
        stage.scene("What the reboot did");
        PendingWork.showNone(stage);
        stage.gives("the product's folder is still there", false, () -> Waiting.forAnswer(
                exists -> !exists, () -> Files.exists(Product.ROOT)));
        compare(stage);
    }

    private static void compare(Stage stage) throws Exception {
        stage.scene("The registry and the disk, compared with what there was before, but for");
        OwnChanges.reasons().forEach(stage::tells);
        List<String> changes = Snapshot.saved().changesTo(Snapshot.take());
        stage.gives("what is different", new String[0],
                () -> changes.stream().limit(SHOWN).toArray());
        stage.does("forget what there was before", Snapshot::forget);
    }
}
