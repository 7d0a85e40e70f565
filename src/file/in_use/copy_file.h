#pragma once

#include "file/in_use/file_outcome.h"

namespace corvane {

/// Copies a file, also onto a target that is in use.
///
/// On the NT family a target in use is renamed to target + ".delete_on_reboot" and the copy takes
/// its place; where it cannot be renamed, the copy waits as target + ".use_on_reboot" and replaces
/// it at the next start. On Windows 9x the copy always waits so, by a line in WinInit.Ini. A
/// read-only target is made writeable first; one that is a drive and nothing else (see
/// isDriveAlone) is refused with ERROR_PATH_NOT_FOUND. Results are kDone and kAtReboot only. Win32:
/// CopyFileA/W, MoveFileExW.
FileOutcome copyFile(const wchar_t* source, const wchar_t* target, bool overwrite);

}  // namespace corvane
