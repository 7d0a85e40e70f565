#include "bridge/win32/system_library.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace corvane {

namespace {

/// The longest path that the loader of every Windows takes, with its NUL.
constexpr size_t kPathCapacity = MAX_PATH;

/// The full path of a file in the system's directory, in memory of its own: to look up a function
/// must not fail for want of memory.
template <class Character>
class SystemPath {
 public:
  /// `getDirectory` is GetSystemDirectory of the family. When it fails, or the path is too long,
  /// the path is false and the thread's last error says why.
  SystemPath(UINT(WINAPI* getDirectory)(Character*, UINT),
             std::basic_string_view<Character> name) noexcept {
    const size_t length = getDirectory(path_, UINT{kPathCapacity});
    if (length == 0) {
      return;
    }
    if (length + 1 + name.size() >= kPathCapacity) {
      SetLastError(ERROR_FILENAME_EXCED_RANGE);
      return;
    }
    path_[length] = '\\';
    *std::copy(name.begin(), name.end(), path_ + length + 1) = 0;
    found_ = true;
  }

  explicit operator bool() const noexcept { return found_; }
  const Character* get() const noexcept { return path_; }

 private:
  Character path_[kPathCapacity] = {};
  bool found_ = false;
};

}  // namespace

HMODULE loadSystemLibrary(const wchar_t* name) noexcept {
  const SystemPath<wchar_t> path(GetSystemDirectoryW, name);
  return path ? LoadLibraryW(path.get()) : nullptr;
}

HMODULE loadSystemLibrary(const char* name, DWORD flags) noexcept {
  const SystemPath<char> path(GetSystemDirectoryA, name);
  return path ? LoadLibraryExA(path.get(), nullptr, flags) : nullptr;
}

HMODULE KeptSystemLibrary::get() noexcept {
  const SystemPath<wchar_t> path(GetSystemDirectoryW, name_);
  if (!path) {
    return nullptr;
  }
  const HMODULE loaded = GetModuleHandleW(path.get());
  if (loaded != nullptr && loaded == own_) {
    return loaded;
  }
  return own_ = LoadLibraryW(path.get());
}

}  // namespace corvane
