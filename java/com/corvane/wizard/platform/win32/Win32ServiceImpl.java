package com.corvane.wizard.platform.win32;

import com.corvane.wizard.platform.win32.win32service.NTServiceConfig;
import com.corvane.wizard.platform.win32.win32service.NTServiceStatus;
import com.corvane.wizard.platform.win32.win32service.Win2kServiceFailureActions;
import com.corvane.wizard.platform.win32.win32service.Win2kServiceStatusProcess;
import com.corvane.wizard.service.ServiceException;

/**
 * The services of Windows: programs that the system starts by itself, without anybody at the screen.
 * And what the files of programs tell about themselves.
 *
 * <p>A service is named by its key name; it has a display name besides, which people see. All methods ask the
 * service manager of this machine for all rights, so they are for administrators, those that only ask
 * included: anybody else gets 5 (ERROR_ACCESS_DENIED). Nothing is kept open between calls.
 *
 * <p>Windows 95, 98 and ME have no services: there {@link #serviceExists} and {@link #isWin2k} are false, and all
 * else that is about a service fails with 127 (ERROR_PROC_NOT_FOUND). So do, on NT 4, those that speak of a
 * "Win2kService", which Windows 2000 and all later ones have. A name that a method does not refuse itself is left
 * to Windows to refuse.
 *
 * <p>What a getter or setter of an object throws that is handed in or made is passed on as it is. Nothing has
 * been changed then, but a control has been sent.
 */
public class Win32ServiceImpl {

    /** For {@link #enumNTServiceKeys}: drivers of devices and file systems. */
    public static final int SERVICE_DRIVER = 0x0B;

    /** For {@link #enumNTServiceKeys}: services that are programs. */
    public static final int SERVICE_WIN32 = 0x30;

    /** For {@link #enumNTServiceKeys}: services that are not stopped. */
    public static final int SERVICE_ACTIVE = 1;

    /** For {@link #enumNTServiceKeys}: services that are stopped. */
    public static final int SERVICE_INACTIVE = 2;

    /** For {@link #enumNTServiceKeys}: services in any state. */
    public static final int SERVICE_STATE_ALL = 3;

    /** For {@link #controlNTService}: is to stop. */
    public static final int SERVICE_CONTROL_STOP = 1;

    /** For {@link #controlNTService}: is to pause. */
    public static final int SERVICE_CONTROL_PAUSE = 2;

    /** For {@link #controlNTService}: is to go on after a pause. */
    public static final int SERVICE_CONTROL_CONTINUE = 3;

    /** For {@link #controlNTService}: is to tell its state. */
    public static final int SERVICE_CONTROL_INTERROGATE = 4;

    static {
        Win32Library.load();
    }

    /** Makes an object without state: one serves as well as another. */
    public Win32ServiceImpl() {}

    /**
     * Tells whether there is a service. Windows: OpenService.
     *
     * @param serviceName its key name
     * @return false when there is none, and where Windows has no services
     * @throws ServiceException -1200012 when the service manager cannot be asked; 1073 when the service cannot
     *     be opened for any other reason than that it does not exist, as with 5 (ERROR_ACCESS_DENIED)
     */
    public native boolean serviceExists(String serviceName) throws ServiceException;

    /**
     * Makes a service. It does not start it. Windows: CreateService.
     *
     * @param serviceName its key name; null and empty are refused with 160 (ERROR_BAD_ARGUMENTS)
     * @param config what it is; null is refused with 160, and so is a null among its dependencies. Type, start
     *     and errors have to be said. The command is handed over as it is: see
     *     {@link NTServiceConfig#quotedCommand}. Without a user name, null or empty, the service runs as
     *     LocalSystem, whatever the password; an empty password is none
     * @throws ServiceException -120000
     */
    public native void createNTService(String serviceName, NTServiceConfig config) throws ServiceException;

    /**
     * Deletes a service. One that runs, or that somebody has open, is marked for it, and gone when that ends;
     * until then it cannot be made anew, which fails with 1072 (ERROR_SERVICE_MARKED_FOR_DELETE). Windows:
     * DeleteService.
     *
     * @param serviceName its key name
     * @throws ServiceException -120001
     */
    public native void deleteNTService(String serviceName) throws ServiceException;

    /**
     * Starts a service. Returns when its program has been started; ask {@link #queryNTServiceStatus} for when
     * it is ready. Windows: StartService.
     *
     * @param serviceName its key name
     * @param arguments what its main function gets behind the name; null is none, and a null among them is
     *     handed to Windows
     * @throws ServiceException -120002
     */
    public native void startNTService(String serviceName, String[] arguments) throws ServiceException;

    /**
     * Sends a control to a service. Windows: ControlService.
     *
     * @param serviceName its key name
     * @param control one of the constants, or a code of the service's own, from 128 to 255
     * @return the state in which it is then; stopping, for one, may go on after the return
     * @throws ServiceException -120003
     */
    public native NTServiceStatus controlNTService(String serviceName, int control) throws ServiceException;

    /**
     * Changes what a service is. The change holds from its next start, but for the display name. Windows:
     * ChangeServiceConfig.
     *
     * @param serviceName its key name; null and empty are refused with 160
     * @param config what is to change; null is refused with 160, and so is a null among its dependencies. In it
     *     {@link NTServiceConfig#SERVICE_NO_CHANGE}, null, and a list without elements leave what there is
     * @throws ServiceException -120004
     */
    public native void changeNTServiceConfig(String serviceName, NTServiceConfig config) throws ServiceException;

