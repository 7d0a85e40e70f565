package com.corvane.demo;

import com.corvane.wizard.platform.win32.Win32Library;
import java.io.FileDescriptor;
import java.io.FileOutputStream;
import java.io.IOException;
import java.io.PrintStream;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.Collections;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;
import java.util.function.Supplier;

/**
 * A small installer that does for real what the library offers, and shows it.
 *
 * <p>It is started three times, and Windows in between: without an argument, with {@code
 * --after-reboot}, and with {@code --after-second-reboot}. Exits with 0 when every step came out as
 * expected, with 1 otherwise.
 */
public final class Demo {
    /**
     * What each argument plays. The chapters are made one by one once the library is loaded, for
     * their classes need it.
     */
    private static final Map<String, List<Supplier<Chapter>>> CHAPTERS = new LinkedHashMap<>();

    static {
        CHAPTERS.put("", Arrays.asList(
                BeforeChapter::new, WhoAndWhereChapter::new, RegistryChapter::new,
                FilesChapter::new, InstallationChapter::new, OwnerChapter::new,
                ShortcutsChapter::new, RightsChapter::new, ServiceChapter::new,
                VersionChapter::new, ProgramsChapter::new, EnvironmentChapter::new,
                UpgradeInUseChapter::new));
        CHAPTERS.put("--after-reboot", Arrays.asList(
                UpgradedChapter::new, WhatIsNewChapter::new, RemovalInUseChapter::new));
        CHAPTERS.put("--after-second-reboot", Collections.singletonList(NothingLeftChapter::new));
    }

    /** Takes back what a part has left, when no other is to follow. */
    private static final String UNDO = "--undo";

    private Demo() {}

    public static void main(String[] arguments) throws Exception {
        String argument = String.join(" ", arguments);
        // The texts of an installer are in many languages, whatever the console's code page is.
        PrintStream out = new PrintStream(new FileOutputStream(FileDescriptor.out), true, "UTF-8");
        Stage stage = new Stage(out);
        if (argument.equals(UNDO)) {
            play(stage, Collections.singletonList(UndoChapter::new));
            System.exit(stage.allAsExpected() ? 0 : 1);
        }
        int part = new ArrayList<>(CHAPTERS.keySet()).indexOf(argument);
        if (part < 0) {
            System.err.println("One of these arguments, or none: " + CHAPTERS.keySet() + ", " + UNDO);
            System.exit(2);
        }
        Tally tally = Tally.takenBy(part);
        play(stage, CHAPTERS.get(argument));
        if (stage.allAsExpected()) {
            close(out, part, tally, stage.steps());
        }
        System.exit(stage.allAsExpected() ? 0 : 1);
    }

    private static void play(Stage stage, List<Supplier<Chapter>> chapters) {
        stage.play(new Opening());
        if (stage.allAsExpected()) {
            chapters.forEach(chapter -> stage.play(chapter.get()));
        }
        stage.close();
    }

    /** After a part that came out as expected: the last one says what all of them have shown. */
    private static void close(PrintStream out, int part, Tally tally, int steps)
            throws IOException {
        if (part + 1 < CHAPTERS.size()) {
            tally.leave(steps);
        } else if (tally.isWhole()) {
            out.printf("%n%d steps in %d parts, all as expected; the registry and the disk are as "
                            + "before,%nbut for what is named above.%n",
                    tally.with(steps), CHAPTERS.size());
        }
    }

    /** Says where the demonstration runs, and loads the library that all chapters need. */
    private static final class Opening implements Chapter {
        @Override
        public String name() {
            return "Java " + System.getProperty("java.version") + " ("
                    + System.getProperty("os.arch") + ") on " + Host.name();
        }

        @Override
        public void run(Stage stage) {
            stage.does("load the library", Win32Library::load);
        }
    }
}
