package com.corvane.demo;

import com.corvane.wizard.platform.win32.Win32FileServiceImpl;
import com.corvane.wizard.service.ServiceException;
import java.io.IOException;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.Paths;
import java.util.stream.Stream;

/**
 * The small product that the chapters about files install. What is looked up here goes past the
 * library, through the JDK: it is what the library's work is checked against.
 */
final class Product {
    /** Above the product's folder, and made with it. */
    static final Path VENDOR_FOLDER = Paths.get(System.getenv("ProgramFiles"), "Corvane Demo");

    static final Path FOLDER = VENDOR_FOLDER.resolve("Harbour Notes");

    /** What the product is installed from. */
    static final Path MEDIUM = Paths.get(System.getProperty("java.io.tmpdir"), "Corvane Demo CD");

    /** A program that runs; see {@link RunningProgram}. */
    static final String PROGRAM = "notes.exe";

    static final String NOTES = "notes.dat";
    static final String WORDS = "words.dic";
    static final String HELP = "help\\index.txt";
    static final String FRENCH_HELP = "help\\french\\index.txt";

    private static final String MARK = "\r\nversion ";

    private Product() {}

    /** Makes the medium with all files of a version, each of which ends in the version's number. */
    static void makeMedium(int version) throws IOException {
        Path interpreter = Paths.get(System.getenv("ComSpec"));
        make(MEDIUM.resolve(PROGRAM), Files.readAllBytes(interpreter), version);
        for (String name : new String[] {NOTES, WORDS, HELP, FRENCH_HELP}) {
            make(MEDIUM.resolve(name), name.getBytes(StandardCharsets.UTF_8), version);
        }
    }

    private static void make(Path file, byte[] content, int version) throws IOException {
        Files.createDirectories(file.getParent());
        byte[] end = (MARK + version).getBytes(StandardCharsets.UTF_8);
        byte[] all = new byte[content.length + end.length];
        System.arraycopy(content, 0, all, 0, content.length);
        System.arraycopy(end, 0, all, content.length, end.length);
        Files.write(file, all);
    }

    /** The version to which an installed file belongs, 0 when it tells none. */
    static int versionOf(String name) throws IOException {
        byte[] all = Files.readAllBytes(FOLDER.resolve(name));
        String text = new String(all, StandardCharsets.ISO_8859_1);
        int mark = text.lastIndexOf(MARK);
        return mark < 0 ? 0 : Integer.parseInt(text.substring(mark + MARK.length()));
    }

    static void makeFolders() throws IOException {
        Files.createDirectories(FOLDER.resolve(FRENCH_HELP).getParent());
    }

    /** What there is below the vendor's folder, sorted; a folder ends in a backslash. */
    static String[] listing() throws IOException {
        try (Stream<Path> all = Files.walk(VENDOR_FOLDER)) {
            return all.skip(1).map(Product::shown).sorted().toArray(String[]::new);
        }
    }

    private static String shown(Path path) {
        String name = VENDOR_FOLDER.relativize(path).toString();
        return Files.isDirectory(path) ? name + "\\" : name;
    }

    /** Removes what a run that was broken off has left. */
    static void clear(Win32FileServiceImpl files) throws ServiceException {
        for (Path folder : new Path[] {VENDOR_FOLDER, MEDIUM}) {
            if (Files.exists(folder)) {
                files.win32DeleteDirectory(folder.toString(), false, true);
            }
        }
    }

    static String onMedium(String name) {
        return MEDIUM.resolve(name).toString();
    }

    static String installed(String name) {
        return FOLDER.resolve(name).toString();
    }
}
