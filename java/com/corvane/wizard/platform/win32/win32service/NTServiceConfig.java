package com.corvane.wizard.platform.win32.win32service;

import java.util.Arrays;
import java.util.Objects;

/**
 * What a service is: for {@link com.corvane.wizard.platform.win32.Win32ServiceImpl#createNTService}, which needs
 * type, start, errors and command; for changing a service, where what is as in a new object stays as it is; and
 * as Windows tells it.
 *
 * <p>The native library calls the constructor without arguments, the getters and the setters by name and
 * signature.
 */
public class NTServiceConfig {

    /** A number that is to stay as it is; in a new object all are. */
    public static final int SERVICE_NO_CHANGE = -1;

    /** A type: the driver of a device. */
    public static final int SERVICE_KERNEL_DRIVER = 1;

    /** A type: the driver of a file system. */
    public static final int SERVICE_FILE_SYSTEM_DRIVER = 2;

    /** A type: a program that is this service alone. */
    public static final int SERVICE_WIN32_OWN_PROCESS = 0x10;

    /** A type: a program that is several services. */
    public static final int SERVICE_WIN32_SHARE_PROCESS = 0x20;

    /** A start: by the boot loader; for drivers. */
    public static final int SERVICE_BOOT_START = 0;

    /** A start: while Windows is started; for drivers. */
    public static final int SERVICE_SYSTEM_START = 1;

    /** A start: by itself, with Windows. */
    public static final int SERVICE_AUTO_START = 2;

    /** A start: when somebody starts it. */
    public static final int SERVICE_DEMAND_START = 3;

    /** A start: not at all. */
    public static final int SERVICE_DISABLED = 4;

    /** When it does not start with Windows: nobody is told. */
    public static final int SERVICE_ERROR_IGNORE = 0;

    /** When it does not start with Windows: that is entered in the system's log. */
    public static final int SERVICE_ERROR_NORMAL = 1;

    /** When it does not start with Windows: Windows starts as it last did well. */
    public static final int SERVICE_ERROR_SEVERE = 2;

    /** As the one before; when it does not start then either, Windows does not. */
    public static final int SERVICE_ERROR_CRITICAL = 3;

    private String displayName;
    private int serviceType = SERVICE_NO_CHANGE;
    private boolean enableDesktopInteraction;
    private int startType = SERVICE_NO_CHANGE;
    private int errorControl = SERVICE_NO_CHANGE;
    private String command;
    private String loadOrderGroup;
    private String[] dependencies;
    private String userName;
    private String password;

    /** Makes an object in which nothing is said. */
    public NTServiceConfig() {}

    /**
     * Makes what most services are: a program of its own that somebody starts, whose failures are in the
     * system's log, and that runs as LocalSystem.
     *
     * @param displayName the name that is shown for it
     * @param command the program; see {@link #quotedCommand}
     */
    public NTServiceConfig(String displayName, String command) {
        this.displayName = displayName;
        this.command = command;
        serviceType = SERVICE_WIN32_OWN_PROCESS;
        startType = SERVICE_DEMAND_START;
        errorControl = SERVICE_ERROR_NORMAL;
    }

    /**
     * Gives a command whose program Windows finds, blanks in its path or not. Without quotes Windows takes what
     * is before a blank for the program first: for {@code C:\Program Files\a.exe} it would start
     * {@code C:\Program.exe}, with the rights of the service.
     *
     * @param program the path of the program, without quotes
     * @param arguments what comes behind it, as it is to stand there; may be null or empty
     * @return the command
     */
    public static String quotedCommand(String program, String arguments) {
        String quoted = '"' + Objects.requireNonNull(program) + '"';
        return arguments == null || arguments.isEmpty() ? quoted : quoted + ' ' + arguments;
    }

    /**
     * Tells the name that is shown.
     *
     * @return the name; null for none, and then Windows shows the key name
     */
    public String getDisplayName() {
        return displayName;
    }

    /**
     * Sets the name that is shown.
     *
     * @param displayName the name; for a new service null is none, and then Windows shows the key name; in a
     *     change null leaves the one that there is
     */
    public void setDisplayName(String displayName) {
        this.displayName = displayName;
    }

    /**
     * Tells the type.
     *
     * @return one of the types
     */
    public int getServiceType() {
        return serviceType;
    }

