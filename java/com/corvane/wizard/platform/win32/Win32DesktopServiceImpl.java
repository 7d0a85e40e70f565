package com.corvane.wizard.platform.win32;

import com.corvane.util.FileAttributes;
import com.corvane.wizard.service.ServiceException;

/**
 * Folders and shortcuts in the Start menu and on the desktop.
 *
 * <p>The place is named by a folder, which may hold tokens, and a path below it. The tokens are
 * "$UserPrograms$", "$AllUsersPrograms$", "$UserStartMenu$", "$AllUsersStartMenu$", "$UserDesktop$" and
 * "$AllUsersDesktop$"; on Windows 95, 98 and ME all users' folders are the current user's. A shortcut is a
 * file with the extension ".lnk". The shell is told of changes. A null text counts as empty, but for the
 * target of a shortcut and for an account, which are handed to Windows. A folder that is a drive and nothing
 * else, such as "X:", is refused with 3 (ERROR_PATH_NOT_FOUND): it is no root.
 *
 * <p>A token that cannot be replaced is a failure. Only the methods for owners and attributes do not tell so:
 * they work on an empty path then, or on the shortcut's file name alone, and throw what comes of it.
 *
 * <p>Owners and groups exist on the NT family only; elsewhere these methods throw with
 * {@link ServiceException#OPERATION_NOT_SUPPORTED}. Accounts are named as LookupAccountName takes them,
 * and returned without their domain. Setting one leaves privileges enabled and token handles open, as
 * {@link Win32FileServiceImpl#setFileOwner} does.
 */
public class Win32DesktopServiceImpl {

    static {
        Win32Library.load();
    }

    /** Makes an object without state: one serves as well as another. */
    public Win32DesktopServiceImpl() {}

    /**
     * Makes a folder, with those above it that are missing. Windows: CreateDirectory.
     *
     * @param folder the folder, which must be there; may hold tokens
     * @param subfolder a path below it, with backslashes or slashes; may be empty
     * @throws ServiceException -80000; what was made before a failure is removed again
     */
    public native void createDesktopFolder(String folder, String subfolder) throws ServiceException;

    /**
     * Removes a folder and those above it, up to but without {@code folder}, as long as they are empty. One
     * that is missing or still holds something is no failure. Windows: RemoveDirectory.
     *
     * @param folder the folder; may hold tokens
     * @param subfolder a path below it, with backslashes or slashes; "." in it is left out, another
     *     component of dots and blanks alone ("...") makes it name nothing, and when nothing is named,
     *     nothing is done; one with ".." or a colon is refused with 161 (ERROR_BAD_PATHNAME)
     * @throws ServiceException -80001; on Windows 95, 98 and ME never for a folder that stays
     */
    public native void removeDesktopFolder(String folder, String subfolder) throws ServiceException;

    /**
     * Makes a shortcut, with its folder, which stays when the shortcut fails. May be called from any thread;
     * one that has not started COM has it started for the length of the call. What the shortcut holds goes
     * through the ANSI code page. Shell: IShellLinkA, IPersistFile.
     *
     * @param folder the folder; may hold tokens
     * @param subfolder a path below it, with backslashes or slashes; may be empty
     * @param name the name of the shortcut, without extension
     * @param target the program or file to open; null is refused
     * @param arguments its arguments; may be empty
     * @param iconPath the file with the icon; may be empty
     * @param workingDirectory where it starts; may be empty
     * @throws ServiceException -80002, with a Win32 error or an HRESULT
     */
    public native void createDesktopItem(
            String folder,
            String subfolder,
            String name,
            String target,
            String arguments,
            String iconPath,
            String workingDirectory)
            throws ServiceException;

    /**
     * Deletes a shortcut, and its folder as {@link #removeDesktopFolder} does, unless {@code subfolder} leads
     * to one of the shell's own (Windows XP and later). A shortcut that is missing is no failure. On Windows
     * 95, 98 and ME, ".pif" and ".url" are looked for too. Windows: DeleteFile, RemoveDirectory.
     *
     * @param folder the folder; may hold tokens
     * @param subfolder a path below it, as {@link #removeDesktopFolder} takes it; may be empty
     * @param name the name of the shortcut, without extension
     * @throws ServiceException -80003
     */
    public native void removeDesktopItem(String folder, String subfolder, String name) throws ServiceException;

    /**
     * Tells the group of a shortcut. Windows: GetNamedSecurityInfo.
     *
     * @param folder the folder; may hold tokens
     * @param subfolder a path below it, with backslashes or slashes; may be empty
     * @param name the name of the shortcut, without extension
     * @return the name of the account
     * @throws ServiceException -80010
     */
    public native String getDesktopItemOwnerGroup(String folder, String subfolder, String name) throws ServiceException;

