#pragma once

#include "bridge/win32/text.h"

namespace corvane {

/// The shell's folders, each known by a number (CSIDL). Their paths come from the ANSI functions,
/// which every Windows has. Win32: SHGetSpecialFolderLocation, SHGetPathFromIDListA, SHGetMalloc.

enum class FolderLookUp {
  kFound,
  kNoLocation,  // `reason` is the HRESULT
  kNoPath,
};

struct SpecialFolder {
  FolderLookUp lookUp;
  long reason = 0;
  WString path;
};

SpecialFolder findSpecialFolder(int csidl);

/// Whether a path is one of the shell's own folders, whatever the case of its letters.
/// Win32: SHGetSpecialFolderPathA.
bool isSpecialFolder(const WString& path);

}  // namespace corvane
