#include "desktop/folder_chain.h"

#include <vector>

#include "bridge/win32/ansi_or_wide.h"
#include "bridge/win32/last_error.h"
#include "bridge/win32/path.h"
#include "bridge/win32/win32_failure.h"

namespace corvane {

namespace {

constexpr const wchar_t* kSeparators = L"\\/";

void removeFolder(const WString& path) {
  if (ansiOrWide(RemoveDirectoryA, RemoveDirectoryW, path.c_str()) == FALSE) {
    throwUnlessZero(GetLastError());
  }
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

  /// One that is there already is fine, and nobody's to remove.
  void create(const WString& path) {
    paths_.emplace_back(path);
    if (paths_.back().create()) {
      return;
    }
    const DWORD error = GetLastError();
    paths_.pop_back();
    if (error != ERROR_FILE_EXISTS && error != ERROR_ALREADY_EXISTS) {
      throwUnlessZero(error);
    }
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

void createFolderChain(const Place& place) {
  if (!place.folder().empty() && !pathExists(place.folder())) {
    throw Win32Failure(ERROR_FILE_NOT_FOUND);
  }
  CreatedFolders created;
  WString path = place.folder();
  for (const WString& component : componentsOf(place.subfolder())) {
    appendPathSeparator(path);
    path += component;
    created.create(path);
  }
  created.keep();
}

void removeFolderChain(const Place& place) {
  if (!pathExists(place.path())) {
    throw Win32Failure(ERROR_FILE_NOT_FOUND);
  }
  // Separators at the end and in a row name no folder of their own, and those at the head would
  // name the folder above.
  const WString& subfolder = place.subfolder();
  const WString::size_type head = place.path().size() - subfolder.size();
  for (size_t last = subfolder.find_last_not_of(kSeparators); last != WString::npos;) {
    removeFolder(place.path().substr(0, head + last + 1));
    const size_t separator = subfolder.find_last_of(kSeparators, last);
    last =
        separator == WString::npos ? separator : subfolder.find_last_not_of(kSeparators, separator);
  }
}

}  // namespace corvane
