package com.corvane.wizard.platform.win32.security;

import com.corvane.wizard.platform.win32.Win32Library;
import com.corvane.wizard.service.ServiceException;

/**
 * The rights that an account holds itself: privileges, such as "SeBackupPrivilege", and the ways in which it
 * may log on. What it holds as a member of groups is theirs. To change rights takes those of an administrator.
 *
 * <p>The account is a name, or a domain, a backslash and a name, as this computer knows it, whatever computer
 * its rights are on record at; null counts as empty. A name that is the computer's as well is taken for the
 * account. It goes through the ANSI code page.
 *
 * <p>The system is the name of the computer where the rights are on record; null or empty is this one.
 *
 * <p>Among the reasons of a failure are 1332 (no such account), 1313 (no such right), 5 (not allowed) and 120
 * (this Windows lacks a function). When anything fails once the computer's records are open, they stay open
 * until the process ends. Windows 95, 98 and ME have no rights: there all methods throw
 * {@link ServiceException#OPERATION_NOT_SUPPORTED}.
 */
public class WindowsAccountPrivilegeServiceImpl {

    /** The right to run services. */
    public static final String LOG_ON_AS_SERVICE = "SeServiceLogonRight";

    /** The right to run jobs without anybody at the screen. */
    public static final String LOG_ON_AS_BATCH_JOB = "SeBatchLogonRight";

    /** The right to log on at the screen. */
    public static final String LOG_ON_LOCALLY = "SeInteractiveLogonRight";

    /** The right to log on over the network. */
    public static final String LOG_ON_FROM_NETWORK = "SeNetworkLogonRight";

    static {
        Win32Library.load();
    }

    /** Makes an object without state: one serves as well as another. */
    public WindowsAccountPrivilegeServiceImpl() {}

    /**
     * Grants rights; those that the account holds already are no failure. Windows: LsaAddAccountRights.
     *
     * @param accountName the account
     * @param systemName the computer
     * @param rights their names, as Windows writes them
     * @throws ServiceException -110100; 87 is the reason without an array, or for a name of more than 32766
     *     characters
     */
    public native void nativeAddAccountRights(String accountName, String systemName, String[] rights)
            throws ServiceException;

    /**
     * Takes all rights away. Windows: LsaRemoveAccountRights.
     *
     * @param accountName the account
     * @param systemName the computer
     * @throws ServiceException -110101; with the reason 2 and {@link ServiceException#getSeverity() severity} 1
     *     when it held none
     */
    public native void nativeRemoveAllRights(String accountName, String systemName) throws ServiceException;

    /**
     * Takes rights away; those that the account does not hold are no failure as long as it holds any. Windows:
     * LsaRemoveAccountRights.
     *
     * @param accountName the account
     * @param systemName the computer
     * @param rights their names, as Windows writes them
     * @throws ServiceException -110102; with the reason 2 and {@link ServiceException#getSeverity() severity} 1
     *     when it held none; 87 as for {@link #nativeAddAccountRights}
     */
    public native void nativeRemoveAccountRights(String accountName, String systemName, String[] rights)
            throws ServiceException;

    /**
     * Lists the rights. Windows: LsaEnumerateAccountRights.
     *
     * @param accountName the account
     * @param systemName the computer
     * @return their names in the system's order, perhaps none
     * @throws ServiceException -110103
     */
    public native String[] nativeEnumerateAccountRights(String accountName, String systemName)
            throws ServiceException;
}
