package com.corvane.demo;

import java.io.IOException;
import java.nio.channels.FileChannel;
import java.nio.file.OpenOption;
import java.nio.file.Paths;
import java.nio.file.StandardOpenOption;

/** A program that keeps files open which nobody else may write, rename or delete meanwhile. */
final class FileHolder {
    private FileHolder() {}

    /** The arguments name the files. */
    public static void main(String[] arguments) throws IOException, ReflectiveOperationException {
        for (String name : arguments) {
            FileChannel.open(Paths.get(name), StandardOpenOption.READ,
                    unshared("NOSHARE_WRITE"), unshared("NOSHARE_DELETE"));
        }
        System.out.println("open");
        System.in.read();
    }

    /** By name, because these options are the JDK's, outside of the API of Java 8. */
    private static OpenOption unshared(String name) throws ReflectiveOperationException {
        Class<?> options = Class.forName("com.sun.nio.file.ExtendedOpenOption");
        return (OpenOption) options.getField(name).get(null);
    }
}
