package com.corvane.wizard.platform.win32;

import com.corvane.wizard.service.ServiceException;

/**
 * Who runs the installer; and users and groups, made and deleted.
 *
 * <p>Each of these is of a domain or a machine: a name behind two backslashes ("\\SERVER") is that machine, any
 * other is a domain, whose controller does the work, and null or empty is this machine. Groups are the local
 * ones of a machine and the global ones of a domain. Administrators alone may make and delete them.
 *
 * <p>Windows 95, 98 and ME have none of them: the code is {@link ServiceException#OPERATION_NOT_SUPPORTED}. It is
 * 0x80070057, without a message, when a name is null or empty; -110004 when the domain's controller cannot be
 * found, as a rule with the reason 2453; and -110005, without a message, when this Windows has no network
 * management.
 */
public class Win32SecurityServiceImpl {

    static {
        Win32Library.load();
    }

    /** Makes an object without state: one serves as well as another. */
    public Win32SecurityServiceImpl() {}

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

    /**
     * Makes an ordinary user and has it join groups; one that it is a member of already is no failure. When it
     * cannot join one of them, the library tries to delete it again, which may fail as well. Windows: NetUserAdd,
     * NetLocalGroupAddMembers, NetGroupAddUser, NetUserDel.
     *
     * @param domain where
     * @param name the name of the user
     * @param password its password; null is none. The library's copy of it is overwritten before this returns
     * @param fullName the user's name in full; may be null
     * @param comment what is said of the user; may be null
     * @param groups the names of the groups, none of which is null or empty; may be null
     * @throws ServiceException -110003, for instance with the reason 2224 when there is such a user; -110001 when
     *     it cannot join a group, for instance with 1376 or 2220 when there is none; 0x80070057, -110004 and
     *     -110005 as said of all
     */
    public native void win32CreateUser(
            String domain, String name, String password, String fullName, String comment, String[] groups)
            throws ServiceException;

    /**
     * Deletes a user. Windows: NetUserDel.
     *
     * @param domain where
     * @param name the name of the user
     * @throws ServiceException -110004, for instance with the reason 2221 when there is none; 0x80070057 and -110005
     *     as said of all
     */
    public native void deleteUser(String domain, String name) throws ServiceException;

    /**
     * Makes a group without members. Windows: NetLocalGroupAdd, NetGroupAdd.
     *
     * @param domain where
     * @param name the name of the group
     * @param comment what is said of the group; may be null
     * @throws ServiceException -110001, for instance with the reason 1379 or 2223 when there is such a group;
     *     0x80070057, -110004 and -110005 as said of all
     */
    public native void win32CreateGroup(String domain, String name, String comment) throws ServiceException;

    /**
     * Deletes a group; its members stay. Windows: NetLocalGroupDel, NetGroupDel.
     *
     * @param domain where
     * @param name the name of the group
     * @throws ServiceException -110002, for instance with the reason 1376 or 2220 when there is none; 0x80070057,
     *     -110004 and -110005 as said of all
     */
    public native void deleteGroup(String domain, String name) throws ServiceException;
}
