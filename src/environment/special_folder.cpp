#include "environment/special_folder.h"

#include <windows.h>

#include <mbstring.h>
#include <shlobj.h>

#include <utility>

#include "bridge/win32/ansi_or_wide.h"
#include "bridge/win32/com_pointer.h"

namespace corvane {

namespace {

/// The first and last numbers of the folders that are never removed.
constexpr std::pair<int, int> kSpecialFolders[] = {{0, 11}, {16, 27}, {29, 34}};

/// An item list, which belongs to the shell's allocator.
class ItemList {
 public:
  explicit ItemList(LPITEMIDLIST list) noexcept : list_(list) {}
  ItemList(const ItemList&) = delete;
  ItemList& operator=(const ItemList&) = delete;
  ~ItemList() {
    IMalloc* allocator = nullptr;
    if (SUCCEEDED(SHGetMalloc(&allocator))) {
      const ComPointer<IMalloc> owner(allocator);
      owner->Free(list_);
    }
  }

  LPITEMIDLIST get() const noexcept { return list_; }

 private:
  LPITEMIDLIST list_;
};

/// Character by character: the second byte of a two-byte one can look like a letter, and its case
/// counts.
bool equalsWithoutCase(const char* one, const char* other) noexcept {
  return _mbsicmp(reinterpret_cast<const unsigned char*>(one),
                  reinterpret_cast<const unsigned char*>(other)) == 0;
}

}  // namespace

SpecialFolder findSpecialFolder(int csidl) {
  LPITEMIDLIST location = nullptr;
  const HRESULT result = SHGetSpecialFolderLocation(nullptr, csidl, &location);
  if (FAILED(result)) {
    return {FolderLookUp::kNoLocation, result, {}};
  }
  const ItemList list(location);
  char path[MAX_PATH] = {};
  if (SHGetPathFromIDListA(list.get(), path) == FALSE) {
    return {FolderLookUp::kNoPath, 0, {}};
  }
  return {FolderLookUp::kFound, 0, boundedTextFromAnsi(path, MAX_PATH)};
}

bool isSpecialFolder(const WString& path) {
  const AnsiText ansi(path.c_str());
  for (const auto& [first, last] : kSpecialFolders) {
    for (int csidl = first; csidl <= last; ++csidl) {
      char folder[MAX_PATH] = {};
      if (SHGetSpecialFolderPathA(nullptr, folder, csidl, FALSE) != FALSE &&
          equalsWithoutCase(folder, ansi)) {
        return true;
      }
    }
  }
  return false;
}

}  // namespace corvane
