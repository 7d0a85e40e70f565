package com.corvane.demo;

import com.corvane.wizard.platform.win32.Win32FileServiceImpl;
import com.corvane.wizard.platform.win32.Win32ServiceImpl;
import com.corvane.wizard.platform.win32.Win32SystemUtilServiceImpl;
import java.io.File;
import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.Paths;
import java.util.Arrays;
import java.util.Collections;
import java.util.List;
import java.util.regex.Matcher;
import java.util.regex.Pattern;
import java.util.stream.Stream;

/** The setup of the product, {@link harbour.Setup}: a program of its own, as whoever installs it starts it. */
final class HarbourSetup {
    static final int FAILED = 1;
    static final int RESTART_NEEDED = 3010;

    static final String NAME = "Harbour Notes";

    /** In the list of programs, which {@link #LIST} shows. */
    static final String ENTRY =
            "HKLM\\Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\" + NAME;
    static final String[] LIST = Host.isWine() ? new String[] {"uninstaller", "--list"}
            : new String[] {"reg", "query", ENTRY};

    static final List<Path> SHORTCUTS = Collections.unmodifiableList(Arrays.asList(
            Shortcut.MENU_OF_ALL.resolve("Programs\\Harbour\\" + NAME + ".lnk"),
            Shortcut.DESKTOP_OF_ALL.resolve(NAME + ".lnk")));

    private static final File TEMPORARY = new File(System.getProperty("java.io.tmpdir"));
    private static final Pattern PART = Pattern.compile("\"([^\"]*)\"|(\\S+)");

    private HarbourSetup() {}

    /** From the medium. */
    static String[] command() {
        return commandWith(Product.MEDIUM + "\\*");
    }

    private static String[] commandWith(String classPath, String... arguments) {
        String java = Paths.get(System.getProperty("java.home"), "bin", "java").toString();
        return Stream.concat(
                Stream.of(java, "-cp", classPath, harbour.Setup.class.getName()),
                Stream.of(arguments)).toArray(String[]::new);
    }

    /** What the list of programs starts to remove the product, as Windows takes it apart. */
    static String[] removal() throws IOException, InterruptedException {
        Matcher part = PART.matcher(SystemTool.registered(ENTRY, "UninstallString"));
        Stream.Builder<String> parts = Stream.builder();
        while (part.find()) {
            parts.add(part.group(1) == null ? part.group(2) : part.group(1));
        }
        return parts.build().toArray(String[]::new);
    }

    /** The program that removes what the setup itself has in use deletes itself at last. */
    static boolean isCleaning() {
        return TEMPORARY.list((place, name) -> name.matches("corvane_win32-\\d+")
                && new File(place, name + '\\' + name + ".exe").exists()).length > 0;
    }

    /** Removes what a run that was broken off has left. */
    static void clear() throws Exception {
        if (new Win32ServiceImpl().serviceExists(HarbourWatch.NAME) || Files.exists(Product.ROOT)) {
            new SystemTool(commandWith(System.getProperty("java.class.path"), "remove")).run();
            Waiting.forAnswer(cleans -> !cleans, HarbourSetup::isCleaning);
        }
        Win32SystemUtilServiceImpl system = new Win32SystemUtilServiceImpl();
        for (String command : Collections.list(system.systemStartupCommands())) {
            if (command.contains(Product.ROOT.toString())) {
                system.removeSystemStartupCommand(command);
            }
        }
        Product.clear(new Win32FileServiceImpl());
    }
}
