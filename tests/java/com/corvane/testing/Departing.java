package com.corvane.testing;

import com.corvane.wizard.platform.win32.Win32Cleaner;
import java.io.File;
import java.nio.channels.FileChannel;
import java.nio.file.StandardOpenOption;
import java.util.List;
import java.util.stream.Stream;

/**
 * An installer that has things deleted when it has ended: files, which it has open until then, and, behind a
 * star, directories. It starts a cleaner for each of its arguments, in which a bar stands between the names. It ends
 * with its input.
 */
public final class Departing {

    private Departing() {}

    public static void main(String[] arguments) throws Exception {
        for (String argument : arguments) {
            List<File> files = named(argument, false);
            for (File file : files) {
                if (file.isFile()) {
                    FileChannel.open(file.toPath(), StandardOpenOption.READ);
                }
            }
            Win32Cleaner.deleteAfterExit(files, named(argument, true));
        }
        System.out.println("handed over");
        System.in.read();
    }

    private static List<File> named(String argument, boolean starred) {
        return Stream.of(argument.split("\\|")).filter(name -> name.startsWith("*") == starred)
                .map(name -> new File(name.substring(starred ? 1 : 0))).toList();
    }
}
