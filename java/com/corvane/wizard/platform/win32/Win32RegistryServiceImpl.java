package com.corvane.wizard.platform.win32;

import com.corvane.wizard.service.ServiceException;

/**
 * The Windows registry.
 *
 * <p>Every method names a key by a root (one of the constants below) and a path below it, with
 * backslashes. A null path is the root itself. A null or empty value name is the key's default value.
 * Strings end at their first NUL character.
 *
 * <p>A failure of Windows is thrown as {@link ServiceException} with the method's code and the system's
 * message; a value of another type than the one that is read fails with 1804 (ERROR_INVALID_DATATYPE),
 * a path below a root that does not exist with 6 (ERROR_INVALID_HANDLE). Several methods share a code where
 * the kind of failure is the same.
 *
 * <p>On Windows 95, 98 and ME the ANSI functions are called, and text goes through the ANSI code page;
 * elsewhere the wide functions. The object has no state; its methods may be called from any thread.
 */
public class Win32RegistryServiceImpl {

    /** HKEY_CLASSES_ROOT. */
    public static final int HKEY_CLASSES_ROOT = 1;

    /** HKEY_CURRENT_CONFIG. */
    public static final int HKEY_CURRENT_CONFIG = 2;

    /** HKEY_CURRENT_USER. */
    public static final int HKEY_CURRENT_USER = 3;

    /** HKEY_LOCAL_MACHINE. */
    public static final int HKEY_LOCAL_MACHINE = 4;

    /** HKEY_USERS. */
    public static final int HKEY_USERS = 5;

    /** A type of value: text. */
    public static final int REG_SZ = 1;

    /** A type of value: text with references to environment variables, such as {@code %TEMP%}. */
    public static final int REG_EXPAND_SZ = 2;

    /** A type of value: bytes. */
    public static final int REG_BINARY = 3;

    /** A type of value: a number of 32 bits. */
    public static final int REG_DWORD = 4;

    /** A type of value: a list of texts. */
    public static final int REG_MULTI_SZ = 7;

    static {
        Win32Library.load();
    }

    /** Makes an object without state: one serves as well as another. */
    public Win32RegistryServiceImpl() {}

    /**
     * Tells whether a key is there. A root itself always is, and nothing is opened for it: with a null path
     * the answer is true also for a number that is no root. Windows: RegOpenKeyEx.
     *
     * @param root one of the roots
     * @param key the path of the key, or null
     * @return false when the key is missing
     * @throws ServiceException -100001, for every other reason why it cannot be opened
     */
    public native boolean keyExists(int root, String key) throws ServiceException;

    /**
     * Tells whether a value is there. Windows: RegQueryValueEx.
     *
     * @param root one of the roots
     * @param key the path of the key, or null
     * @param name the name of the value, or null
     * @return false when the value or its key is missing
     * @throws ServiceException -100014
     */
    public native boolean valueExists(int root, String key, String name) throws ServiceException;

    /**
     * Makes a key below another. A key that is there already is a success. Windows: RegCreateKeyEx.
     *
     * @param root one of the roots
     * @param key the path of the parent, which must be there, or null
     * @param subKey the name of the new key, or a path below the parent
     * @throws ServiceException -100012
     */
    public native void createKey(int root, String key, String subKey) throws ServiceException;

    /**
     * Deletes a key with all its values and sub-keys. What was deleted before a failure stays deleted. A
     * registry link is deleted itself, below the key and as the key; what it leads to stays, with all below
     * it. Windows: RegOpenKeyEx, RegEnumKeyEx and NtDeleteKey; RegDeleteKey on Windows 95, 98 and ME.
     *
     * @param root one of the roots
     * @param key the path of the parent, which must be there, or null
     * @param subKey the name of the key to delete, or a path below the parent; null, the empty name and one
     *     that begins with a backslash fail with 1010 (ERROR_BADKEY)
     * @param mustExist whether a key that is missing is a failure. Without it, 2 (ERROR_FILE_NOT_FOUND) is
     *     passed over wherever it comes from: the key may still be there when a key below it vanished
     *     meanwhile, or has a name with a NUL in it
     * @throws ServiceException -100002; with 1018 (ERROR_KEY_DELETED) when another deletes the same key
     */
    public native void deleteKey(int root, String key, String subKey, boolean mustExist) throws ServiceException;

