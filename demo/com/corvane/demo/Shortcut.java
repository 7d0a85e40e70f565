package com.corvane.demo;

import com.corvane.wizard.platform.win32.Win32DesktopServiceImpl;
import com.corvane.wizard.service.ServiceException;
import java.nio.file.Path;
import java.nio.file.Paths;
import java.util.Arrays;
import java.util.Collections;
import java.util.List;

/**
 * One shortcut of the small product: how the library is told its place, and the place itself, found
 * without the library. Their names need more than ASCII.
 */
final class Shortcut {
    private static final String GROUP = "Corvane Demo\\Häfen";
    private static final Path USER_MENU = startMenu("APPDATA");
    static final Path MENU_OF_ALL = startMenu("ProgramData");

    static final Path DESKTOP_OF_ALL = desktop("PUBLIC");

    /** The one whose attributes are changed, too. */
    static final Shortcut READ_ONLY = new Shortcut(
            "$AllUsersPrograms$", GROUP, "Aide à la navigation", MENU_OF_ALL.resolve("Programs"));

    static final List<Shortcut> ALL = Collections.unmodifiableList(Arrays.asList(
            new Shortcut("$UserPrograms$", GROUP, "Übersicht", USER_MENU.resolve("Programs")),
            READ_ONLY,
            new Shortcut("$UserDesktop$", "", "Größe der Schiffe", desktop("USERPROFILE")),
            new Shortcut("$AllUsersDesktop$", "", "Marées et phares", DESKTOP_OF_ALL)));

    final String folder;
    final String group;
    final String name;
    private final Path place;

    private Shortcut(String folder, String group, String name, Path place) {
        this.folder = folder;
        this.group = group;
        this.name = name;
        this.place = place;
    }

    static List<Path> startMenus() {
        return Arrays.asList(USER_MENU, MENU_OF_ALL);
    }

    static List<Path> desktops() {
        return Arrays.asList(desktop("USERPROFILE"), DESKTOP_OF_ALL);
    }

    private static Path startMenu(String variable) {
        return Paths.get(System.getenv(variable), "Microsoft\\Windows\\Start Menu");
    }

    private static Path desktop(String variable) {
        return Paths.get(System.getenv(variable), "Desktop");
    }

    /** The menu or the desktop, which was there before. */
    Path place() {
        return place;
    }

    Path file() {
        return place.resolve(group).resolve(name + ".lnk");
    }

    /** The first folder that is made for it, or null. */
    Path topFolder() {
        return group.isEmpty() ? null : place.resolve(Paths.get(group).getName(0));
    }

    /** What its program is to leave in its working directory, to show that it ran. */
    Path trace() {
        return Product.FOLDER.resolve(name + ".txt");
    }

    /** For the command interpreter, which the product's program is: writes where it runs. */
    String arguments() {
        return "/c cd > \"" + trace().getFileName() + '"';
    }

    void remove(Win32DesktopServiceImpl desktop) throws ServiceException {
        desktop.removeDesktopItem(folder, group, name);
    }

    /** As a person reads it. */
    String shown() {
        return folder + '\\' + (group.isEmpty() ? name : group + '\\' + name);
    }
}
