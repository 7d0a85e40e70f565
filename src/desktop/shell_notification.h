#pragma once

#include <windows.h>

#include <shlobj.h>

#include "bridge/win32/ansi_or_wide.h"

namespace corvane {

/// Tells the shell what became of a file or folder: SHCNE_CREATE, SHCNE_DELETE, SHCNE_MKDIR or
/// SHCNE_RMDIR. Win32: SHChangeNotify, with the ANSI path, which every Windows takes.
inline void notifyShell(LONG event, const WString& path) {
  const AnsiText ansi(path.c_str());
  SHChangeNotify(event, SHCNF_PATHA, static_cast<const char*>(ansi), nullptr);
}

}  // namespace corvane
