package com.corvane.wizard.platform.win32;

import java.io.IOException;
import java.nio.channels.SeekableByteChannel;
import java.nio.file.DirectoryIteratorException;
import java.nio.file.DirectoryStream;
import java.nio.file.FileAlreadyExistsException;
import java.nio.file.Files;
import java.nio.file.InvalidPathException;
import java.nio.file.LinkOption;
import java.nio.file.Path;
import java.nio.file.Paths;
import java.nio.file.StandardOpenOption;
import java.nio.file.attribute.AclEntry;
import java.nio.file.attribute.AclEntryFlag;
import java.nio.file.attribute.AclEntryPermission;
import java.nio.file.attribute.AclEntryType;
import java.nio.file.attribute.AclFileAttributeView;
import java.nio.file.attribute.BasicFileAttributes;
import java.nio.file.attribute.FileAttribute;
import java.nio.file.attribute.UserPrincipal;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.EnumSet;
import java.util.LinkedHashSet;
import java.util.List;
import java.util.Random;
import java.util.Set;
import java.util.concurrent.TimeUnit;

/** The folder of one copy from the jar: new, with nothing else in it, and closed to other users. */
final class CopyFolder {

    private static final String PREFIX = "corvane_win32-";

    /** The system and the administrators. */
    private static final List<String> RULERS = Arrays.asList("S-1-5-18", "S-1-5-32-544");

    /** An empty folder that is younger may be about to get its copy. */
    private static final long STALE_MILLISECONDS = TimeUnit.HOURS.toMillis(1);

    private static final int MOST_TRIES = 10_000;

    private CopyFolder() {}

    /**
     * A new folder in {@code place}; where the file system has rights, only its owner and rulers ever have any. The
     * owner is whom Windows makes it: the user; or the administrators, when they are meant to be alone, as with a
     * program that was started with their rights. A user's name would tell less: an account of the domain and one
     * of the computer may share it.
     */
    static Path create(Path place) throws IOException {
        if (!hasRights(place)) {
            return createNew(place);
        }
        Set<UserPrincipal> holders = withRulers(ownerOfNew(place));
        Path folder = createClosed(place, holders);
        try {
            rightsOf(folder).setAcl(entries(AclEntryType.ALLOW, holders));
            return folder;
        } catch (IOException | RuntimeException e) {
            remove(folder);
            throw e;
        }
    }

    private static boolean hasRights(Path path) throws IOException {
        return Files.getFileStore(path).supportsFileAttributeView(AclFileAttributeView.class);
    }

    /** Whom Windows makes the owner there: asked of a file that nobody can exchange meanwhile, for it is open. */
    @SuppressWarnings("try") // the file is open for what that keeps away
    private static UserPrincipal ownerOfNew(Path place) throws IOException {
        Path file = place.resolve(PREFIX + new Random().nextLong() + ".tmp");
        try (SeekableByteChannel held = Files.newByteChannel(file, StandardOpenOption.CREATE_NEW,
                StandardOpenOption.WRITE, StandardOpenOption.DELETE_ON_CLOSE, JarCopy.option(JarCopy.DENY_DELETE))) {
            return rightsOf(file).getOwner();
        }
    }

    /**
     * One that is closed from its first moment: who opens it in a later one may keep what he could do then. What the
     * place hands down cannot be kept from it, but comes behind what it is made with and is denied there: to all
     * whom the place names, and those whom Windows' own folder does, which are all users. Only its holders come
     * before.
     */
    static Path createClosed(Path place, Set<UserPrincipal> holders) throws IOException {
        List<AclEntry> rights = closedRights(place, holders);
        return createNew(place, new FileAttribute<List<AclEntry>>() {
            @Override
            public String name() {
                return "acl:acl";
            }

            @Override
            public List<AclEntry> value() {
                return rights;
            }
        });
    }

    /** Those with which a folder in {@code place} is made: nobody but its holders may enter. */
    static List<AclEntry> closedRights(Path place, Set<UserPrincipal> holders) {
        Set<UserPrincipal> denied = namedIn(place);
        denied.addAll(namedInWindows());
        denied.removeAll(holders);
        List<AclEntry> rights = entries(AclEntryType.ALLOW, holders);
        rights.addAll(entries(AclEntryType.DENY, denied));
        return rights;
    }

    /**
     * The JDK's own method for this draws its names from a SecureRandom, which a JVM cannot always seed: that looks
     * at all of the network's adapters. The name may be guessed: what is there already is never taken over.
     */
    private static Path createNew(Path place, FileAttribute<?>... rights) throws IOException {
        Random random = new Random();
        for (int tries = 1;; tries++) {
            try {
                return Files.createDirectory(place.resolve(PREFIX + (random.nextLong() >>> 1)), rights);
            } catch (FileAlreadyExistsException e) {
                if (tries == MOST_TRIES) {
                    throw e;
                }
            }
        }
    }

    /**
     * That the folder is like the one that was made, now that the copy in it is open and keeps others from renaming
     * it: before, who may delete in the place could put another there. That one's owner is another than the copy's,
     * unless both programs are one user's with the same rights.
     */
    static void requireClosed(Path folder, Path copy) throws IOException {
        if (!hasRights(folder)) {
            return;
        }
        AclFileAttributeView rights = rightsOf(folder);
        if (!isClosed(rights.getOwner(), rights.getAcl(), withRulers(rightsOf(copy).getOwner()))) {
            throw new IOException("another user put his own folder in the place of " + folder);
        }
    }

