#pragma once

#include "bridge/win32/text.h"

namespace corvane {

/// The path with the 8.3 name of each of its components that has one. Throws Win32Failure; the path
/// must be there. Win32: GetShortPathNameA/W.
WString shortPath(const wchar_t* path);

}  // namespace corvane
