package com.corvane.testing;

import com.corvane.wizard.platform.win32.Win32DesktopServiceImpl;
import com.corvane.wizard.platform.win32.Win32Library;
import com.corvane.wizard.platform.win32.Win32RegistryServiceImpl;
import com.corvane.wizard.platform.win32.Win32SecurityServiceImpl;
import com.sun.jna.platform.win32.Ole32;
import java.io.File;
import java.io.IOException;
import java.net.URL;
import java.net.URLClassLoader;
import java.net.URLDecoder;
import java.net.URLEncoder;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.List;
import java.util.stream.Collectors;

/**
 * A program that loads the library as an installer does, and says how that went. Where "corvane.test.com" says so,
 * COM is started first, and a shortcut is tried; the user whom "corvane.test.user" names is deleted. With arguments it
 * loads the library once for each, by a class loader that is gone afterwards and on an interrupted thread; the
 * argument is the temporary folder, encoded as in a URL.
 */
public final class LoadProbe {

    private LoadProbe() {}

    /** A JVM whose temporary folder, and where the user and all users have theirs, are these. */
    public static ProcessBuilder jvm(Path temporary, Path users, Path everybodys, String... arguments) {
        ProcessBuilder process = new ProcessBuilder(System.getProperty("java.home") + "\\bin\\java.exe",
                "-XX:+UseSerialGC", "-XX:-UsePerfData", "-Djava.io.tmpdir=" + temporary, "-cp",
                System.getProperty("corvane.test.jar") + ";" + System.getProperty("java.class.path"));
        process.command().addAll(List.of(arguments));
        process.environment().put("LOCALAPPDATA", users.toString());
        process.environment().put("ALLUSERSPROFILE", everybodys.toString());
        return process.redirectErrorStream(true);
    }

    /** One whose folders are "tmp", which is made, "local" and "all" in this one, which is its current directory. */
    public static ProcessBuilder jvmIn(Path folder, String... arguments) throws IOException {
        return jvm(Files.createDirectories(folder.resolve("tmp")), folder.resolve("local"), folder.resolve("all"),
                arguments).directory(folder.toFile());
    }

    /** What a program says that loads the library, with these options of the JVM. */
    public static String load(Path folder, String... options) throws IOException {
        ProcessBuilder process = jvmIn(folder, options);
        process.command().add(LoadProbe.class.getName());
        return said(process);
    }

    /** What it says when it does so once for each of these temporary folders. */
    public static List<String> load(Path folder, List<String> temporary) throws IOException {
        ProcessBuilder process = jvmIn(folder, LoadProbe.class.getName());
        temporary.forEach(name -> process.command().add("=" + URLEncoder.encode(name, StandardCharsets.UTF_8)));
        return said(process).lines().toList();
    }

    /** All that it says, but for what newer JVMs warn of. */
    public static String said(ProcessBuilder process) throws IOException {
        return process.start().inputReader().lines()
                .filter(line -> !line.matches("((OpenJDK .* VM warning|WARNING): .*)?"))
                .collect(Collectors.joining("\n"));
    }

    public static void main(String[] arguments) throws Exception {
        for (String folder : arguments) {
            System.setProperty("java.io.tmpdir", URLDecoder.decode(folder.substring(1), StandardCharsets.UTF_8));
            System.out.println(loadAnew());
            System.gc();
        }
        if (arguments.length == 0) {
            load(System.getProperty("corvane.test.com"));
        }
    }

    private static void load(String com) {
        try {
            if (com != null) {
                Ole32.INSTANCE.CoInitializeEx(null,
                        com.equals("multithreaded") ? Ole32.COINIT_MULTITHREADED : Ole32.COINIT_APARTMENTTHREADED);
            }
            // What fails at first fails again, and two threads load one copy.
            Thread other = new Thread(() -> Outcome.thrownBy(Win32Library::load));
            if (com == null) {
                other.start();
            }
            Outcome.thrownBy(Win32Library::load);
            other.join();
            Win32Library.load();
            System.out.println("loaded, answers " + new Win32RegistryServiceImpl().keyExists(3, null));
            String user = System.getProperty("corvane.test.user");
            if (user != null) {
                System.out.println("deleteUser");
                new Win32SecurityServiceImpl().deleteUser("", user);
            }
            if (com != null) {
                new Win32DesktopServiceImpl().createDesktopItem(
                        System.getProperty("java.io.tmpdir"), "group", "n", "C:\\x.exe", "", "", "");
            }
        } catch (Exception | UnsatisfiedLinkError failure) {
            System.out.println(failure);
        }
    }

    private static String loadAnew() throws Exception {
        URL jar = new File(System.getProperty("java.class.path").split(File.pathSeparator)[0]).toURI().toURL();
        Thread.currentThread().interrupt();
        try (URLClassLoader loader = new URLClassLoader(new URL[] {jar}, null)) {
            Class<?> registry = Class.forName(Win32RegistryServiceImpl.class.getName(), true, loader);
            Object answer = registry.getMethod("keyExists", int.class, String.class)
                    .invoke(registry.getConstructor().newInstance(), 3, null);
            return Thread.interrupted() ? "loaded, answers " + answer : "the interrupt is lost";
        } catch (LinkageError failure) {
            return failure.toString();
        }
    }
}