    /**
     * Deletes a value. Windows: RegDeleteValue.
     *
     * @param root one of the roots
     * @param key the path of the key, which must be there, or null
     * @param name the name of the value, or null
     * @param mustExist whether a value that is missing is a failure
     * @throws ServiceException -100002
     */
    public native void deleteValue(int root, String key, String name, boolean mustExist) throws ServiceException;

    /**
     * Tells whether a key has neither sub-keys nor values. Windows: RegQueryInfoKey. This method and the
     * other five that count or measure leave the key open until the process ends.
     *
     * @param root one of the roots
     * @param key the path of the key, or null
     * @return true when it is empty
     * @throws ServiceException -100003
     */
    public native boolean isKeyEmpty(int root, String key) throws ServiceException;

    /**
     * Counts the sub-keys of a key. Windows: RegQueryInfoKey.
     *
     * @param root one of the roots
     * @param key the path of the key, or null
     * @return how many there are, not counting deeper levels
     * @throws ServiceException -100003
     */
    public native int countSubKeys(int root, String key) throws ServiceException;

    /**
     * Counts the values of a key. Windows: RegQueryInfoKey.
     *
     * @param root one of the roots
     * @param key the path of the key, or null
     * @return how many there are
     * @throws ServiceException -100003
     */
    public native int countValuesInKey(int root, String key) throws ServiceException;

    /**
     * Measures the names of a key's sub-keys. Windows: RegQueryInfoKey.
     *
     * @param root one of the roots
     * @param key the path of the key, or null
     * @return the characters of the longest, 0 when there is none
     * @throws ServiceException -100003
     */
    public native int longestSubKeyNameLength(int root, String key) throws ServiceException;

    /**
     * Measures the names of a key's values. Windows: RegQueryInfoKey.
     *
     * @param root one of the roots
     * @param key the path of the key, or null
     * @return the characters of the longest, 0 when there is none
     * @throws ServiceException -100003
     */
    public native int longestValueNameLength(int root, String key) throws ServiceException;

    /**
     * Measures the data of a key's values. Windows: RegQueryInfoKey.
     *
     * @param root one of the roots
     * @param key the path of the key, or null
     * @return the bytes of the longest, 0 when there is none
     * @throws ServiceException -100003
     */
    public native int longestValueNameData(int root, String key) throws ServiceException;

    /**
     * Lists the sub-keys of a key. Windows: RegEnumKey. Leaves the key open until the process ends.
     *
     * @param root one of the roots
     * @param key the path of the key, or null
     * @return their names in the system's order; an empty array when there is none
     * @throws ServiceException -100013
     */
    public native String[] getSubkeyNames(int root, String key) throws ServiceException;

    /**
     * Lists the values of a key. Windows: RegEnumValue. Leaves the key open until the process ends.
     *
     * @param root one of the roots
     * @param key the path of the key, or null
     * @return their names in the system's order; an empty array when there is none
     * @throws ServiceException -100000; with 234 (ERROR_MORE_DATA) when a name does not fit into 1024
     *     characters
     */
    public native String[] getKeyValueNames(int root, String key) throws ServiceException;

    /**
     * Tells the type of a value. Windows: RegQueryValueEx.
     *
     * @param root one of the roots
     * @param key the path of the key, or null
     * @param name the name of the value, or null
     * @return {@link #REG_SZ}, {@link #REG_EXPAND_SZ}, {@link #REG_BINARY}, {@link #REG_DWORD},
     *     {@link #REG_MULTI_SZ}, or the number of another type, as Windows has it
     * @throws ServiceException -100011
     */
    public native int getValueType(int root, String key, String name) throws ServiceException;

