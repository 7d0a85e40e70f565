package com.corvane.check;

import java.io.IOException;
import java.io.UncheckedIOException;
import java.nio.file.Files;
import java.nio.file.LinkOption;
import java.nio.file.Path;
import java.nio.file.attribute.AclEntry;
import java.nio.file.attribute.AclEntryFlag;
import java.nio.file.attribute.AclEntryPermission;
import java.nio.file.attribute.AclEntryType;
import java.nio.file.attribute.AclFileAttributeView;
import java.nio.file.attribute.BasicFileAttributes;
import java.nio.file.attribute.UserPrincipal;
import java.util.ArrayList;
import java.util.Comparator;
import java.util.EnumSet;
import java.util.List;
import java.util.Set;
import java.util.stream.Collectors;
import java.util.stream.Stream;

/**
 * Where it all happens: a folder with nothing but ASCII and no blank in its path, whatever the user is called and
 * wherever the archive was unpacked, which services can read, too, and other users cannot enter. What is in the
 * archive is copied there by its bytes: Windows asks before it starts what is marked as downloaded.
 */
final class WorkFolder {

    private static final Path WINDOWS = Path.of(System.getenv("SystemRoot"));
    static final Path FOLDER = Path.of(System.getenv("ProgramData"), "corvane-check");
    private static final Path STATE = FOLDER.resolve("awaited.txt");
    /** SYSTEM and the administrators, whose names differ from language to language. */
    private static final Set<Integer> RULERS = Set.of("S-1-5-18".hashCode(), "S-1-5-32-544".hashCode());
    private static final int TRIES = 150;

    /** Temporary folders, of the tests and of the demonstration, which looks for what is new in its own. */
    static final String TEST = "test";
    static final String DEMO = "demo";

    static final boolean IS_WINE = Files.exists(WINDOWS.resolve("system32\\wineboot.exe"));

    /** With all rights: these make a file in Windows' own folder. */
    static boolean isAdministrator() {
        try {
            ownerIn(WINDOWS);
            return true;
        } catch (IOException e) {
            return false;
        }
    }

    /** Whose a file is that is made in this folder. Its name takes no random numbers: see {@link #java}. */
    private static UserPrincipal ownerIn(Path folder) throws IOException {
        Path file = Files.createFile(folder.resolve("corvane-" + System.nanoTime()));
        try {
            return Files.getOwner(file);
        } finally {
            Files.delete(file);
        }
    }

    boolean exists() {
        return Files.exists(FOLDER, LinkOption.NOFOLLOW_LINKS);
    }

    /**
     * Whether it was made by this user, with these rights, or by a ruler, to its end, and is closed to others.
     * Everybody can make folders beside it: what is in a foreign one must not be run.
     */
    boolean isOurs() {
        try {
            AclFileAttributeView view = aclOf(FOLDER);
            BasicFileAttributes kind =
                    Files.readAttributes(FOLDER, BasicFileAttributes.class, LinkOption.NOFOLLOW_LINKS);
            Set<UserPrincipal> makers = holders(ownerIn(FOLDER.getParent()));
            return kind.isDirectory() && !kind.isOther() && makers.contains(view.getOwner())
                    && makers.contains(aclOf(STATE).getOwner())
                    && principals(view).collect(Collectors.toSet()).equals(holders(view.getOwner()));
        } catch (IOException e) {
            return false;
        }
    }

    /** Made by nobody else: it must not be there, nor anything in it that somebody was quick to put there. */
    void make() throws IOException {
        Files.createDirectory(FOLDER);
        closeToOthers();
        if (FOLDER.toFile().list().length > 0) {
            throw new IOException("Somebody else has put something into " + FOLDER);
        }
        Files.createDirectory(FOLDER.resolve(TEST));
        Files.createDirectory(FOLDER.resolve(DEMO));
        for (String part : List.of("lib", "scenes")) {
            try (Stream<Path> all = Files.walk(Path.of(part))) {
                for (Path from : (Iterable<Path>) all::iterator) {
                    Path to = FOLDER.resolve(from.toString());
                    if (Files.isDirectory(from)) {
                        Files.createDirectory(to);
                    } else {
                        Files.write(to, Files.readAllBytes(from));
                    }
                }
            }
        }
        awaits("what is left");
    }

    private static void closeToOthers() throws IOException {
        AclFileAttributeView view = aclOf(FOLDER);
        List<AclEntry> entries = new ArrayList<>();
        for (UserPrincipal holder : holders(view.getOwner())) {
            entries.add(AclEntry.newBuilder().setType(AclEntryType.ALLOW).setPrincipal(holder)
                    .setPermissions(EnumSet.allOf(AclEntryPermission.class))
                    .setFlags(AclEntryFlag.FILE_INHERIT, AclEntryFlag.DIRECTORY_INHERIT).build());
        }
        view.setAcl(entries);
    }

