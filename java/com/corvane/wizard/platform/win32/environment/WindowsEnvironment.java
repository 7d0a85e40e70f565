package com.corvane.wizard.platform.win32.environment;

import com.corvane.wizard.platform.win32.Win32Library;
import com.corvane.wizard.service.ServiceException;

/**
 * Environment variables: of this process, and those that are stored, from which the system makes the environment
 * of new processes. A stored value may refer to other variables, as in {@code %SystemRoot%\x}; it is given and
 * taken as it stands.
 *
 * <p>After a stored variable was changed, every window is told. Each one that does not answer, and is not known to
 * hang, is waited for up to three seconds.
 */
public class WindowsEnvironment {

    static {
        Win32Library.load();
    }

    /** Makes an object without state: one serves as well as another. */
    public WindowsEnvironment() {}

    /**
     * Reads a variable of this process. Windows: GetEnvironmentVariable.
     *
     * @param name empty and null name none
     * @return its value; empty for no name, null when there is no such variable or its value is empty
     * @throws ServiceException for what nobody expected alone
     */
    public native String getProcessEnvironmentVariable(String name) throws ServiceException;

    /**
     * Sets a variable of this process and of those that it starts with its own environment; {@link System#getenv}
     * keeps what it had. Windows: SetEnvironmentVariable.
     *
     * @param name empty and null name none, and nothing is done
     * @param value null removes the variable, if it is there
     * @throws ServiceException -70008
     */
    public native void setProcessEnvironmentVariable(String name, String value) throws ServiceException;

    /**
     * Reads a stored variable on the NT family. Windows: RegQueryValueEx.
     *
     * @param name the variable
     * @param system true for the machine's variables, false for the user's
     * @return its value; null when there is no such variable, or on another Windows
     * @throws ServiceException -70010; with 1804 when it is no text
     */
    public native String winNTGetRawEnvironmentVariable(String name, boolean system) throws ServiceException;

    /**
     * Stores a variable on the NT family, as REG_EXPAND_SZ; does nothing on another Windows. Windows:
     * RegSetValueEx, RegDeleteValue, SendMessageTimeoutA.
     *
     * @param name the variable
     * @param value null removes the variable, if it is there
     * @param system true for the machine's variables, false for the user's
     * @throws ServiceException -70000
     */
    public native void winNTSetEnvironmentVariable(String name, String value, boolean system)
            throws ServiceException;

    /**
     * Reads a stored variable on Windows ME. Windows: RegQueryValueEx.
     *
     * @param name the variable
     * @return its value; null when there is no such variable, or on another Windows
     * @throws ServiceException -70010; with 1804 when it is no text
     */
    public native String winMEGetRawEnvironmentVariable(String name) throws ServiceException;

    /**
     * Stores a variable on Windows ME, as REG_SZ; does nothing on another Windows. Windows: RegSetValueEx,
     * RegDeleteValue, SendMessageTimeoutA.
     *
     * @param name the variable
     * @param value null removes the variable, if it is there
     * @throws ServiceException -70000
     */
    public native void winMESetEnvironmentVariable(String name, String value) throws ServiceException;
}
