package com.corvane.demo;

import com.corvane.wizard.platform.win32.Win32Library;
import java.io.FileDescriptor;
import java.io.FileOutputStream;
import java.io.PrintStream;
import java.util.Arrays;
import java.util.List;
import java.util.function.Supplier;

/**
 * A small installer that does for real what the library offers, and shows it.
 *
 * <p>Exits with 0 when every step came out as expected, with 1 otherwise.
 */
public final class Demo {
    /** Made one by one once the library is loaded, for their classes need it. */
    private static final List<Supplier<Chapter>> CHAPTERS = Arrays.asList(RegistryChapter::new);

    private Demo() {}

    public static void main(String[] arguments) throws Exception {
        // The texts of an installer are in many languages, whatever the console's code page is.
        PrintStream out = new PrintStream(new FileOutputStream(FileDescriptor.out), true, "UTF-8");
        Stage stage = new Stage(out);
        stage.play(new Opening());
        if (stage.allAsExpected()) {
            CHAPTERS.forEach(chapter -> stage.play(chapter.get()));
        }
        stage.close();
        System.exit(stage.allAsExpected() ? 0 : 1);
    }

    /** Says where the demonstration runs, and loads the library that all chapters need. */
    private static final class Opening implements Chapter {
        @Override
        public String name() {
            return "Java " + System.getProperty("java.version") + " on "
                    + System.getProperty("os.name") + " (" + System.getProperty("os.arch") + ")";
        }

        @Override
        public void run(Stage stage) {
            stage.does("load the library", Win32Library::load);
        }
    }
}
