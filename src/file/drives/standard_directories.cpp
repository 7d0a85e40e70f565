#include "file/drives/standard_directories.h"

#include <windows.h>

#include <shlobj.h>

#include "bridge/win32/ansi_or_wide.h"
#include "bridge/win32/path.h"
#include "bridge/win32/win32_failure.h"
#include "environment/special_folder.h"
#include "registry/known_keys.h"
#include "registry/registry_key.h"

namespace corvane {

namespace {

constexpr uint32_t kNoLocation = 3;
constexpr uint32_t kNoPath = 5;

/// A directory that the system puts into a buffer whose size it tells first. `fill(buffer, size)`
/// asks for either. False when there is no size; the thread's last error says why.
template <class Fill>
bool findDirectory(bool ansi, WString& directory, const Fill& fill) {
  const UINT size = fill(TextBuffer(nullptr), 0U);
  if (size == 0) {
    return false;
  }
  ByteBuffer buffer;
  buffer.allocate(size, ansi ? sizeof(char) : sizeof(wchar_t));
  fill(TextBuffer(buffer.data()), size);
  // What does not fit any more is cut: without a terminator within, the last character gives way to
  // one.
  directory = ansi ? boundedTextFromAnsi(buffer.data<char>(), size - 1)
                   : boundedText(buffer.data<wchar_t>(), size - 1);
  return true;
}

WString currentVersionValue(const wchar_t* name) {
  return RegistryKey().getStringValue(RegistryRoot::kLocalMachine, kCurrentVersion, name, false);
}

/// Whether a file can be made in the directory, and deleted again. Of a drive alone it would be the
/// root that is tried.
bool takesFiles(const WString& directory) {
  char name[MAX_PATH] = {};
  return !isDriveAlone(directory.c_str()) &&
         GetTempFileNameA(ansiArgument(directory.c_str()), "qvx", 0, name) != 0 &&
         DeleteFileA(name) != FALSE;
}

}  // namespace

WString temporaryDirectory() {
  const bool ansi = isWindows9x();
  WString directory;
  const bool found = findDirectory(ansi, directory, [&](TextBuffer buffer, UINT size) {
    return ansiOrWide(ansi, GetTempPathA, GetTempPathW, DWORD{size}, buffer);
  });
  if (!found || !pathExists(directory)) {
    throwLastError();
  }
  return directory;
}

WString windowsDirectory() {
  const bool ansi = isWindows9x();
  WString directory;
  const bool found = findDirectory(ansi, directory, [&](TextBuffer buffer, UINT size) {
    return ansiOrWide(ansi, GetWindowsDirectoryA, GetWindowsDirectoryW, buffer, size);
  });
  if (!found) {
    throwLastError();
  }
  return directory;
}

WString systemDirectory() {
  const bool ansi = isWindows9x();
  WString directory;
  const bool found = findDirectory(ansi, directory, [&](TextBuffer buffer, UINT size) {
    return ansiOrWide(ansi, GetSystemDirectoryA, GetSystemDirectoryW, buffer, size);
  });
  return found && pathExists(directory) ? directory : WString();
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
  } catch (const Win32Failure& failure) {  // a text that the code page lost is missing, too
    if (static_cast<int32_t>(failure.code()) < 0) {
      throw;
    }
    return {};
  }
}

void findProductDataDirectory(WString& directory) {
  if (isWindows9x() || takesFiles(directory)) {
    return;
  }
  const SpecialFolder applicationData = findSpecialFolder(CSIDL_APPDATA);
  if (applicationData.lookUp != FolderLookUp::kFound) {
    throw Win32Failure(applicationData.lookUp == FolderLookUp::kNoLocation ? kNoLocation : kNoPath);
  }
  directory = applicationData.path;
}

}  // namespace corvane
