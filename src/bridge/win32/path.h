#pragma once

#include <vector>

#include "bridge/win32/text.h"

namespace corvane {

// What has to be known of a path before it is handed to the system.

/// Whether there is a file or directory at `path`; the thread's last error says why not.
/// Win32: GetFileAttributesA/W.
bool pathExists(const WString& path);

/// Whether `path` is a drive and nothing else: `X:`, also behind the prefix of a device (`\\.\X:`,
/// `\\?\X:`), or a volume that has such a name only (`\\?\Volume{...}`). Null is none.
///
/// To Windows and to Java `X:` is the current directory of that drive. What appends a separator to
/// it, as everything does that looks into a directory, has the root instead: what deletes or makes
/// something refuses such a path as it does the empty one (ERROR_PATH_NOT_FOUND). `X:\` is the root
/// and means it.
bool isDriveAlone(const wchar_t* path) noexcept;

/// The names between the separators, which are backslashes and slashes.
std::vector<WString> componentsOf(const WString& path);

/// The path without the components of dots and blanks alone. These name nothing: Windows takes them
/// for the folder that they stand in (and Windows 9x three dots for one above it). Separators stay
/// as they are given; where there are no others, none is left either.
WString namedPath(const WString& path);

/// Whether a component of the path is "..", with or without blanks around it.
bool leadsUpwards(const WString& path);

}  // namespace corvane