    private static AclFileAttributeView aclOf(Path path) {
        return Files.getFileAttributeView(path, AclFileAttributeView.class, LinkOption.NOFOLLOW_LINKS);
    }

    private static Stream<UserPrincipal> principals(AclFileAttributeView view) throws IOException {
        return view.getAcl().stream().map(AclEntry::principal);
    }

    /**
     * This account and the rulers. The JDK finds an account by its name alone; the rights to Windows' own folder name
     * these two.
     */
    private static Set<UserPrincipal> holders(UserPrincipal owner) throws IOException {
        return Stream.concat(Stream.of(owner),
                principals(aclOf(WINDOWS)).filter(holder -> RULERS.contains(holder.hashCode())))
                .collect(Collectors.toSet());
    }

    /** What "check.cmd after" is to do; empty when nothing is left to do. */
    void awaits(String what) throws IOException {
        Files.writeString(STATE, what);
    }

    String awaited() throws IOException {
        return Files.exists(STATE) ? Files.readString(STATE) : "";
    }

    /** Whether the system still has work with files of ours, or of the demonstration's product, for its next start. */
    boolean isWaitingForStart() throws IOException {
        Process query = new ProcessBuilder("reg", "query", "HKLM\\SYSTEM\\CurrentControlSet\\Control\\Session Manager",
                "/v", "PendingFileRenameOperations").redirectErrorStream(true).start();
        String waiting = new String(query.getInputStream().readAllBytes());
        return waiting.contains(FOLDER.toString()) || waiting.contains("\\Harbour Notes\\");
    }

    /** A JVM like this one, with these options. */
    List<String> java(String temporary, String... options) {
        String java = Path.of(System.getProperty("java.home"), "bin", "java.exe").toString();
        List<String> command = new ArrayList<>(List.of(java, "-XX:+UseSerialGC", "-XX:-UsePerfData", "-Xmx512m",
                "-Dfile.encoding=UTF-8", "-Dsun.stdout.encoding=UTF-8", "-Dsun.stderr.encoding=UTF-8",
                "-Djava.io.tmpdir=" + FOLDER.resolve(temporary)));
        // The JVM seeds its random numbers with the network's adapters, which Wine 10 fails to list for both families.
        command.addAll(IS_WINE ? List.of("-Djava.net.preferIPv4Stack=true") : List.of());
        command.addAll(List.of(options));
        return command;
    }

    /** Whole paths: some tests start programs in other folders. */
    String classPath() throws IOException {
        try (Stream<Path> files = Files.list(FOLDER.resolve("lib"))) {
            return files.map(Path::toString).filter(name -> name.endsWith(".jar")).sorted()
                    .collect(Collectors.joining(";"));
        }
    }

    /** Where the tests find what they need. */
    List<String> testProperties() {
        List<String> properties = new ArrayList<>();
        String[][] files = {{"win32.library", "corvane_win32.dll"}, {"test.support", "corvane_test_support.dll"},
            {"test.jar", "corvane-win32.jar"}, {"test.child", "corvane_talkative_child.exe"},
            {"test.service", "corvane_service_program.exe"},
            {"test.scenes", "..\\scenes"}, {"test.shortcuts", "..\\shortcuts"}};
        for (String[] file : files) {
            properties.add("-Dcorvane." + file[0] + '=' + FOLDER.resolve("lib").resolve(file[1]).normalize());
        }
        return properties;
    }

    /** In the folder of the jars; Windows' own functions and tools find its temporary folder, too. */
    ProcessBuilder process(List<String> command, String temporary) {
        ProcessBuilder process = new ProcessBuilder(command).directory(FOLDER.resolve("lib").toFile());
        process.environment().put("TEMP", FOLDER.resolve(temporary).toString());
        process.environment().put("TMP", FOLDER.resolve(temporary).toString());
        return process;
    }

    /** Programs that were started here may go on for a moment. */
    void delete() throws Exception {
        for (int tries = 0; tries < TRIES && exists(); ++tries) {
            try {
                deleteTree(FOLDER);
            } catch (IOException | UncheckedIOException e) {
                Thread.sleep(100);
            }
        }
    }

    static void deleteTree(Path folder) throws IOException {
        if (Files.exists(folder, LinkOption.NOFOLLOW_LINKS)) {
            try (Stream<Path> all = Files.walk(folder)) {
                for (Path path : all.sorted(Comparator.reverseOrder()).toList()) {
                    Files.setAttribute(path, "dos:readonly", false, LinkOption.NOFOLLOW_LINKS);
                    Files.delete(path);
                }
            }
        }
    }

    @Override
    public String toString() {
        return FOLDER.toString();
    }
}
