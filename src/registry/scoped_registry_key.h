#pragma once

#include <windows.h>

#include "bridge/win32/scoped_handle.h"

namespace corvane {

struct RegistryKeyTraits {
  using Handle = HKEY;
  /// Not null: also the predefined roots, and the null key of an unknown root number, are given
  /// back with RegCloseKey, which takes both without harm.
  static Handle none() noexcept { return static_cast<HKEY>(INVALID_HANDLE_VALUE); }
  static void close(Handle key) noexcept { RegCloseKey(key); }
};

/// An open registry key; closed with RegCloseKey.
using ScopedRegistryKey = ScopedHandle<RegistryKeyTraits>;

}  // namespace corvane
