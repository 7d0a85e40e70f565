#include "bridge/win32/platform.h"

#include <windows.h>

#include <optional>

namespace corvane {

namespace {

/// The version record, or nothing when the system refuses both sizes of it: Windows 9x, and NT 4
/// before its last service packs, know only the short one.
std::optional<OSVERSIONINFOEXA> systemVersion() {
  OSVERSIONINFOEXA version = {};
  auto* record = reinterpret_cast<OSVERSIONINFOA*>(&version);
  version.dwOSVersionInfoSize = sizeof(OSVERSIONINFOEXA);
  if (GetVersionExA(record) == FALSE) {
    version.dwOSVersionInfoSize = sizeof(OSVERSIONINFOA);
    if (GetVersionExA(record) == FALSE) {
      return std::nullopt;
    }
  }
  return version;
}

static_assert(sizeof(OSVERSIONINFOEXA) == 156 && sizeof(OSVERSIONINFOA) == 148);

}  // namespace

bool isWindows9x() {
  const auto version = systemVersion();
  return version && version->dwPlatformId == VER_PLATFORM_WIN32_WINDOWS;
}

bool isWindowsNT() {
  const auto version = systemVersion();
  return version && version->dwPlatformId == VER_PLATFORM_WIN32_NT;
}

bool isWindowsME() {
  const auto version = systemVersion();
  return version && version->dwPlatformId == VER_PLATFORM_WIN32_WINDOWS &&
         version->dwMajorVersion == 4 && version->dwMinorVersion == 90;
}

bool isWindows2000() {
  const auto version = systemVersion();
  return version && version->dwPlatformId == VER_PLATFORM_WIN32_NT &&
         version->dwMajorVersion == 5 && version->dwMinorVersion == 0;
}

bool isWindowsXPOrLater() {
  const auto version = systemVersion();
  return version && version->dwPlatformId == VER_PLATFORM_WIN32_NT &&
         (version->dwMajorVersion > 5 ||
          (version->dwMajorVersion == 5 && version->dwMinorVersion >= 1));
}

}  // namespace corvane
