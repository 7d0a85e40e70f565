#pragma once

#include "desktop/place.h"

namespace corvane {

/// The folders of a path "a\b\c" below another folder, made and removed together. Separators are
/// backslashes and slashes; a path of nothing else names no folder. Both throw Win32Failure.

/// Makes folder\a, folder\a\b and so on; one that is there already is fine. `folder` itself must be
/// there unless it is empty (ERROR_FILE_NOT_FOUND). After a failure, what was made here is removed
/// again. Win32: CreateDirectoryA/W.
void createFolderChain(const Place& place);

/// Removes folder\a\b\c, then folder\a\b and so on up to folder\a; the first failure ends it.
/// `folder` itself always stays; `subfolder` leads nowhere but below it, and each of its components
/// names something (see namedPath). ERROR_FILE_NOT_FOUND when the deepest is missing. Win32:
/// RemoveDirectoryA/W.
void removeFolderChain(const Place& place);

}  // namespace corvane
