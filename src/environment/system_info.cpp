#include "environment/system_info.h"

#include <windows.h>

#include <iterator>

#include "bridge/win32/ansi_or_wide.h"
#include "registry/known_keys.h"
#include "registry/registry_key.h"

namespace corvane {

namespace {

constexpr uint32_t kNoSuchDrive = 0xFFFFFFFF;

/// The system's version record, asked for in the size of the short form.
template <class Version>
Version versionFrom(BOOL(WINAPI* getVersion)(Version*)) {
  Version version = {};
  version.dwOSVersionInfoSize = sizeof(version);
  if (getVersion(&version) == FALSE) {
    throwLastError();
  }
  return version;
}

}  // namespace

WString serviceLevel() {
  if (isWindows9x()) {
    const auto version = versionFrom<OSVERSIONINFOA>(GetVersionExA);
    return boundedTextFromAnsi(version.szCSDVersion, std::size(version.szCSDVersion));
  }
  const auto version = versionFrom<OSVERSIONINFOW>(GetVersionExW);
  return boundedText(version.szCSDVersion, std::size(version.szCSDVersion));
}

WString bootDirectory() {
  WString directory = RegistryKey().getStringValue(RegistryRoot::kLocalMachine,
                                                   (WString(kCurrentVersion) + L"\\Setup").c_str(),
                                                   L"BootDir",
                                                   false);
  const UINT type = ansiOrWide(GetDriveTypeA, GetDriveTypeW, directory.c_str());
  if (type == DRIVE_UNKNOWN || type == DRIVE_NO_ROOT_DIR) {
    throw Win32Failure(kNoSuchDrive);
  }
  return directory;
}

}  // namespace corvane
