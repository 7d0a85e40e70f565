package com.corvane.demo;

import static com.corvane.demo.Product.VENDOR_FOLDER;

import com.corvane.wizard.platform.win32.Win32FileServiceImpl;
import java.nio.file.Files;

/** After the reboot that {@link RemovalInUseChapter} waits for: the locked file is gone. */
final class NothingLeftChapter implements Chapter {
    private final Win32FileServiceImpl files = new Win32FileServiceImpl();

    @Override
    public String name() {
        return "Files in use, after another reboot: nothing is left";
    }

    @Override
    public void run(Stage stage) {
        stage.scene("What the reboot did");
        PendingWork.showNone(stage);
        stage.gives("only the folder of the locked file is left",
                new String[] {Product.FOLDER.getFileName() + "\\"}, Product::listing);
        stage.gives("remove it and the vendor's", 0,
                () -> files.win32DeleteDirectory(VENDOR_FOLDER.toString(), false, true));
        stage.gives("it is there", false, () -> Files.exists(VENDOR_FOLDER));
    }
}
