#pragma once

#include <vector>

#include "bridge/win32/text.h"

namespace corvane {

// What has to be known of a path before it is handed to the system.

/// Whether there is a file or directory at `path`; the thread's last error says why not.
/// Win32: GetFileAttributesA/W.
bool pathExists(const WString& path);

/// The text as the functions of the family read it. On Windows 9x the code page makes separators,
/// colons and dots of other characters, too: what is decided by a path is decided by this form.
WString asSystemReads(const WString& text);

/// Whether `path` is a drive and nothing else: `X:`, also behind the prefix of a device (`\\.\X:`,
/// `\\?\X:`), or a volume behind one (`\\?\Volume{...}`). Null is none.
///
/// To Windows and to Java `X:` is the current directory of that drive. What appends a separator to
/// it, as everything does that looks into a directory, has the root instead: what deletes or makes
/// something refuses such a path as it does the empty one (ERROR_PATH_NOT_FOUND). `X:\` is the root
/// and means it.
bool isDriveAlone(const wchar_t* path);

/// The names between the separators, which are backslashes and slashes.
std::vector<WString> componentsOf(const WString& path);

/// The path without its components ".", which are the folder that they stand in; with any other
/// component of dots and blanks alone it names nothing, for systems differ in what they make of
/// these, and is empty. Separators stay as they are given; alone they name nothing either.
WString namedPath(const WString& path);

/// Whether a component of the path is "..", with or without blanks around it.
bool leadsUpwards(const WString& path);

}  // namespace corvane
