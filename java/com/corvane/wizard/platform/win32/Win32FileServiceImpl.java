package com.corvane.wizard.platform.win32;

import com.corvane.util.FileAttributes;
import com.corvane.wizard.service.ServiceException;

/**
 * Files that may be in use, drives, and where things go.
 *
 * <p>What cannot be done now because a file is in use is done at the next start of Windows: on the NT
 * family through MoveFileEx, on Windows 95, 98 and ME through the section "[Rename]" of WinInit.Ini. The
 * result tells Java so.
 *
 * <p>A failure of Windows is thrown as {@link ServiceException} with the method's code and the system's
 * message. On Windows 95, 98 and ME the ANSI functions are called, and text goes through the ANSI code
 * page; elsewhere the wide functions, but for those that are named with an A below. Paths are handed to
 * Windows as they are; a root that is null is that of the current directory. The object has no state; its
 * methods may be called from any thread.
 *
 * <p>Setting an owner or a group enables three privileges of the process, which stay enabled, also in the
 * programs that it starts later; each call leaves three token handles open.
 *
 * <p>Copying, moving and deleting lift the read-only attribute first, also of what is not there: a file that
 * another process makes at that very moment may become hidden.
 */
public class Win32FileServiceImpl {

    /** The result of an operation that is complete. */
    public static final int DONE = 0;

    /** The result of an operation that the next start of Windows completes. */
    public static final int DONE_AT_REBOOT = 1;

    /** A kind of drive: a hard disk. */
    public static final int PARTITION_FIXED = 1;

    /** A kind of drive: one whose disk can be taken out. */
    public static final int PARTITION_REMOVABLE = 2;

    /** A kind of drive: one of another computer. */
    public static final int PARTITION_REMOTE = 3;

    /** A kind of drive: a CD or DVD. */
    public static final int PARTITION_CD = 4;

    /** A kind of drive: a piece of memory. */
    public static final int PARTITION_RAM_DISK = 5;

    /** A kind of drive: any other, or none at all. */
    public static final int PARTITION_UNKNOWN = -1;

    static {
        Win32Library.load();
    }

    /** Makes an object without state: one serves as well as another. */
    public Win32FileServiceImpl() {}

    /**
     * Reads the attributes of a file or a directory. Windows: GetFileAttributes.
     *
     * @param path the file or directory
     * @return a new object, or null when Windows refuses without a reason: readable is always set; writeable
     *     unless the file is read-only; executable for a directory; hidden, archive and system as they are
     * @throws ServiceException -30000
     */
    public native FileAttributes getFileAttributes(String path) throws ServiceException;

    /**
     * Sets the attributes of a file or a directory: read-only unless owner, group or world may write;
     * hidden, archive and system as given. All other attributes are cleared. Windows: SetFileAttributes.
     *
     * @param path the file or directory; "." is refused with 0x80070057 (E_INVALIDARG)
     * @param attributes the states to set
     * @throws ServiceException -30001; with 87 (ERROR_INVALID_PARAMETER) when {@code attributes} is null
     */
    public native void setFileAttributes(String path, FileAttributes attributes) throws ServiceException;

    /**
     * Copies a file, with its attributes and the time of its last write. A target that is read-only is made
     * writeable first; one that is a symbolic link stays, and the file that it names is written.
     *
     * <p>On the NT family, a target in use is renamed to target + ".delete_on_reboot" and deleted at the
     * next start; the copy is in place at once. If it cannot be renamed, the copy is written to target +
     * ".use_on_reboot" and replaces the target at the next start, as it always does on Windows 95, 98 and
     * ME. Windows: CopyFile, MoveFileEx.
     *
     * @param source the file to copy
     * @param target the path of the copy; a drive and nothing else, such as "X:", is refused with 3
     *     (ERROR_PATH_NOT_FOUND)
     * @param overwrite whether a target that is there is replaced; otherwise it is a failure
     * @return {@link #DONE} or {@link #DONE_AT_REBOOT}
     * @throws ServiceException -30017
     */
    public native int win32CopyFile(String source, String target, boolean overwrite) throws ServiceException;

    /**
     * Moves a file. A target that is read-only is made writeable first.
     *
     * <p>On the NT family, a target in use is renamed to target + ".delete_on_reboot" and deleted at the
     * next start. If it cannot be renamed, the source is moved to target + ".move_on_reboot" and replaces
     * the target at the next start. If the target was renamed but the source could not take its place
     * (because the source is in use, say, and also without {@code overwrite}), the target stays renamed, and
     * the failure is thrown. A directory as the target counts as in use; if it cannot be renamed, the source
     * stays under its waiting name for good, in spite of the result. Windows: MoveFileEx.
     *
     * <p>On Windows 95, 98 and ME, an empty target deletes the source; without {@code overwrite} a source
     * that exists is not moved and nothing is reported; with it, a target that does not exist is a
     * failure. Windows: DeleteFile, MoveFile.
     *
     * @param source the file to move; a drive and nothing else, such as "X:", is refused with 3
     *     (ERROR_PATH_NOT_FOUND)
     * @param target its new path; null is refused with 87 (ERROR_INVALID_PARAMETER), and a drive as above
     * @param overwrite whether a target that is there is replaced
     * @return {@link #DONE} or {@link #DONE_AT_REBOOT}
     * @throws ServiceException -30018
     */
    public native int win32MoveFile(String source, String target, boolean overwrite) throws ServiceException;

