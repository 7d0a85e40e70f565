#include "desktop/folder_chain.h"

#include <vector>

#include "bridge/win32/ansi_or_wide.h"
#include "bridge/win32/last_error.h"
#include "bridge/win32/path.h"
#include "desktop/folder_tokens.h"

namespace {

constexpr const wchar_t* kSeparators = L"\\/";

DWORD removeFolder(const WString& path) {
  const BOOL removed = ansiOrWide(RemoveDirectoryA, RemoveDirectoryW, path.c_str());
  return removed != FALSE ? ERROR_SUCCESS : GetLastError();
}

/// The folders that one call has made. Unless they are kept they are removed again, the last one
/// first.
class CreatedFolders {
 public:
  CreatedFolders() = default;
  CreatedFolders(const CreatedFolders&) = delete;
  CreatedFolders& operator=(const CreatedFolders&) = delete;
  ~CreatedFolders() {
    const LastErrorKeeper keeper;
    for (; !paths_.empty(); paths_.pop_back()) {
      paths_.back().remove();
    }
  }

  /// 0 or the Win32 error.
  DWORD create(const WString& path) {
    paths_.emplace_back(path);
    if (paths_.back().create()) {
      return ERROR_SUCCESS;
    }
    const DWORD error = GetLastError();
    paths_.pop_back();
    return error;
  }

  void keep() noexcept { paths_.clear(); }

 private:
  /// A path in the form of the family, so that removing needs no memory.
  class Path {
   public:
    explicit Path(const WString& path) : ansi_(isWindows9x()), wide_(path) {
      if (ansi_) {
        throwUnlessConverted(wideToAnsi(path.c_str(), ansiText_));
      }
    }
    bool create() const noexcept {
      return (ansi_ ? CreateDirectoryA(ansiText_.data<char>(), nullptr)
                    : CreateDirectoryW(wide_.c_str(), nullptr)) != FALSE;
    }
    void remove() const noexcept {
      if (ansi_) {
        RemoveDirectoryA(ansiText_.data<char>());
      } else {
        RemoveDirectoryW(wide_.c_str());
      }
    }

   private:
    bool ansi_;
    WString wide_;
    ByteBuffer ansiText_;
  };

  std::vector<Path> paths_;
};

}  // namespace

DWORD createFolderChain(const WString& folder, const WString& subfolder) {
  if (!folder.empty() && !pathExists(folder)) {
    return ERROR_FILE_NOT_FOUND;
  }
  CreatedFolders created;
  WString path = folder;
  for (const WString& component : componentsOf(subfolder)) {
    path = folderPath(path, component);
    const DWORD error = created.create(path);
    if (error != ERROR_SUCCESS && error != ERROR_FILE_EXISTS && error != ERROR_ALREADY_EXISTS) {
      return error;
    }
  }
  created.keep();
  return ERROR_SUCCESS;
}

DWORD removeFolderChain(const WString& folder, const WString& subfolder) {
  if (!pathExists(folderPath(folder, subfolder))) {
    return ERROR_FILE_NOT_FOUND;
  }
  // Separators at the end and in a row name no folder of their own, and those at the head would
  // name `folder` itself.
  for (size_t last = subfolder.find_last_not_of(kSeparators); last != WString::npos;) {
    const DWORD error = removeFolder(folderPath(folder, subfolder.substr(0, last + 1)));
    if (error != ERROR_SUCCESS) {
      return error;
    }
    const size_t separator = subfolder.find_last_of(kSeparators, last);
    last =
        separator == WString::npos ? separator : subfolder.find_last_not_of(kSeparators, separator);
  }
  return ERROR_SUCCESS;
}
