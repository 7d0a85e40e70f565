#pragma once

#include <windows.h>

namespace corvane {

// Both delete the key `name` below `parent` with everything below it, and return the Win32 error.
// A name that is null or empty, or begins with a backslash, is refused with ERROR_BADKEY: it names
// no key below the parent, but the parent itself, or what the system takes for its root.

/// On the NT family, where a key with sub-keys cannot be deleted as it is: deepest first. A
/// registry link is deleted itself, in the tree and at its top, and where it leads nothing is
/// touched. What was deleted before a failure stays deleted.
LSTATUS deleteRegistryTree(HKEY parent, const wchar_t* name);

/// On Windows 9x, which deletes what is below a key by itself.
LSTATUS deleteRegistryTree9x(HKEY parent, const wchar_t* name);

}  // namespace corvane
