#include "registry/registry_tree.h"

#include "registry/scoped_registry_key.h"

namespace {

/// A key's name has at most 255 characters, and a terminator.
constexpr DWORD kNameUnits = 256;

/// Deletes the first sub-key, over and over: each round removes the one that it found. Returns
/// ERROR_NO_MORE_ITEMS when none is left, else the error that stopped it.
LSTATUS deleteSubKeys(HKEY key) noexcept {
  wchar_t child[kNameUnits + 1] = {};  // always terminated
  LSTATUS result = ERROR_SUCCESS;
  while (result == ERROR_SUCCESS) {
    DWORD length = kNameUnits;
    result = RegEnumKeyExW(key, 0, child, &length, nullptr, nullptr, nullptr, nullptr);
    if (result == ERROR_SUCCESS) {
      result = deleteRegistryTree(key, child);
    }
  }
  return result;
}

}  // namespace

LSTATUS deleteRegistryTree(HKEY parent, const wchar_t* name) noexcept {
  if (!hasText(name)) {
    return ERROR_BADKEY;
  }
  HKEY opened = nullptr;
  LSTATUS result = RegOpenKeyExW(parent, name, 0, DELETE | KEY_ENUMERATE_SUB_KEYS, &opened);
  if (result != ERROR_SUCCESS) {
    return result;
  }
  ScopedRegistryKey key(opened);
  result = deleteSubKeys(key.get());
  if (result != ERROR_NO_MORE_ITEMS) {
    return result;
  }
  key.close();
  return RegDeleteKeyW(parent, name);
}