    /**
     * Sets the group of a shortcut. Windows: SetFileSecurity.
     *
     * @param folder the folder; may hold tokens
     * @param subfolder a path below it, with backslashes or slashes; may be empty
     * @param name the name of the shortcut, without extension
     * @param group the name of the account
     * @throws ServiceException -80011
     */
    public native void setDesktopItemOwnerGroup(String folder, String subfolder, String name, String group)
            throws ServiceException;

    /**
     * Tells the owner of a shortcut. Windows: GetNamedSecurityInfo.
     *
     * @param folder the folder; may hold tokens
     * @param subfolder a path below it, with backslashes or slashes; may be empty
     * @param name the name of the shortcut, without extension
     * @return the name of the account
     * @throws ServiceException -80012
     */
    public native String getDesktopItemOwner(String folder, String subfolder, String name) throws ServiceException;

    /**
     * Sets the owner of a shortcut. Windows: SetFileSecurity.
     *
     * @param folder the folder; may hold tokens
     * @param subfolder a path below it, with backslashes or slashes; may be empty
     * @param name the name of the shortcut, without extension
     * @param owner the name of the account
     * @throws ServiceException -80013
     */
    public native void setDesktopItemOwner(String folder, String subfolder, String name, String owner)
            throws ServiceException;

    /**
     * Reads the attributes of a shortcut, as {@link Win32FileServiceImpl#getFileAttributes} does.
     *
     * @param folder the folder; may hold tokens
     * @param subfolder a path below it, with backslashes or slashes; may be empty
     * @param name the name of the shortcut, without extension
     * @return a new object
     * @throws ServiceException -80018
     */
    public native FileAttributes getDesktopItemAttributes(String folder, String subfolder, String name)
            throws ServiceException;

    /**
     * Sets the attributes of a shortcut, as {@link Win32FileServiceImpl#setFileAttributes} does.
     *
     * @param folder the folder; may hold tokens
     * @param subfolder a path below it, with backslashes or slashes; may be empty
     * @param name the name of the shortcut, without extension
     * @param attributes the states to set
     * @throws ServiceException -80019
     */
    public native void setDesktopItemAttributes(String folder, String subfolder, String name, FileAttributes attributes)
            throws ServiceException;

    /**
     * Tells the group of a folder. Windows: GetNamedSecurityInfo.
     *
     * @param folder the folder; may hold tokens
     * @param subfolder a path below it, with backslashes or slashes; may be empty
     * @return the name of the account
     * @throws ServiceException -80014
     */
    public native String getDesktopFolderOwnerGroup(String folder, String subfolder) throws ServiceException;

    /**
     * Sets the group of a folder. Windows: SetFileSecurity.
     *
     * @param folder the folder; may hold tokens
     * @param subfolder a path below it, with backslashes or slashes; may be empty
     * @param group the name of the account
     * @throws ServiceException -80015
     */
    public native void setDesktopFolderOwnerGroup(String folder, String subfolder, String group)
            throws ServiceException;

    /**
     * Tells the owner of a folder. Windows: GetNamedSecurityInfo.
     *
     * @param folder the folder; may hold tokens
     * @param subfolder a path below it, with backslashes or slashes; may be empty
     * @return the name of the account
     * @throws ServiceException -80016
     */
    public native String getDesktopFolderOwner(String folder, String subfolder) throws ServiceException;

    /**
     * Sets the owner of a folder. Windows: SetFileSecurity.
     *
     * @param folder the folder; may hold tokens
     * @param subfolder a path below it, with backslashes or slashes; may be empty
     * @param owner the name of the account
     * @throws ServiceException -80017
     */
    public native void setDesktopFolderOwner(String folder, String subfolder, String owner) throws ServiceException;

    /**
     * Reads the attributes of a folder, as {@link Win32FileServiceImpl#getFileAttributes} does.
     *
     * @param folder the folder; may hold tokens
     * @param subfolder a path below it, with backslashes or slashes; may be empty
     * @return a new object
     * @throws ServiceException -80020
     */
    public native FileAttributes getDesktopFolderAttributes(String folder, String subfolder) throws ServiceException;

    /**
     * Sets the attributes of a folder, as {@link Win32FileServiceImpl#setFileAttributes} does.
     *
     * @param folder the folder; may hold tokens
     * @param subfolder a path below it, with backslashes or slashes; may be empty
     * @param attributes the states to set
     * @throws ServiceException -80021
     */
    public native void setDesktopFolderAttributes(String folder, String subfolder, FileAttributes attributes)
            throws ServiceException;
}
