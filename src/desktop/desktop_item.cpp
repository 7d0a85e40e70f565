#include "desktop/desktop_item.h"

#include <objbase.h>
#include <shlobj.h>

#include "bridge/win32/ansi_or_wide.h"
#include "bridge/win32/path.h"
#include "bridge/win32/win32_failure.h"
#include "desktop/folder_chain.h"
#include "desktop/folder_tokens.h"
#include "desktop/shell_notification.h"
#include "environment/com_startup.h"
#include "environment/special_folder.h"

namespace {

/// What a shortcut may be called; the later two are found on Windows 9x only.
constexpr const wchar_t* kExtensions[] = {L".lnk", L".pif", L".url"};

DWORD createFolders(const WString& folder, const WString& subfolder) {
  const WString path = folderPath(folder, subfolder);
  const DWORD error = createFolderChain(folder, subfolder);
  if (error == ERROR_SUCCESS) {
    notifyShell(SHCNE_MKDIR, path);
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
/// that is made then is announced to the shell, on purpose.
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

/// A path as the shell spells it: without what Windows cuts off its end.
WString withoutEnd(const WString& path) {
  return path.substr(0, path.find_last_not_of(L"\\/. ") + 1);
}

/// What of a subfolder is removed with a folder or a shortcut: nothing but what is below the folder
/// and is named. "." is the folder itself, and "sub\\.." may be it.
WString belowFolder(const WString& subfolder) {
  if (leadsUpwards(subfolder)) {
    throw Win32Failure(ERROR_BAD_PATHNAME);
  }
  return namedPath(subfolder);
}

}  // namespace

DWORD createDesktopFolder(WString folder, const WString& subfolder) {
  const DWORD error = expandFolderTokens(folder);
  return error != ERROR_SUCCESS ? error : createFolders(folder, subfolder);
}

DWORD removeDesktopFolder(WString folder, const WString& subfolder) {
  const WString below = belowFolder(subfolder);
  const DWORD error = expandFolderTokens(folder);
  return error != ERROR_SUCCESS || below.empty() ? error : removeFolders(folder, below);
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
  const WString below = belowFolder(subfolder);
  DWORD error = expandFolderTokens(folder);
  if (error == ERROR_SUCCESS) {
    error = deleteShortcut(itemPath(folder, below, name, L""));
  }
  if (error != ERROR_SUCCESS || below.empty()) {
    return error;
  }
  const bool keep = isWindowsXPOrLater() && isSpecialFolder(withoutEnd(folderPath(folder, below)));
  return keep ? ERROR_SUCCESS : removeFolders(folder, below);
}
