#include "desktop/desktop_item.h"

#include <objbase.h>
#include <shlobj.h>

#include "bridge/ansi_or_wide.h"
#include "bridge/path.h"
#include "desktop/folder_chain.h"
#include "desktop/folder_tokens.h"
#include "desktop/shell_notification.h"
#include "environment/com_startup.h"
#include "environment/special_folder.h"

namespace {

/// What a shortcut may be called; the later two are found on Windows 9x only.
constexpr const wchar_t* kExtensions[] = {L".lnk", L".pif", L".url"};

DWORD createFolders(const WString& folder, const WString& subfolder) {
  const DWORD error = createFolderChain(folder, subfolder);
  if (error == ERROR_SUCCESS) {
    notifyShell(SHCNE_MKDIR, folderPath(folder, subfolder));
  }
  return error;
}

DWORD removeFolders(const WString& folder, const WString& subfolder) {
  DWORD error = removeFolderChain(folder, subfolder);
  if (error == ERROR_SUCCESS || error == ERROR_FILE_NOT_FOUND) {
    notifyShell(SHCNE_RMDIR, folderPath(folder, subfolder));
    error = ERROR_SUCCESS;
  }
  return isWindows9x() || error == ERROR_DIR_NOT_EMPTY ? ERROR_SUCCESS : error;
}

/// COM, started on this thread for the length of a scope.
class ComThread {
 public:
  ComThread() = default;
  ComThread(const ComThread&) = delete;
  ComThread& operator=(const ComThread&) = delete;
  ~ComThread() { CoUninitialize(); }
};

/// Makes the shortcut; on a thread that has not started COM, starts it for that. Only a shortcut
/// that is made then is announced to the shell; otherwise the word of its folder has to do.
HRESULT saveOnThisThread(const WString& file, const ShellLink& link) {
  HRESULT result = saveShellLink(file.c_str(), link);
  if (result != CO_E_NOTINITIALIZED || FAILED(CoInitialize(nullptr))) {
    return result;
  }
  const ComThread thread;
  result = saveShellLink(file.c_str(), link);
  if (SUCCEEDED(result)) {
    notifyShell(SHCNE_CREATE, file);
  }
  return result;
}

/// Deletes the first of the files that is there.
DWORD deleteShortcut(const WString& base) {
  WString candidate;
  for (const wchar_t* extension : kExtensions) {
    candidate = base + extension;
    if (pathExists(candidate)) {
      if (ansiOrWide(DeleteFileA, DeleteFileW, candidate.c_str()) == FALSE) {
        return GetLastError();
      }
      break;
    }
    if (!isWindows9x()) {
      break;
    }
  }
  notifyShell(SHCNE_DELETE, candidate);
  return ERROR_SUCCESS;
}

/// A path as the shell spells it: without separators at its end.
WString withoutEnd(const WString& path) {
  return path.substr(0, path.find_last_not_of(L"\\/") + 1);
}

}  // namespace

DWORD createDesktopFolder(WString folder, const WString& subfolder) {
  const DWORD error = expandFolderTokens(folder);
  return error != ERROR_SUCCESS ? error : createFolders(folder, subfolder);
}

DWORD removeDesktopFolder(WString folder, const WString& subfolder) {
  const DWORD error = expandFolderTokens(folder);
  if (error != ERROR_SUCCESS || !namesFolder(subfolder)) {
    return error;
  }
  return removeFolders(folder, subfolder);
}

DWORD createDesktopItem(WString folder,
                        const WString& subfolder,
                        const WString& name,
                        const ShellLink& link) {
  if (FAILED(comStartupResult())) {
    return static_cast<DWORD>(comStartupResult());
  }
  DWORD error = expandFolderTokens(folder);
  if (error == ERROR_SUCCESS) {
    error = createFolders(folder, subfolder);
  }
  if (error != ERROR_SUCCESS) {
    return error;
  }
  return static_cast<DWORD>(saveOnThisThread(itemPath(folder, subfolder, name), link));
}

DWORD removeDesktopItem(WString folder, const WString& subfolder, const WString& name) {
  DWORD error = expandFolderTokens(folder);
  if (error == ERROR_SUCCESS) {
    error = deleteShortcut(itemPath(folder, subfolder, name, L""));
  }
  if (error != ERROR_SUCCESS || !namesFolder(subfolder)) {
    return error;
  }
  const bool keep =
      isWindowsXPOrLater() && isSpecialFolder(withoutEnd(folderPath(folder, subfolder)));
  return keep ? ERROR_SUCCESS : removeFolders(folder, subfolder);
}