    /**
     * Deletes a file, also a read-only one. One that is in use, or that Windows refuses to delete (5,
     * ERROR_ACCESS_DENIED), is deleted at the next start; one of which another process has locked a range
     * stays, and the standard error stream says so. Windows: DeleteFile, MoveFileEx.
     *
     * @param path the file; a drive and nothing else, such as "X:", is refused with 3 (ERROR_PATH_NOT_FOUND)
     * @return {@link #DONE} or {@link #DONE_AT_REBOOT}
     * @throws ServiceException -30019
     */
    public native int win32DeleteFile(String path) throws ServiceException;

    /**
     * Deletes a directory. Files in use are deleted at the next start; their directories, up to the given
     * one, stay then. After a failure, only the files that were found already are still deleted; what is
     * deleted stays deleted. With {@code recursive}, a junction or a symbolic link inside is removed itself
     * and never followed. Windows: FindFirstFile, DeleteFile, RemoveDirectory, MoveFileEx.
     *
     * @param path the directory, with or without a separator at its end; an empty path or null is refused
     *     with 3 (ERROR_PATH_NOT_FOUND), with {@code directoryOnly} by Windows; so is always a drive and
     *     nothing else ("X:", "\\.\X:", "\\?\X:"), which is no root
     * @param directoryOnly whether only the directory itself is removed, which must be empty then
     * @param recursive whether sub-directories are deleted; without it, they make the removal of the
     *     directory fail with 145 (ERROR_DIR_NOT_EMPTY) after its files are deleted, unless one of these waits
     *     for the next start
     * @return {@link #DONE} or {@link #DONE_AT_REBOOT}
     * @throws ServiceException -30020
     */
    public native int win32DeleteDirectory(String path, boolean directoryOnly, boolean recursive)
            throws ServiceException;

    /**
     * Sets the time of a file's creation. A read-only file stays read-only. Windows: SetFileTime.
     *
     * @param path the file; a directory is refused with 5 (ERROR_ACCESS_DENIED)
     * @param created a Windows FILETIME: 100-nanosecond intervals since 1 January 1601 (UTC)
     * @throws ServiceException -30011
     */
    public native void win32SetFileCreated(String path, long created) throws ServiceException;

    /**
     * Sets the time of the last write to a file. A read-only file stays read-only. Windows: SetFileTime.
     *
     * @param path the file; a directory is refused with 5 (ERROR_ACCESS_DENIED)
     * @param modified a Windows FILETIME: 100-nanosecond intervals since 1 January 1601 (UTC)
     * @throws ServiceException -30016
     */
    public native void win32SetFileModified(String path, long modified) throws ServiceException;

    /**
     * Sets the three times of a file. A read-only file stays read-only. Windows: SetFileTime.
     *
     * @param path the file; a directory is refused with 5 (ERROR_ACCESS_DENIED)
     * @param created the time of creation, a Windows FILETIME: 100-nanosecond intervals since 1 January
     *     1601 (UTC)
     * @param accessed the time of the last access, likewise
     * @param modified the time of the last write, likewise
     * @throws ServiceException -30007
     */
    public native void win32SetFileTimes(String path, long created, long accessed, long modified)
            throws ServiceException;

    /**
     * Tells the owner of a file. Windows: GetNamedSecurityInfo.
     *
     * @param path the file or directory
     * @return the name of the account without its domain; empty on Windows 95, 98 and ME
     * @throws ServiceException -30012
     */
    public native String getFileOwner(String path) throws ServiceException;

    /**
     * Tells the primary group of a file. Windows: GetNamedSecurityInfo.
     *
     * @param path the file or directory
     * @return the name of the account without its domain; empty on Windows 95, 98 and ME, and when the
     *     domain is not trusted (1789)
     * @throws ServiceException -30008
     */
    public native String getFileOwnerGroup(String path) throws ServiceException;

    /**
     * Gives a file to another owner. Does nothing on Windows 95, 98 and ME. Windows: SetFileSecurity.
     *
     * @param path the file or directory
     * @param owner an account, as LookupAccountName takes it: a name, or a domain, a backslash and a name
     * @throws ServiceException -30013; with 1332 (ERROR_NONE_MAPPED) when there is no such account
     */
    public native void setFileOwner(String path, String owner) throws ServiceException;

