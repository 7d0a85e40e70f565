package com.corvane.wizard.platform.win32;

import com.corvane.wizard.service.ServiceException;

/**
 * The system's list of programs.
 *
 * <p>An entry is a key of the registry below {@code SOFTWARE\Microsoft\Windows\CurrentVersion\Uninstall}, of
 * the machine; of the user where that user is no administrator (not on Windows 95, 98 and ME). To tell that,
 * each call leaves a token handle open, as {@link Win32SecurityServiceImpl#isCurrentUserAdmin} does. A null
 * text counts as empty.
 */
public class Win32ProductServiceImpl {

    static {
        Win32Library.load();
    }

    /** Makes an object without state: one serves as well as another. */
    public Win32ProductServiceImpl() {}

    /**
     * Enters a product. Windows: RegCreateKeyEx, RegSetValueEx.
     *
     * @param keyName the name of the entry's key, of at most 63 characters: with a longer one only its
     *     first 63 are made into a key, and the values fail with 2 (ERROR_FILE_NOT_FOUND); an empty one is
     *     refused with 87 (ERROR_INVALID_PARAMETER). A backslash makes a key below a key, where the list does
     *     not look
     * @param displayName what the list shows; cut to 63 characters, but on Windows 2000
     * @param uninstallString the command that removes the product, stored as it is: a path with blanks needs
     *     its own quotes
     * @throws ServiceException -90000; what was made before a failure stays
     */
    public native void win32RegisterUninstaller(String keyName, String displayName, String uninstallString)
            throws ServiceException;

    /**
     * Removes the entries of a product; what is not there is not missed. Windows: NtDeleteKey;
     * RegDeleteKey on Windows 95, 98 and ME.
     *
     * @param keyName the name of an entry's key, cut to 63 characters; an empty one names none
     * @param otherKeyName the name of another, taken whole; it is removed first
     * @throws ServiceException -90001
     */
    public native void win32UnregisterUninstaller(String keyName, String otherKeyName) throws ServiceException;
}
