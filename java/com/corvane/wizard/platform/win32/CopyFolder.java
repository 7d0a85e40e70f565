package com.corvane.wizard.platform.win32;

import java.io.IOException;
import java.nio.file.DirectoryIteratorException;
import java.nio.file.DirectoryStream;
import java.nio.file.FileAlreadyExistsException;
import java.nio.file.Files;
import java.nio.file.InvalidPathException;
import java.nio.file.LinkOption;
import java.nio.file.Path;
import java.nio.file.Paths;
import java.nio.file.attribute.AclEntry;
import java.nio.file.attribute.AclEntryFlag;
import java.nio.file.attribute.AclEntryPermission;
import java.nio.file.attribute.AclEntryType;
import java.nio.file.attribute.AclFileAttributeView;
import java.nio.file.attribute.BasicFileAttributes;
import java.nio.file.attribute.UserPrincipal;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.Collections;
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

    /** A new folder in {@code place}; where the file system has rights, only its owner and rulers have any. */
    static Path create(Path place) throws IOException {
        boolean hasRights = Files.getFileStore(place).supportsFileAttributeView(AclFileAttributeView.class);
        Set<UserPrincipal> rulers = hasRights ? rulers() : Collections.emptySet();
        Path folder = createNew(place);
        try {
            if (hasRights) {
                closeToOthers(folder, rulers);
            }
            return folder;
        } catch (IOException | RuntimeException e) {
            remove(folder);
            throw e;
        }
    }

    /**
     * The JDK's own method for this draws its names from a SecureRandom, which a JVM cannot always seed: that looks
     * at all of the network's adapters. The name may be guessed: what is there already is never taken over.
     */
    private static Path createNew(Path place) throws IOException {
        Random random = new Random();
        for (int tries = 1;; tries++) {
            try {
                return Files.createDirectory(place.resolve(PREFIX + (random.nextLong() >>> 1)));
            } catch (FileAlreadyExistsException e) {
                if (tries == MOST_TRIES) {
                    throw e;
                }
            }
        }
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

    /**
     * Leaves nothing of the rights that the place hands down; they could not be kept from a new folder, whatever
     * it is made with. The owner is whom Windows makes it: the user; or the administrators, when they are meant
     * to be alone, as with a program that was started with their rights. A user's name would tell less: an
     * account of the domain and one of the computer may share it.
     */
    private static void closeToOthers(Path folder, Set<UserPrincipal> rulers) throws IOException {
        // Were a link put in its place meanwhile, the rights of what it leads to must stay.
        AclFileAttributeView view =
                Files.getFileAttributeView(folder, AclFileAttributeView.class, LinkOption.NOFOLLOW_LINKS);
        Set<UserPrincipal> holders = new LinkedHashSet<>(rulers);
        holders.add(view.getOwner());
        List<AclEntry> rights = new ArrayList<>();
        for (UserPrincipal holder : holders) {
            rights.add(AclEntry.newBuilder().setType(AclEntryType.ALLOW).setPrincipal(holder)
                    .setPermissions(EnumSet.allOf(AclEntryPermission.class))
                    .setFlags(AclEntryFlag.FILE_INHERIT, AclEntryFlag.DIRECTORY_INHERIT).build());
        }
        view.setAcl(rights);
    }

    /**
     * The names of these accounts differ from language to language, and Java finds an account by nothing else.
     * So they are taken from the rights to Windows' own folder, where they always are, and told by their SID:
     * a principal of the JDK has its text's hash. Where that finds nobody, the owner alone has rights.
     */
    private static Set<UserPrincipal> rulers() {
        Set<UserPrincipal> rulers = new LinkedHashSet<>();
        String windows = System.getenv("SystemRoot");
        if (windows == null) {
            return rulers;
        }
        try {
            Path folder = Paths.get(windows);
            for (AclEntry entry : Files.getFileAttributeView(folder, AclFileAttributeView.class).getAcl()) {
                if (RULERS.stream().anyMatch(sid -> sid.hashCode() == entry.principal().hashCode())) {
                    rulers.add(entry.principal());
                }
            }
        } catch (IOException | InvalidPathException e) {
            // The owner is enough to load the library.
        }
        return rulers;
    }
}
