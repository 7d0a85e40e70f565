package com.corvane.wizard.platform.win32;

import com.corvane.util.FileAttributes;
import com.corvane.wizard.service.ServiceException;

/**
 * Files that may be in use.
 *
 * <p>What cannot be done now because a file is in use is done at the next start of Windows: on the NT
 * family through MoveFileEx, on Windows 95, 98 and ME through the section "[Rename]" of WinInit.Ini. The
 * result tells Java so.
 *
 * <p>A failure of Windows is thrown as {@link ServiceException} with the method's code and the system's
 * message. On Windows 95, 98 and ME the ANSI functions are called, and text goes through the ANSI code
 * page; elsewhere the wide functions. Paths are handed to Windows as they are. The object has no state;
 * its methods may be called from any thread.
 */
public class Win32FileServiceImpl {

    /** The result of an operation that is complete. */
    public static final int DONE = 0;

    /** The result of an operation that the next start of Windows completes. */
    public static final int DONE_AT_REBOOT = 1;

    static {
        Win32Library.load();
    }

    /**
     * Reads the attributes of a file or a directory. Windows: GetFileAttributes.
     *
     * @param path the file or directory
     * @return a new object: readable is always set; writeable unless the file is read-only; executable for
     *     a directory; hidden, archive and system as they are
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
     * writeable first.
     *
     * <p>On the NT family, a target in use is renamed to target + ".delete_on_reboot" and deleted at the
     * next start; the copy is in place at once. If it cannot be renamed, the copy is written to target +
     * ".use_on_reboot" and replaces the target at the next start, as it always does on Windows 95, 98 and
     * ME. Windows: CopyFile, MoveFileEx.
     *
     * @param source the file to copy
     * @param target the path of the copy
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
     * the failure is thrown. Windows: MoveFileEx.
     *
     * <p>On Windows 95, 98 and ME, an empty target deletes the source; without {@code overwrite} a source
     * that exists is not moved and nothing is reported; with it, a target that does not exist is a
     * failure. Windows: DeleteFile, MoveFile.
     *
     * @param source the file to move
     * @param target its new path; null is refused with 87 (ERROR_INVALID_PARAMETER)
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
     * @param path the file
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
     *     with 3 (ERROR_PATH_NOT_FOUND), with {@code directoryOnly} by Windows
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
}
