#pragma once

#include <windows.h>

namespace corvane {

/// What a shortcut holds. Texts may be null.
struct Shortcut {
  const wchar_t* target;
  const wchar_t* arguments;
  const wchar_t* workingDirectory;
  const wchar_t* iconPath;
};

/// Writes a shortcut file through the shell's object for it. Returns the HRESULT:
/// CO_E_NOTINITIALIZED when this thread has not started COM. Texts go through the ANSI code page.
/// COM: IShellLinkA, IPersistFile.
HRESULT saveShellLink(const wchar_t* file, const Shortcut& link);

}  // namespace corvane
