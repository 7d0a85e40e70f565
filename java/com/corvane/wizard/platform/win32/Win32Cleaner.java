package com.corvane.wizard.platform.win32;

import com.corvane.wizard.service.ServiceException;
import java.io.File;
import java.io.IOException;
import java.nio.channels.SeekableByteChannel;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.Collection;
import java.util.Collections;
import java.util.List;
import java.util.regex.Pattern;

/**
 * Deletes files when this JVM has ended, such as those that it has in use itself: the program for it,
 * {@code corvane_cleaner.exe}, comes in the jar, is unpacked as the library is (see {@link Win32Library}) and started
 * at once. It deletes itself, too, unless there is a blank in its path; its folder goes, with what is left in it,
 * when something is unpacked beside it an hour later or after.
 *
 * <p>It takes the first order that names this process, waits until this process has ended, by itself or by being
 * killed, and then removes the files, and the directories with all that is in them. When the user logs off or
 * Windows is shut down, both end, and what should have gone stays. A link goes itself, and where it leads nothing is
 * touched, also when others put it there meanwhile; that something is read-only is no obstacle. What is still in use
 * is tried again for ten seconds and then left to the next start of Windows, which takes the rights of an
 * administrator. What waits for that does so by its name, whatever others put there until then.
 */
public final class Win32Cleaner {

    static final String FILE = "corvane_cleaner.exe";

    /** What the cleaner takes for no path, behind the letter of the drive: its list would be another one. */
    private static final Pattern REFUSED = Pattern.compile("[\\x00-\\x1f<>\"|?*:]|\\\\[. ]+(\\\\|$)");

    private Win32Cleaner() {}

    /**
     * Has all of this deleted when this JVM has ended. What is not there then is not missed. Each call
     * takes more than a second and starts a cleaner of its own, unless there is nothing to delete.
     *
     * @param files files; a directory among them stays, and so does a link to one
     * @param directories directories, each with all that is in it; of a link, only itself. A file among them goes
     * @throws IllegalArgumentException when one of them is not absolute, is the root of a drive or a share, is no
     *     path or has a part of dots alone, or cannot be named in the ANSI code page, in which the cleaner gets it
     * @throws UnsatisfiedLinkError when the library cannot be loaded, see {@link Win32Library#load()}
     * @throws NullPointerException when a collection or one of its elements is null
     * @throws IOException when the cleaner cannot be unpacked
     * @throws ServiceException -70007 when it cannot be started
     */
    public static void deleteAfterExit(Collection<File> files, Collection<File> directories)
            throws IOException, ServiceException {
        List<String> plain = new ArrayList<>();
        List<String> trees = new ArrayList<>();
        for (File file : files) {
            plain.add(checked(file));
        }
        for (File directory : directories) {
            trees.add(checked(directory));
        }
        if (!plain.isEmpty() || !trees.isEmpty()) {
            // Or the reason why it cannot be loaded would be told for each place, and as another error from then on.
            Win32Library.load();
            unpackAndStart(plain, trees);
        }
    }

    private static String checked(File file) {
        Path path = file.toPath();
        String text = path.toString();
        if (!path.isAbsolute() || path.getNameCount() == 0 || REFUSED.matcher(text.substring(2)).find()) {
            throw new IllegalArgumentException("neither a file nor a directory that can be deleted: " + text);
        } else if (!AnsiCodePage.holds(text)) {
            throw new IllegalArgumentException(
                    "the ANSI code page, " + AnsiCodePage.NAME + ", lacks characters of " + text);
        }
        return text;
    }

    /**
     * Where there are blanks in the path, Windows would take what comes before one of them for the program, if there
     * is such a one; between quotes it does not, but then the file is not found that is to be deleted, and stays.
     */
    @SuppressWarnings("try") // the content is held for what that keeps away
    private static void unpackAndStart(List<String> files, List<String> directories)
            throws IOException, ServiceException {
        try {
            UnpackedFile.<ServiceException>use(FILE, (file, held) -> {
                if (file.toString().contains(" ")) {
                    throw new IOException("there is a blank in it");
                }
                // To be deleted it must not be held as it was. Another process of the user can put its own program
                // there now, until this one is started; it cannot write to ours.
                try (SeekableByteChannel content = JarCopy.holdContent(file)) {
                    held.close();
                    start(file.toString(), files, directories);
                }
            });
        } catch (IOException e) {
            UnpackedFile.<ServiceException>use(FILE,
                    (file, held) -> start('"' + file.toString() + '"', files, directories));
        }
    }

    private static void start(String command, List<String> files, List<String> directories) throws ServiceException {
        new Win32SystemUtilServiceImpl().nativeDeleteFilesAfterExit(
                Collections.enumeration(files), Collections.enumeration(directories), false, command);
    }
}
