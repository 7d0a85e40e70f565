package com.corvane.wizard.platform.win32;

import com.corvane.wizard.service.ServiceException;

/** Who runs the installer. */
public class Win32SecurityServiceImpl {

    static {
        Win32Library.load();
    }

    /**
     * Tells whether the current user is a member of the local group Administrators: the user that the
     * thread impersonates, otherwise that of the process. Membership alone counts, also where it is for
     * denying only (a filtered token). On Windows 95, 98 and ME everybody is an administrator. Each call leaves
     * a token handle open, so ask once and keep the answer. Windows: GetTokenInformation.
     *
     * @return whether it is an administrator
     * @throws ServiceException -110000, when it cannot be found out
     */
    public native boolean isCurrentUserAdmin() throws ServiceException;
}
