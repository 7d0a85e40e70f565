package com.corvane.wizard.platform.win32;

import java.io.IOException;
import java.nio.ByteBuffer;
import java.nio.channels.SeekableByteChannel;
import java.nio.file.DirectoryStream;
import java.nio.file.Files;
import java.nio.file.LinkOption;
import java.nio.file.OpenOption;
import java.nio.file.Path;
import java.nio.file.StandardOpenOption;

/**
 * Unpacks one copy of a file in the jar and has it used, and nothing else in its place, whatever another process
 * of the same user does meanwhile. From its first moment until it was used, a handle is open on the copy that
 * keeps others from renaming, replacing and deleting it; a use that has to close it says what it gives up. Writing
 * is denied to them as well, but for the moment between two handles; what was done in it is found when the bytes
 * are compared through the second.
 */
final class JarCopy {

    /** What is done with a copy, which {@code held} keeps as it is. */
    interface Use<E extends Exception> {
        void of(Path file, SeekableByteChannel held) throws IOException, E;
    }

    static final String DENY_WRITE = "NOSHARE_WRITE";
    static final String DENY_DELETE = "NOSHARE_DELETE";

    private JarCopy() {}

    /**
     * Makes the copy in a new folder in {@code place} and has it used. When that fails, nothing stays there.
     *
     * @throws UnsatisfiedLinkError when the JVM cannot hold it as it must be held
     */
    static <E extends Exception> void use(Path place, String name, byte[] content, Use<E> use)
            throws IOException, E {
        CopyFolder.removeUnused(place);
        Path folder = CopyFolder.create(place);
        useIn(folder, CopyFolder.copyIn(folder, name), content, use);
    }

    /** The same in a folder that is there: made a moment ago, perhaps exchanged since. */
    @SuppressWarnings("try") // the listing is open for what it keeps away
    static <E extends Exception> void useIn(Path folder, Path file, byte[] content, Use<E> use)
            throws IOException, E {
        boolean used = false;
        // The open copy keeps Windows from renaming its folder; where it does not, the open listing does.
        try (DirectoryStream<Path> listing = Files.newDirectoryStream(folder);
                SeekableByteChannel held = unpack(file, content)) {
            requireNoLink(folder);
            CopyFolder.requireClosed(folder, file);
            requireContent(held, content);
            use.of(file, held);
            used = true;
        } finally {
            if (!used) {
                CopyFolder.remove(folder);
            }
        }
    }

    /**
     * Writes the copy, whose path has no links, and opens it for reading: Windows loads no file that is open for
     * writing. The handle in the middle leaves no moment in which none is open.
     */
    @SuppressWarnings("try") // the writer is closed before its time
    static SeekableByteChannel unpack(Path file, byte[] content) throws IOException {
        try (SeekableByteChannel writer = Files.newByteChannel(file, StandardOpenOption.CREATE_NEW,
                        StandardOpenOption.WRITE, option(DENY_WRITE), option(DENY_DELETE));
                SeekableByteChannel between = Files.newByteChannel(file, StandardOpenOption.READ,
                        option(DENY_DELETE))) {
            ByteBuffer rest = ByteBuffer.wrap(content);
            while (rest.hasRemaining()) {
                writer.write(rest);
            }
            writer.close();
            // Before the copy is opened and again after: a link could lead that elsewhere and be gone for the load.
            requireNoLink(file.getParent());
            return Files.newByteChannel(file, StandardOpenOption.READ, LinkOption.NOFOLLOW_LINKS,
                    option(DENY_WRITE), option(DENY_DELETE));
        }
    }

    /** A handle that denies others to write, and lets them delete. */
    static SeekableByteChannel holdContent(Path file) throws IOException {
        return Files.newByteChannel(file, StandardOpenOption.READ, LinkOption.NOFOLLOW_LINKS, option(DENY_WRITE));
    }

    private static void requireNoLink(Path folder) throws IOException {
        if (!folder.toRealPath().equals(folder)) {
            throw new IOException("another process put a link in the place of " + folder);
        }
    }

    static void requireContent(SeekableByteChannel file, byte[] content) throws IOException {
        // One byte more than there should be shows whether there is more.
        ByteBuffer found = ByteBuffer.allocate(content.length + 1);
        while (file.read(found) > 0) {
            // on to the end
        }
        found.flip();
        if (!found.equals(ByteBuffer.wrap(content))) {
            throw new IOException("another process changed the copy before it could be used");
        }
    }

    /**
     * The option by its name, for the class is outside Java's standard: a JVM that was put together without it
     * is told apart from one that lacks a file.
     */
    static OpenOption option(String name) {
        try {
            for (Object option : Class.forName("com.sun.nio.file.ExtendedOpenOption").getEnumConstants()) {
                if (option.toString().equals(name)) {
                    return (OpenOption) option;
                }
            }
        } catch (ClassNotFoundException e) {
            // told below
        }
        throw new UnsatisfiedLinkError("this JVM has no " + name + "; its module jdk.unsupported is needed");
    }
}
