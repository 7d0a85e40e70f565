package com.corvane.demo;

import static com.corvane.demo.HarbourSetup.FAILED;

import java.nio.file.Files;
import java.nio.file.Path;
import java.util.stream.Stream;

/**
 * A whole product is installed by {@link harbour.Setup}; at first one that cannot work, of which
 * nothing may stay. {@link UpgradeInUseChapter} goes on from there.
 */
final class InstallationChapter implements Chapter {
    /** What an installation leaves, whatever its version is. */
    static final String[] ALL = Stream.concat(
            Stream.of("program\\", "setup\\", "setup\\Setup.jar", "setup\\Win32Library.jar",
                    "watch.log"),
            Stream.of("help\\", "help\\french\\", Product.PROGRAM, Product.NOTES, Product.WORDS,
                    Product.HELP, Product.FRENCH_HELP, HarbourWatch.PROGRAM)
                    .map("program\\"::concat))
            .sorted().toArray(String[]::new);

    @Override
    public String name() {
        return "Installation: " + HarbourSetup.NAME + ", from nothing";
    }

    @Override
    public void run(Stage stage) throws Exception {
        failOnPurpose(stage);
        install(stage);
        askTheSystem(stage);
    }

    private static void failOnPurpose(Stage stage) throws Exception {
        stage.scene("A product whose service cannot be started");
        stage.does("make its medium", () -> Product.makeMedium(1));
        stage.does("put a library in the place of " + HarbourWatch.PROGRAM, Product::breakMedium);
        Snapshot before = Snapshot.take();
        stage.run(FAILED, HarbourSetup.command());
        stage.gives("what is different in the registry and on the disk", new String[0],
                () -> before.changesTo(Snapshot.take()).toArray());
    }

    private static void install(Stage stage) {
        stage.scene("Version 1");
        stage.does("make its medium", () -> Product.makeMedium(1));
        stage.run(HarbourSetup.command());
        stage.gives("all files and folders that there are", ALL, Product::listing);
        stage.gives("version of " + Product.NOTES, 1, () -> Product.versionOf(Product.NOTES));
        for (Path shortcut : HarbourSetup.SHORTCUTS) {
            stage.gives(shortcut + " is there", true, () -> Files.isRegularFile(shortcut));
        }
    }

    private static void askTheSystem(Stage stage) {
        stage.scene("The same as the system's own tools show it");
        String list = stage.run(HarbourSetup.LIST);
        String entry = stage.run("reg", "query", HarbourSetup.ENTRY);
        if (list.isEmpty()) {
            stage.tells(Host.name() + " prints its list past the program that asks; what it reads is above");
        }
        stage.gives("it is in the list of programs", true,
                () -> (list.isEmpty() ? entry : list).contains(HarbourSetup.NAME));
        String service = stage.run("sc", "query", HarbourWatch.NAME);
        stage.gives("its service runs", true, () -> service.contains("RUNNING"));
    }
}
