#include "file/standard_directories.h"

#include <windows.h>

#include <shlobj.h>

#include "bridge/ansi_or_wide.h"
#include "bridge/path.h"
#include "bridge/win32_failure.h"
#include "environment/special_folder.h"
#include "registry/known_keys.h"
#include "registry/registry_key.h"

namespace {

constexpr uint32_t kNoLocation = 3;
constexpr uint32_t kNoPath = 5;

/// A directory that the system puts into a buffer whose size it tells first. `fill(buffer, size)`
/// asks for either. When there is no size, that is `error`, and the text is empty.
template <class Fill>
WString directoryFrom(bool ansi, DWORD& error, const Fill& fill) {
  const UINT size = fill(TextBuffer(nullptr), 0U);
  if (size == 0) {
    error = GetLastError();
    return {};
  }
  ByteBuffer buffer;
  buffer.allocate(size, ansi ? sizeof(char) : sizeof(wchar_t));
  fill(TextBuffer(buffer.data()), size);
  // What does not fit any more is cut: without a terminator within, the last character gives way to
  // one.
  return ansi ? boundedTextFromAnsi(buffer.data<char>(), size - 1)
              : boundedText(buffer.data<wchar_t>(), size - 1);
}

WString currentVersionValue(const wchar_t* name) {
  return RegistryKey().getStringValue(kLocalMachine, kCurrentVersion, name, false);
}

/// Whether a file can be made in the directory, and deleted again.
bool takesFiles(const WString& directory) {
  char name[MAX_PATH] = {};
  return GetTempFileNameA(ansiArgument(directory.c_str()), "qvx", 0, name) != 0 &&
         DeleteFileA(name) != FALSE;
}

}  // namespace

WString temporaryDirectory() {
  const bool ansi = isWindows9x();
  DWORD error = ERROR_SUCCESS;
  WString directory = directoryFrom(ansi, error, [&](TextBuffer buffer, UINT size) {
    return ansiOrWide(ansi, GetTempPathA, GetTempPathW, DWORD{size}, buffer);
  });
  throwUnlessZero(error);
  if (!pathExists(directory)) {
    throwLastError();
  }
  return directory;
}

WString windowsDirectory() {
  const bool ansi = isWindows9x();
  DWORD error = ERROR_SUCCESS;
  WString directory = directoryFrom(ansi, error, [&](TextBuffer buffer, UINT size) {
    return ansiOrWide(ansi, GetWindowsDirectoryA, GetWindowsDirectoryW, buffer, size);
  });
  throwUnlessZero(error);
  return directory;
}

WString systemDirectory() {
  const bool ansi = isWindows9x();
  DWORD error = ERROR_SUCCESS;
  WString directory = directoryFrom(ansi, error, [&](TextBuffer buffer, UINT size) {
    return ansiOrWide(ansi, GetSystemDirectoryA, GetSystemDirectoryW, buffer, size);
  });
  return pathExists(directory) ? directory : WString();
}

WString programFilesDirectory() {
  try {
    return currentVersionValue(L"ProgramFilesDir");
  } catch (const RegistryException& failure) {
    throwUnlessZero(failure.code() & 0xFFFFU);
    return {};
  }
}

WString commonFilesDirectory() {
  try {
    return currentVersionValue(L"CommonFilesDir");
  } catch (const Win32Failure& failure) {
    if (static_cast<int32_t>(failure.code()) < 0) {
      throw;
    }
    return {};
  }
}

void productDataDirectory(WString& directory) {
  directory = commonFilesDirectory();
  if (isWindows9x() || takesFiles(directory)) {
    return;
  }
  const SpecialFolder applicationData = findSpecialFolder(CSIDL_APPDATA);
  if (applicationData.lookUp != FolderLookUp::kFound) {
    throw Win32Failure(applicationData.lookUp == FolderLookUp::kNoLocation ? kNoLocation : kNoPath);
  }
  directory = applicationData.path;
}