    /**
     * Sets the type.
     *
     * @param serviceType one of the types
     */
    public void setServiceType(int serviceType) {
        this.serviceType = serviceType;
    }

    /**
     * Tells whether the service may show windows, where Windows lets one.
     *
     * @return whether it may; it needs LocalSystem and a type
     */
    public boolean getEnableDesktopInteraction() {
        return enableDesktopInteraction;
    }

    /**
     * Sets whether the service may show windows, where Windows lets one.
     *
     * @param enableDesktopInteraction whether it may; it needs LocalSystem and a type
     */
    public void setEnableDesktopInteraction(boolean enableDesktopInteraction) {
        this.enableDesktopInteraction = enableDesktopInteraction;
    }

    /**
     * Tells when it starts.
     *
     * @return one of the starts
     */
    public int getStartType() {
        return startType;
    }

    /**
     * Sets when it starts.
     *
     * @param startType one of the starts
     */
    public void setStartType(int startType) {
        this.startType = startType;
    }

    /**
     * Tells what happens when it does not start.
     *
     * @return one of the constants for that
     */
    public int getErrorControl() {
        return errorControl;
    }

    /**
     * Sets what happens when it does not start.
     *
     * @param errorControl one of the constants for that
     */
    public void setErrorControl(int errorControl) {
        this.errorControl = errorControl;
    }

    /**
     * Tells the program, with its arguments.
     *
     * @return the command, as Windows is to run it; see {@link #quotedCommand}
     */
    public String getCommand() {
        return command;
    }

    /**
     * Sets the program, with its arguments.
     *
     * @param command the command, as Windows is to run it; see {@link #quotedCommand}; in a change null leaves the
     *     one that there is
     */
    public void setCommand(String command) {
        this.command = command;
    }

    /**
     * Tells the group with which it is started.
     *
     * @return the group; null or empty for none
     */
    public String getLoadOrderGroup() {
        return loadOrderGroup;
    }

    /**
     * Sets the group with which it is started.
     *
     * @param loadOrderGroup the group; empty for none; null for none too, but in a change it leaves the one that
     *     there is
     */
    public void setLoadOrderGroup(String loadOrderGroup) {
        this.loadOrderGroup = loadOrderGroup;
    }

    /**
     * Tells the services that are started before it.
     *
     * @return their key names, with a plus sign before that of a group
     */
    public String[] getDependencies() {
        return dependencies == null ? null : dependencies.clone();
    }

    /**
     * Sets the services that are started before it.
     *
     * @param dependencies their key names, with a plus sign before that of a group; null and a list without
     *     elements are none, but in a change they leave those that there are, and a list of one empty text takes
     *     them away
     */
    public void setDependencies(String[] dependencies) {
        this.dependencies = dependencies == null ? null : dependencies.clone();
    }

    /**
     * Tells the account that it runs as.
     *
     * @return the account, with its domain or ".\" before it; null or empty for LocalSystem
     */
    public String getUserName() {
        return userName;
    }

    /**
     * Sets the account that it runs as.
     *
     * @param userName the account, with its domain or ".\" before it; for a new service null or empty is
     *     LocalSystem; in a change null leaves the one that there is, "LocalSystem" is that by its name, and an
     *     empty one is handed to Windows as it is
     */
    public void setUserName(String userName) {
        this.userName = userName;
    }

    /**
     * Tells the password of that account.
     *
     * @return the password; Windows never tells it
     */
    public String getPassword() {
        return password;
    }

    /**
     * Sets the password of that account. The library overwrites its own copy before createNTService or
     * changeNTServiceConfig returns.
     *
     * @param password the password; null is none, but in a change it leaves the one that there is, and an empty
     *     one is handed to Windows as it is
     */
    public void setPassword(String password) {
        this.password = password;
    }

    /** Tells it all but the password. */
    @Override
    public String toString() {
        return "NTServiceConfig[displayName=" + getDisplayName() + ", serviceType=" + getServiceType()
                + ", enableDesktopInteraction=" + getEnableDesktopInteraction() + ", startType=" + getStartType()
                + ", errorControl=" + getErrorControl() + ", command=" + getCommand()
                + ", loadOrderGroup=" + getLoadOrderGroup() + ", dependencies=" + Arrays.toString(getDependencies())
                + ", userName=" + getUserName() + "]";
    }
}
