package com.corvane.demo;

import static com.corvane.demo.Product.VENDOR_FOLDER;

import com.corvane.wizard.platform.win32.Win32FileServiceImpl;
import java.nio.file.Files;
import java.util.List;

/**
 * After the reboot that {@link RemovalInUseChapter} waits for: the locked file is gone, and all is
 * as {@link BeforeChapter} has found it.
 */
final class NothingLeftChapter implements Chapter {
    /** A list of all, when something goes quite wrong, would be long. */
    private static final int SHOWN = 50;

    private final Win32FileServiceImpl files = new Win32FileServiceImpl();

    @Override
    public String name() {
        return "After another reboot: nothing is left";
    }

    @Override
    public void run(Stage stage) throws Exception {
        stage.scene("What the reboot did");
        PendingWork.showNone(stage);
        stage.gives("only the folder of the locked file is left",
                new String[] {Product.FOLDER.getFileName() + "\\"}, Product::listing);
        stage.gives("remove it and the vendor's folder", 0,
                () -> files.win32DeleteDirectory(VENDOR_FOLDER.toString(), false, true));
        stage.gives("the vendor's folder is still there", false, () -> Files.exists(VENDOR_FOLDER));
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
