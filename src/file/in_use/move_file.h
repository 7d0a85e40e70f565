#pragma once

#include "file/in_use/file_outcome.h"

namespace corvane {

/// Moves a file, also onto a target that is in use. Win32: MoveFileExW, or DeleteFileA and
/// MoveFileA.
///
/// On the NT family a target in use is renamed to target + ".delete_on_reboot" and the source takes
/// its place; where it cannot be renamed, the source waits as target + ".move_on_reboot" and
/// replaces it at the next start. A read-only target is made writeable first. A null target is
/// refused with ERROR_INVALID_PARAMETER, and a source or target that is a drive and nothing else
/// (see isDriveAlone) with ERROR_PATH_NOT_FOUND.
///
/// Windows 9x has rules of its own, which installers count on there: an empty target deletes the
/// source; a source that is there is moved only with `overwrite`, and then onto a target that is
/// there.
FileOutcome moveFile(const wchar_t* source, const wchar_t* target, bool overwrite);

}  // namespace corvane
