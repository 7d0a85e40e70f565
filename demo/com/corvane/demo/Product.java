package com.corvane.demo;

import com.corvane.wizard.platform.win32.Win32FileServiceImpl;
import com.corvane.wizard.service.ServiceException;
import java.io.IOException;
import java.net.URISyntaxException;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.Paths;
import java.nio.file.StandardCopyOption;
import java.util.stream.Stream;

/**
 * The small product that is installed. What is looked up here goes past the library, through the
 * JDK: it is what the library's work is checked against.
 */
final class Product {
    /** All of it; beside the product's own folder are what removes it, and the log of its service. */
    static final Path ROOT = Paths.get(System.getenv("ProgramFiles"), "Harbour Notes");

    static final Path FOLDER = ROOT.resolve("program");

    /** What the product is installed from: its files in a folder, beside the jars of its setup. */
    static final Path MEDIUM = Paths.get(System.getProperty("java.io.tmpdir"), "Corvane Demo CD");


    /** A program that runs; see {@link RunningProgram}. */
    static final String PROGRAM = "notes.exe";

    static final String NOTES = "notes.dat";
    static final String WORDS = "words.dic";
    static final String HELP = "help\\index.txt";
    static final String FRENCH_HELP = "help\\french\\index.txt";

    private static final Path CONTENT = MEDIUM.resolve("product");
    private static final String MARK = "\r\nversion ";

    private Product() {}

    /** Makes the medium with all files of a version, each of which ends in the version's number. */
    static void makeMedium(int version) throws IOException, URISyntaxException {
        Path jar = Paths.get(
                Product.class.getProtectionDomain().getCodeSource().getLocation().toURI());
        Path interpreter = Paths.get(System.getenv("ComSpec"));
        make(CONTENT.resolve(PROGRAM), Files.readAllBytes(interpreter), version);
        for (String name : new String[] {NOTES, WORDS, HELP, FRENCH_HELP}) {
            make(CONTENT.resolve(name), name.getBytes(StandardCharsets.UTF_8), version);
        }
        copy(jar.resolveSibling("corvane_demo_service_" + version + ".exe"),
                CONTENT.resolve(HarbourWatch.PROGRAM));
        for (String name : new String[] {"corvane-demo.jar", "corvane-win32.jar"}) {
            copy(jar.resolveSibling(name), MEDIUM.resolve(name));
        }
    }

    /** It has a higher version than all that the product had, and cannot be started. */
    static void breakMedium() throws IOException {
        copy(VersionChapter.SYSTEM_DLL, CONTENT.resolve(HarbourWatch.PROGRAM));
    }

    private static void copy(Path source, Path target) throws IOException {
        Files.copy(source, target, StandardCopyOption.REPLACE_EXISTING);
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

    /** All that there is, sorted; a folder ends in a backslash. */
    static String[] listing() throws IOException {
        try (Stream<Path> all = Files.walk(ROOT)) {
            return all.skip(1).map(Product::shown).sorted().toArray(String[]::new);
        }
    }

    private static String shown(Path path) {
        String name = ROOT.relativize(path).toString();
        return Files.isDirectory(path) ? name + "\\" : name;
    }

    /** Removes what a run that was broken off has left. */
    static void clear(Win32FileServiceImpl files) throws ServiceException {
        for (Path folder : new Path[] {ROOT, MEDIUM}) {
            if (Files.exists(folder)) {
                files.win32DeleteDirectory(folder.toString(), false, true);
            }
        }
    }

    static String onMedium(String name) {
        return CONTENT.resolve(name).toString();
    }

    static String installed(String name) {
        return FOLDER.resolve(name).toString();
    }
}
