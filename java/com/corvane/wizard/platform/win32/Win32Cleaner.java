package com.corvane.wizard.platform.win32;

import com.corvane.wizard.service.ServiceException;
import java.io.File;
import java.io.IOException;
import java.nio.channels.SeekableByteChannel;
import java.nio.charset.Charset;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.Collection;
import java.util.Collections;
import java.util.List;

/**
 * Deletes files when this JVM has ended, such as those that it has in use itself: the program for it,
 * {@code corvane_cleaner.exe}, comes in the jar, is unpacked as the library is (see {@link Win32Library}) and started
 * at once. It deletes itself, too; its folder, which is empty then, goes when something is next unpacked beside it.
 *
 * <p>It obeys this process alone, waits until it has ended, however that may come, and then removes the files, and
 * the directories with all that is in them. A link goes itself, and where it leads nothing is touched; that
 * something is read-only is no obstacle. What is still in use is tried again for ten seconds and then left to the
 * next start of Windows, which takes the rights of an administrator.
 */
public final class Win32Cleaner {

    static final String FILE = "corvane_cleaner.exe";

    private Win32Cleaner() {}

    /**
     * Has all of this deleted when this JVM has ended. What is not there then is not missed. It may be called several
     * times.
     *
     * @param files files; a directory among them stays
     * @param directories directories, each with all that is in it
     * @throws IllegalArgumentException when one of them is not absolute, is the root of a drive, or cannot be named
     *     in the ANSI code page, in which the cleaner gets it
     * @throws IOException when the cleaner cannot be unpacked
     * @throws ServiceException -70007 when it cannot be started
     */
    public static void deleteAfterExit(Collection<File> files, Collection<File> directories)
            throws IOException, ServiceException {
        List<String> plain = new ArrayList<>();
        List<String> trees = new ArrayList<>();
        for (File file : files) {
            // In the list a semicolon ends a name, but in those of trees the cleaner tells it apart.
            (file.getPath().contains(";") && file.isFile() ? trees : plain).add(checked(file));
        }
        for (File directory : directories) {
            trees.add(checked(directory));
        }
        if (!plain.isEmpty() || !trees.isEmpty()) {
            unpackAndStart(plain, trees);
        }
    }

    private static String checked(File file) {
        String path = file.getPath();
        String page = System.getProperty("sun.jnu.encoding");
        if (!file.isAbsolute() || file.getParent() == null) {
            throw new IllegalArgumentException("neither a file nor a directory that can be deleted: " + path);
        } else if (!Charset.forName(page).newEncoder().canEncode(path)) {
            throw new IllegalArgumentException("the ANSI code page, " + page + ", lacks characters of " + path);
        }
        return path;
    }

    /**
     * Where there are blanks in the path, Windows would take what comes before one of them for the program, if there
     * is such a one; between quotes it does not, but then the program cannot delete itself, and goes with the next
     * copy.
     */
    private static void unpackAndStart(List<String> files, List<String> directories)
            throws IOException, ServiceException {
        try {
            UnpackedFile.<ServiceException>use(FILE, (file, held) -> {
                if (file.toString().contains(" ")) {
                    throw new IOException("there is a blank in it");
                }
                start(file, held, file.toString(), files, directories);
            });
        } catch (IOException e) {
            UnpackedFile.<ServiceException>use(FILE,
                    (file, held) -> start(file, held, '"' + file.toString() + '"', files, directories));
        }
    }

    /** The copy must be such that it can be deleted, for the system is asked to do so when it is over. */
    @SuppressWarnings("try") // the content is held for what that keeps away
    private static void start(Path file, SeekableByteChannel held, String command, List<String> files,
            List<String> directories) throws IOException, ServiceException {
        try (SeekableByteChannel content = JarCopy.holdContent(file)) {
            held.close();
            new Win32SystemUtilServiceImpl().nativeDeleteFilesAfterExit(
                    Collections.enumeration(files), Collections.enumeration(directories), false, command);
        }
    }
}