    /**
     * Tells what a service is. Windows: QueryServiceConfig.
     *
     * @param serviceName its key name; null and empty are refused with 160
     * @return the whole of it but the password, which is null, and the tag within its load order group, for which
     *     there is no property
     * @throws ServiceException -1200005
     */
    public native NTServiceConfig queryNTServiceConfig(String serviceName) throws ServiceException;

    /**
     * Tells the state of a service. Windows: QueryServiceStatus.
     *
     * @param serviceName its key name; null and empty are refused with 160
     * @return the state
     * @throws ServiceException -1200006
     */
    public native NTServiceStatus queryNTServiceStatus(String serviceName) throws ServiceException;

    /**
     * Tells the name that is shown for a service. Windows: GetServiceDisplayName.
     *
     * @param serviceKeyName its key name
     * @return the display name, null for an empty one
     * @throws ServiceException -1200007
     */
    public native String getNTServiceDisplayName(String serviceKeyName) throws ServiceException;

    /**
     * Tells the key name of a service. Windows: GetServiceKeyName.
     *
     * @param displayName the name that is shown for it
     * @return the key name, null for an empty one
     * @throws ServiceException -1200008
     */
    public native String getNTServiceKeyName(String displayName) throws ServiceException;

    /**
     * Tells the key names of services. Windows: EnumServicesStatus.
     *
     * @param serviceType the types together, such as {@link #SERVICE_WIN32}
     * @param serviceState {@link #SERVICE_ACTIVE}, {@link #SERVICE_INACTIVE} or {@link #SERVICE_STATE_ALL}
     * @return the key names in Windows' order; null when there is none of that type and state
     * @throws ServiceException -1200009; with 234 (ERROR_MORE_DATA) when one was made in the same moment, and when
     *     there are more than Windows tells in one answer
     */
    public native String[] enumNTServiceKeys(int serviceType, int serviceState) throws ServiceException;

    /**
     * Tells whether this is Windows 2000. No method here depends on it. Throws nothing. Windows: GetVersionEx.
     *
     * @return true on version 5.0 of the NT family alone, and on no later one
     */
    public native boolean isWin2k();

    /**
     * Tells the description of a service. Windows: QueryServiceConfig2.
     *
     * @param serviceName its key name; null and empty are refused with 160
     * @return the description; null when there is none, or it cannot be read
     * @throws ServiceException -1200011 when the service cannot be opened, and for no other reason
     */
    public native String queryWin2kServiceDescription(String serviceName) throws ServiceException;

    /**
     * Sets the description of a service. Windows: ChangeServiceConfig2.
     *
     * @param serviceName its key name; null and empty are refused with 160
     * @param description the description; null and empty take it away
     * @throws ServiceException -1200012
     */
    public native void changeWin2kServiceDescription(String serviceName, String description) throws ServiceException;

    /**
     * Tells what Windows does when a service fails. Windows: QueryServiceConfig2.
     *
     * @param serviceName its key name; null and empty are refused with 160
     * @return what it does, perhaps without actions
     * @throws ServiceException -1200010
     */
    public native Win2kServiceFailureActions queryWin2kServiceFailureActions(String serviceName)
            throws ServiceException;

    /**
     * Sets what Windows does when a service fails. Meanwhile Windows starts no service. When one of the actions
     * starts Windows anew, the privilege for that is enabled in the process; it stays enabled until the process
     * ends, and a token handle open. Windows: LockServiceDatabase, ChangeServiceConfig2.
     *
     * @param serviceName its key name; null and empty are refused with 160
     * @param actions what it is to do; null is refused with 160, and so is a negative count of actions. Without
     *     actions, those that there are are taken away; a text that is null leaves the one that there is, and
     *     an empty one takes it away
     * @throws ServiceException -1200013; -1200012 with 127 (ERROR_PROC_NOT_FOUND) where Windows lacks a function
     *     for it
     */
    public native void changeWin2kServiceFailureActions(String serviceName, Win2kServiceFailureActions actions)
            throws ServiceException;

    /**
     * Tells the state of a service with the process that it runs in. Windows: QueryServiceStatusEx.
     *
     * @param serviceName its key name; null and empty are refused with 160
     * @return the state
     * @throws ServiceException -1200014
     */
    public native Win2kServiceStatusProcess queryWin2kServiceStatusProcess(String serviceName) throws ServiceException;

    /**
     * Tells the version of a program, a library or any other file that has one among its resources. Windows:
     * GetFileVersionInfo, VerQueryValue. Throws no {@code ServiceException}; what the JVM or a setter of the object
     * throws, such as an {@code OutOfMemoryError}, is passed on.
     *
     * @param path the file; a bare name is looked for as Windows looks for libraries
     * @return a new object; null when the file has no version, or it cannot be read, for whatever reason
     */
    public native WindowsFixedFileInfo getFixedFileInfo(String path);

    /**
     * Tells the path by which the oldest programs reach a file: each of its names in the form of eight
     * characters and three, where it has one. Windows: GetShortPathName.
     *
     * @param path a file or directory, which must be there
     * @return the path; the given one when it has no other
     * @throws ServiceException -1200015
     */
    public native String getShortPath(String path) throws ServiceException;
}