    /**
     * Gives a file to another primary group. Does nothing on Windows 95, 98 and ME. Windows:
     * SetFileSecurity.
     *
     * @param path the file or directory
     * @param group an account, as LookupAccountName takes it
     * @throws ServiceException -30009; with 1332 (ERROR_NONE_MAPPED) when there is no such account
     */
    public native void setFileOwnerGroup(String path, String group) throws ServiceException;

    /**
     * Tells the free space of a drive. Windows: GetDiskFreeSpaceEx, or GetDiskFreeSpace.
     *
     * @param root a root such as {@code C:\}
     * @return bytes free for the caller
     * @throws ServiceException -30004
     */
    public native long getPartitionFreeSpace(String root) throws ServiceException;

    /**
     * Lists the drives. Windows: GetLogicalDriveStrings.
     *
     * @return their roots, such as {@code C:\}
     * @throws ServiceException only {@link ServiceException#UNEXPECTED}, when memory is short for one
     */
    public native String[] getPartitionNames() throws ServiceException;

    /**
     * Tells what a drive is. Windows: GetDriveTypeA.
     *
     * @param root a root such as {@code C:\}
     * @return {@link #PARTITION_FIXED}, {@link #PARTITION_REMOVABLE}, {@link #PARTITION_REMOTE},
     *     {@link #PARTITION_CD}, {@link #PARTITION_RAM_DISK} or {@link #PARTITION_UNKNOWN}
     * @throws ServiceException only {@link ServiceException#UNEXPECTED}, when memory is short for one
     */
    public native int getPartitionType(String root) throws ServiceException;

    /**
     * Tells the file system of a drive. Windows: GetVolumeInformation.
     *
     * @param root a root such as {@code C:\}
     * @return its name, such as NTFS
     * @throws ServiceException -30010
     */
    public native String getPartitionFormat(String root) throws ServiceException;

    /**
     * Tells whether names on a drive may have 255 characters. Windows: GetVolumeInformationA.
     *
     * @param root a root such as {@code C:\}
     * @return whether they may
     * @throws ServiceException -30015
     */
    public native boolean supportsLongFileNames(String root) throws ServiceException;

    /**
     * Tells the directory for temporary files. Windows: GetTempPath.
     *
     * @return the directory, with a backslash at its end
     * @throws ServiceException -60002, also when it is not there
     */
    public native String getTempDirectory() throws ServiceException;

    /**
     * Tells the directory of Windows. Windows: GetWindowsDirectory.
     *
     * @return the directory
     * @throws ServiceException -60000
     */
    public native String win32GetWindowsDirectory() throws ServiceException;

    /**
     * Tells the directory of the system's libraries. Windows: GetSystemDirectory.
     *
     * @return the directory; empty when it is not there
     * @throws ServiceException only {@link ServiceException#UNEXPECTED}, when memory is short for one
     */
    public native String getLibraryDirectory() throws ServiceException;

    /**
     * Tells the directory for programs: the value "ProgramFilesDir" of the registry.
     *
     * @return the directory
     * @throws ServiceException -60001, with the low 16 bits of the reason
     */
    public native String getStandardInstallDirectory() throws ServiceException;

    /**
     * Tells the directory for files that programs share: the value "CommonFilesDir" of the registry.
     *
     * @return the directory; empty when the value cannot be read
     * @throws ServiceException -30022, only for a reason with its highest bit set
     */
    public native String win32GetCommonDirectory() throws ServiceException;

    /**
     * Tells where the data of products is kept: {@link #win32GetCommonDirectory} when a file can be made
     * there, otherwise the user's application data. On Windows 95, 98 and ME it is always the former.
     * Windows: GetTempFileNameA, SHGetSpecialFolderLocation.
     *
     * @return the directory
     * @throws ServiceException -30023, with 3 when the user's folder is unknown, 5 when it has no path; -30022 as
     *     {@link #win32GetCommonDirectory}
     */
    public native String win32GetVPDDirectory() throws ServiceException;

    /**
     * Tells whether a file can be made in a directory, by making one that disappears again. Windows:
     * CreateFile.
     *
     * @param directory the directory
     * @return whether it can; also true when the hundred names that are tried are all taken
     * @throws ServiceException 0x80070057 (E_INVALIDARG) without a message, for an empty path or null, and for a
     *     drive and nothing else, such as "X:"
     */
    public native boolean isDirectoryWritable(String directory) throws ServiceException;

    /**
     * Lets the system's boxes for critical errors (no disk in the drive) show, or not, for the whole
     * process. The methods that look at a drive or write to a directory add 1 to the error mode meanwhile:
     * where boxes may show, none does for these, and where they are suppressed, as the JVM does,
     * one may. Threads that call them at once can leave the error mode changed. Throws nothing. Windows:
     * SetErrorMode.
     *
     * @param enable whether they may show
     * @return whether they were suppressed before
     */
    public native boolean win32EnableAbort(boolean enable);
}
