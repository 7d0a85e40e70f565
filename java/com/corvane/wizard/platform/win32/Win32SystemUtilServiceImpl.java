package com.corvane.wizard.platform.win32;

import com.corvane.wizard.service.ServiceException;

/** What the system tells about itself. */
public class Win32SystemUtilServiceImpl {

    static {
        Win32Library.load();
    }

    /**
     * Tells the installed service pack. Windows: GetVersionEx.
     *
     * @return its text, such as "Service Pack 1"; empty when there is none
     * @throws ServiceException -70005
     */
    public native String getOSServiceLevel() throws ServiceException;

    /**
     * Tells whether this is a Windows of the NT family: NT 4, 2000, XP or any later one.
     *
     * @return false on Windows 95, 98 and ME
     */
    public native boolean isWinNTor2K();

    /**
     * Tells whether this is Windows ME.
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
}