    /**
     * Reads a text: a REG_SZ or a REG_EXPAND_SZ. Windows: RegQueryValueEx, ExpandEnvironmentStrings.
     *
     * @param root one of the roots
     * @param key the path of the key, or null
     * @param name the name of the value, or null
     * @param expand whether the environment variables in a REG_EXPAND_SZ are replaced; a replacement
     *     that fails gives the empty text, one above 32,766 characters is cut by Windows
     * @return the text up to its first NUL
     * @throws ServiceException -100008
     */
    public native String getStringValue(int root, String key, String name, boolean expand) throws ServiceException;

    /**
     * Reads a number: a REG_DWORD. Windows: RegQueryValueEx.
     *
     * @param root one of the roots
     * @param key the path of the key, or null
     * @param name the name of the value, or null
     * @return the 32 bits; numbers from 2147483648 on are negative. Bytes that were not stored are those of
     *     65535
     * @throws ServiceException -100008; with 234 (ERROR_MORE_DATA) for a value of another type that has more
     *     than four bytes
     */
    public native int get32BitValue(int root, String key, String name) throws ServiceException;

    /**
     * Reads a list of texts: a REG_MULTI_SZ. Windows: RegQueryValueEx. On Windows 95, 98 and ME, in a
     * two-byte code page, empty texts follow a list of up to 2048 bytes: one for each two-byte character.
     *
     * @param root one of the roots
     * @param key the path of the key, or null
     * @param name the name of the value, or null
     * @return the texts; an empty array when there is none. Of a list that was stored without its end, a last text
     *     of one character is taken for the end
     * @throws ServiceException -100009
     */
    public native String[] getMultiStringValue(int root, String key, String name) throws ServiceException;

    /**
     * Reads bytes: a REG_BINARY. Windows: RegQueryValueEx.
     *
     * @param root one of the roots
     * @param key the path of the key, or null
     * @param name the name of the value, or null
     * @return the bytes
     * @throws ServiceException -100010; with 0x8007000E (E_OUTOFMEMORY) when the JVM makes no array and does
     *     not throw its OutOfMemoryError
     */
    public native byte[] getBinaryValue(int root, String key, String name) throws ServiceException;

    /**
     * Writes a text. Windows: RegSetValueEx, with twice the text's length in bytes, one for an empty text.
     * The NT family adds the NUL that it finds behind a text that is not empty: "abc" is stored in 8 bytes.
     * On Windows 95, 98 and ME these bytes are the text in the ANSI code page and zeros behind it.
     *
     * @param root one of the roots
     * @param key the path of the key, which must be there, or null
     * @param name the name of the value, or null
     * @param expandable whether it becomes a REG_EXPAND_SZ instead of a REG_SZ
     * @param value the text; null stores no bytes at all, an empty text one byte, which is zero
     * @throws ServiceException -100004
     */
    public native void setStringValue(int root, String key, String name, boolean expandable, String value)
            throws ServiceException;

    /**
     * Writes a list of texts as a REG_MULTI_SZ. Windows: RegSetValueEx.
     *
     * @param root one of the roots
     * @param key the path of the key, which must be there, or null
     * @param name the name of the value, or null
     * @param values the texts; an element that is null counts as an empty text
     * @throws ServiceException -100005; with 87 (ERROR_INVALID_PARAMETER) when {@code values} is null
     */
    public native void setMultiStringValue(int root, String key, String name, String[] values)
            throws ServiceException;

    /**
     * Writes a number as a REG_DWORD. Windows: RegSetValueEx.
     *
     * @param root one of the roots
     * @param key the path of the key, which must be there, or null
     * @param name the name of the value, or null
     * @param value the 32 bits
     * @throws ServiceException -100006
     */
    public native void set32BitValue(int root, String key, String name, int value) throws ServiceException;

    /**
     * Writes bytes as a REG_BINARY. Windows: RegSetValueEx.
     *
     * @param root one of the roots
     * @param key the path of the key, which must be there, or null
     * @param name the name of the value, or null
     * @param data the bytes
     * @throws ServiceException -100007; with 87 (ERROR_INVALID_PARAMETER) when {@code data} is null
     */
    public native void setBinaryValue(int root, String key, String name, byte[] data) throws ServiceException;
}
