#pragma once

#include <windows.h>

#include "bridge/win32/ansi_or_wide.h"

/// Whether there is a file or directory at `path`; the thread's last error says why not.
/// Win32: GetFileAttributesA/W.
inline bool pathExists(const WString& path) {
  return ansiOrWide(GetFileAttributesA, GetFileAttributesW, path.c_str()) !=
         INVALID_FILE_ATTRIBUTES;
}
