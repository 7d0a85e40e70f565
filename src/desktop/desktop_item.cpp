#include "desktop/desktop_item.h"

#include <objbase.h>
#include <shlobj.h>

#include "bridge/win32/ansi_or_wide.h"
#include "bridge/win32/path.h"
#include "bridge/win32/win32_failure.h"
#include "desktop/folder_chain.h"
#include "desktop/place.h"
#include "desktop/shell_notification.h"
#include "environment/com_startup.h"
#include "environment/special_folder.h"

namespace corvane {

namespace {

/// What a shortcut may be called; the later two are found on Windows 9x only.
constexpr const wchar_t* kExtensions[] = {L".lnk", L".pif", L".url"};

void createFolders(const Place& place) {
  createFolderChain(place);
  notifyShell(SHCNE_MKDIR, place.path());
}

/// Whether a folder may stay for this reason: it still holds something, or this is Windows 9x,
/// where any reason will do. Not when the code page lost its name: then it was not even tried.
bool mayStay(uint32_t reason) {
  return reason == ERROR_DIR_NOT_EMPTY || (reason != ERROR_NO_UNICODE_TRANSLATION && isWindows9x());
}

/// The shell is told of a folder that was missing already, too.
void removeFolders(const Place& place) {
  try {
    removeFolderChain(place);
  } catch (const Win32Failure& failure) {
    if (failure.code() != ERROR_FILE_NOT_FOUND) {
      if (mayStay(failure.code())) {
        return;
      }
      throw;
    }
  }
  notifyShell(SHCNE_RMDIR, place.path());
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
/// that is made then is announced to the shell; of the others it hears by their folder. The result
/// is not thrown, for a success that is not S_OK is announced, too.
HRESULT saveOnThisThread(const WString& file, const Shortcut& link) {
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

/// Deletes the first of the files that is there. The shell is told of the last one looked for.
void deleteShortcut(const Place& place, const WString& name) {
  WString candidate;
  for (const wchar_t* extension : kExtensions) {
    candidate = place.item(name, extension);
    if (pathExists(candidate)) {
      throwUnless(ansiOrWide(DeleteFileA, DeleteFileW, candidate.c_str()) != FALSE);
      break;
    }
    if (!isWindows9x()) {
      break;
    }
  }
  notifyShell(SHCNE_DELETE, candidate);
}

/// A path as the shell spells it: with single backslashes, but at its head, and without what
/// Windows cuts off its end.
WString asShellSpells(const WString& path) {
  WString spelled;
  for (const wchar_t character : path) {
    const wchar_t unit = character == L'/' ? L'\\' : character;
    if (unit != L'\\' || spelled.size() < 2 || spelled.back() != L'\\') {
      spelled += unit;
    }
  }
  return spelled.substr(0, spelled.find_last_not_of(L"\\. ") + 1);
}

bool isShellsOwn(const Place& place) {
  return isWindowsXPOrLater() && isSpecialFolder(asShellSpells(place.path()));
}

/// What of a subfolder is removed with a folder or a shortcut: nothing but what is below the folder
/// and is named. "." is the folder itself, "sub\\.." may be it, and so may a stream of nothing.
WString belowFolder(const WString& subfolder) {
  const WString read = asSystemReads(subfolder);
  if (leadsUpwards(read) || read.find(L':') != WString::npos) {
    throw Win32Failure(ERROR_BAD_PATHNAME);
  }
  return namedPath(read);
}

/// The folder of a place where something is made or removed. A drive and nothing else would become
/// its root.
WString ownFolder(const WString& folder) {
  WString expanded = expandFolderTokens(folder);
  if (isDriveAlone(expanded.c_str())) {
    throw Win32Failure(ERROR_PATH_NOT_FOUND);
  }
  return expanded;
}

}  // namespace

void createDesktopFolder(const WString& folder, const WString& subfolder) {
  createFolders(Place(ownFolder(folder), subfolder));
}

void removeDesktopFolder(const WString& folder, const WString& subfolder) {
  const WString expanded = ownFolder(folder);
  const WString below = belowFolder(subfolder);
  if (!below.empty()) {
    removeFolders(Place(expanded, below));
  }
}

void createDesktopItem(const WString& folder,
                       const WString& subfolder,
                       const WString& name,
                       const Shortcut& link) {
  if (FAILED(comStartupResult())) {
    throw Win32Failure(static_cast<uint32_t>(comStartupResult()));
  }
  const Place place(ownFolder(folder), subfolder);
  createFolders(place);
  throwUnlessZero(static_cast<uint32_t>(saveOnThisThread(place.item(name), link)));
}

void removeDesktopItem(const WString& folder, const WString& subfolder, const WString& name) {
  const WString expanded = ownFolder(folder);
  const WString below = belowFolder(subfolder);
  // A shortcut that the system refuses to delete without a reason is as good as gone.
  reasonedOnly([&] { deleteShortcut(Place(expanded, subfolder), name); });
  const Place place(expanded, below);
  if (!below.empty() && !isShellsOwn(place)) {
    removeFolders(place);
  }
}

}  // namespace corvane
