package com.corvane.wizard.platform.win32;

import com.corvane.wizard.service.ServiceException;
import java.util.Enumeration;

/**
 * What the system tells about itself, programs that are run, what runs at the next start, and what goes when this
 * process has ended.
 */
public class Win32SystemUtilServiceImpl {

    static {
        Win32Library.load();
    }

    /** Makes an object without state: one serves as well as another. */
    public Win32SystemUtilServiceImpl() {}

    /**
     * Tells the installed service pack. Windows: GetVersionEx.
     *
     * @return its text, such as "Service Pack 1"; empty when there is none
     * @throws ServiceException -70005
     */
    public native String getOSServiceLevel() throws ServiceException;

    /**
     * Tells whether this is a Windows of the NT family: NT 4, 2000, XP or any later one. Throws nothing.
     *
     * @return false on Windows 95, 98 and ME
     */
    public native boolean isWinNTor2K();

    /**
     * Tells whether this is Windows ME. Throws nothing.
     *
     * @return true on no other Windows
     */
    public native boolean isWinME();

    /**
     * Tells the directory from which the system starts: the value "BootDir" of the registry. Windows:
     * GetDriveType.
     *
     * @return the text as it stands there
     * @throws ServiceException -70009; its message ends in "(4294967295)" when it is on no drive
     */
    public native String getBootDirectory() throws ServiceException;

    /**
     * Runs a program, hands what it writes to Java and returns when it has ended. The command line is the
     * program in quotes, a blank and the arguments. The output comes first, byte by byte while the program
     * runs, and then all that went to the standard error; both streams are flushed and closed at the end,
     * whatever happened. When nobody reads on (the stream throws), what it threw is what this throws, and the
     * program's next write fails. Windows: CreateProcessA, PeekNamedPipe.
     *
     * <p>When the request has a user, password or workgroup, the program runs as that user, on the desktop of
     * the one who sits there, to which that logon is given access, by entries that stay. Where Windows
     * does not let that happen, {@link #LogWarning} is told; on Windows 2000 its logon service is tried then,
     * which runs the program as this user, who is the other one to the network, and passes no output. Two
     * threads must not do this at once: the process is in another window station for a moment. Windows:
     * LogonUserA, CreateProcessAsUserA, CreateProcessWithLogonW.
     *
     * @param request a {@link ProcessRequest}, or another object that has its methods; null is refused
     * @param showWindow how its window is first shown, such as {@link ProcessRequest#WINDOW_HIDDEN}
     * @throws ServiceException -110203 when the program cannot be started; -110202 when it cannot be started
     *     as that user; -110201 for another user on Windows 95, 98 and ME, without a message; -110200 for
     *     whatever else fails, without a message, such as a method that the request lacks
     */
    public native void nativeExecuteProcess(Object request, int showWindow) throws ServiceException;

    /**
     * Is called with what is worth knowing and no failure by itself: that a program could not be started as
     * another user, and why. Does nothing; an installer that writes a log overrides it.
     *
     * @param text a code, a colon and the system's message
     */
    public void LogWarning(String text) {
        // Not everybody writes a log.
    }

    /**
     * Registers a command that the system runs once, at its next start and for all users. Windows:
     * RegQueryValueEx, RegSetValueEx.
     *
     * @param command the command line, stored as it is given, neither empty nor null
     * @throws ServiceException -70002; with 0x80070057 for an empty command, with 0x80004005 for what nobody
     *     expected
     */
    public native void addSystemStartupCommand(String command) throws ServiceException;

    /**
     * Lists all commands that the system runs once at its next start, whoever has registered them. Windows:
     * RegEnumValue, RegQueryValueEx.
     *
     * @return the command lines, in the system's order; with environment variables replaced where the system
     *     does so
     * @throws ServiceException -70003
     */
    public native Enumeration<String> systemStartupCommands() throws ServiceException;

    /**
     * Takes back a command that {@link #addSystemStartupCommand} has registered: the first one that is the
     * same, letter by letter. That there is none is no failure. Windows: RegEnumValue, RegDeleteValue.
     *
     * @param command neither empty nor null
     * @throws ServiceException -70004; with 0x80070057 for an empty command, with 0x80004005 for what nobody
     *     expected
     */
    public native void removeSystemStartupCommand(String command) throws ServiceException;

    /**
     * Starts a cleaner, a program that deletes files when this process has ended, and tells it which.
     * {@link Win32Cleaner} does it with the one that comes with the library. Windows: CreateProcessA,
     * SendMessageA with WM_COPYDATA.
     *
     * <p>Takes more than a second. Paths reach the cleaner in the ANSI code page, with semicolons in between. A
     * character that the code page lacks is replaced, and what replaces it may be a semicolon, a star or a
     * backslash: the cleaner would delete something else. The cleaner's file is deleted when it is over, unless its
     * path is between quotes.
     *
     * @param files what the cleaner is to be given as it is; null for none
     * @param directories what it is to be given with a star before it; null for none
     * @param flag told to the cleaner. With true it is started also when there is nothing to delete
     * @param cleanerPath its file, which is its whole command line: Windows may look for a program at each of
     *     the blanks in it
     * @throws ServiceException -70007 when it cannot be started
     */
    public native void nativeDeleteFilesAfterExit(Enumeration<String> files, Enumeration<String> directories,
            boolean flag, String cleanerPath) throws ServiceException;
}