    /** To all but the holders. Without any rights, a folder that Windows guards at all is open to everybody. */
    static boolean isClosed(UserPrincipal owner, List<AclEntry> rights, Set<UserPrincipal> holders) {
        boolean closed = !rights.isEmpty() && holders.contains(owner);
        for (AclEntry entry : rights) {
            closed &= !grants(entry) || holders.contains(entry.principal());
        }
        return closed;
    }

    /** File servers that are no Windows also name whom they grant nothing. What is handed down, Java shows in part. */
    private static boolean grants(AclEntry entry) {
        return entry.type() == AclEntryType.ALLOW
                && (!entry.permissions().isEmpty() || entry.flags().contains(AclEntryFlag.INHERIT_ONLY));
    }

    /**
     * Named like its folder, so that nothing else is ever removed, wherever the folder leads; with the ending of
     * {@code file}, the one that it is a copy of.
     */
    static Path copyIn(Path folder, String file) {
        return folder.resolve(folder.getFileName() + file.substring(file.lastIndexOf('.')));
    }

    /**
     * Removes the copies that nothing uses. One of the library that is loaded, or about to be, cannot be deleted:
     * it is never without a handle that forbids it. One of the cleaner deletes itself, and its folder is as good
     * as empty.
     */
    static void removeUnused(Path place) {
        try (DirectoryStream<Path> folders = Files.newDirectoryStream(place, PREFIX + "*")) {
            for (Path folder : folders) {
                if (mayBeRemoved(folder)) {
                    remove(folder);
                }
            }
        } catch (IOException | DirectoryIteratorException e) {
            // It is tried again with the next copy.
        }
    }

    /** Whether it may be removed. A link, or a name that was not made here, leads to what is not ours: it stays. */
    private static boolean mayBeRemoved(Path folder) {
        try {
            BasicFileAttributes attributes =
                    Files.readAttributes(folder, BasicFileAttributes.class, LinkOption.NOFOLLOW_LINKS);
            long age = System.currentTimeMillis() - attributes.lastModifiedTime().toMillis();
            return folder.getFileName().toString().matches(PREFIX + "\\d+")
                    && attributes.isDirectory() && !attributes.isOther()
                    && (Files.exists(copyIn(folder, Win32Library.FILE)) || age > STALE_MILLISECONDS);
        } catch (IOException e) {
            return false;
        }
    }

    static void remove(Path folder) {
        try {
            Files.deleteIfExists(copyIn(folder, Win32Library.FILE));
            Files.deleteIfExists(copyIn(folder, Win32Cleaner.FILE));
            Files.delete(folder);
        } catch (IOException e) {
            // In use, or another's: it stays.
        }
    }

    /** Were a link put in its place, the rights of what it leads to must stay. */
    private static AclFileAttributeView rightsOf(Path path) {
        return Files.getFileAttributeView(path, AclFileAttributeView.class, LinkOption.NOFOLLOW_LINKS);
    }

    /** All rights to the folder and what will be in it, for each of them. */
    static List<AclEntry> entries(AclEntryType type, Set<UserPrincipal> holders) {
        List<AclEntry> entries = new ArrayList<>();
        for (UserPrincipal holder : holders) {
            entries.add(AclEntry.newBuilder().setType(type).setPrincipal(holder)
                    .setPermissions(EnumSet.allOf(AclEntryPermission.class))
                    .setFlags(AclEntryFlag.FILE_INHERIT, AclEntryFlag.DIRECTORY_INHERIT).build());
        }
        return entries;
    }

    private static Set<UserPrincipal> withRulers(UserPrincipal owner) {
        Set<UserPrincipal> holders = rulers();
        holders.add(owner);
        return holders;
    }

    /**
     * The names of these accounts differ from language to language, and Java finds an account by nothing else.
     * So they are taken from the rights to Windows' own folder, where they always are, and told by their SID:
     * a principal of the JDK has its text's hash. Where that finds nobody, the owner alone has rights.
     */
    private static Set<UserPrincipal> rulers() {
        Set<UserPrincipal> rulers = namedInWindows();
        rulers.removeIf(one -> RULERS.stream().noneMatch(sid -> sid.hashCode() == one.hashCode()));
        return rulers;
    }

    private static Set<UserPrincipal> namedInWindows() {
        String windows = System.getenv("SystemRoot");
        try {
            return windows == null ? new LinkedHashSet<>() : namedIn(Paths.get(windows));
        } catch (InvalidPathException e) {
            return new LinkedHashSet<>();
        }
    }

    /** Who is named in its rights; nobody when these cannot be read. */
    private static Set<UserPrincipal> namedIn(Path folder) {
        Set<UserPrincipal> named = new LinkedHashSet<>();
        try {
            for (AclEntry entry : rightsOf(folder).getAcl()) {
                named.add(entry.principal());
            }
        } catch (IOException e) {
            // The owner is enough to load the library.
        }
        return named;
    }
}
