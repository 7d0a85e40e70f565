#pragma once

#include "file/in_use/file_outcome.h"

namespace corvane {

enum class EntryKind { kFile, kDirectory };

/// Deletes a file or an empty directory. A read-only one is made writeable first; one that is in
/// use is deleted at the next start of Windows. A file of which a range is locked stays, and the
/// process's standard error says so. A drive and nothing else (see isDriveAlone) is refused with
/// ERROR_PATH_NOT_FOUND: Windows would write its current directory down for deletion. Win32:
/// DeleteFileA/W, RemoveDirectoryA/W, MoveFileExW.
FileOutcome deleteEntry(const wchar_t* path, EntryKind kind);

}  // namespace corvane
