#include "registry/registry_tree.h"

#include <winternl.h>

#include <utility>
#include <vector>

#include "bridge/ansi_or_wide.h"
#include "bridge/runtime_function.h"
#include "registry/scoped_registry_key.h"

namespace {

/// A key's name has at most 255 characters, and a terminator.
constexpr DWORD kNameUnits = 256;

template <class Character>
bool namesSubKey(const Character* name) noexcept {
  return name != nullptr && *name != Character{} && *name != Character{'\\'};
}

/// Deletes keys that are open. RegDeleteKey knows them by name alone and follows a link, even one
/// that took a key's place after it was looked at.
class OpenKeyDeletion {
 public:
  explicit operator bool() const noexcept { return deleteKey_ && toWin32Error_; }

  LSTATUS operator()(HKEY key) const noexcept {
    const ULONG error = toWin32Error_(deleteKey_(key));
    // Somebody else has deleted it since it was opened: it is missing.
    return error == ERROR_KEY_DELETED ? ERROR_FILE_NOT_FOUND : static_cast<LSTATUS>(error);
  }

 private:
  using DeleteKey = NTSTATUS(NTAPI*)(HANDLE);  // in no header of the SDK

  RuntimeFunction<DeleteKey> deleteKey_{"ntdll.dll", "NtDeleteKey"};
  RuntimeFunction<decltype(&RtlNtStatusToDosError)> toWin32Error_{"ntdll.dll",
                                                                  "RtlNtStatusToDosError"};
};

/// The open keys from the top of a tree down to where its deletion is. A list and no recursion, so
/// that depth costs no stack.
class OpenKeys {
 public:
  bool empty() const noexcept { return keys_.empty(); }
  HKEY deepest() const noexcept { return keys_.back().get(); }
  void closeDeepest() noexcept { keys_.pop_back(); }

  LSTATUS open(HKEY parent, const wchar_t* name) {
    HKEY key = nullptr;
    const LSTATUS result =
        RegOpenKeyExW(parent, name, REG_OPTION_OPEN_LINK, DELETE | KEY_ENUMERATE_SUB_KEYS, &key);
    if (result == ERROR_SUCCESS) {
      ScopedRegistryKey owned(key);
      keys_.push_back(std::move(owned));
    }
    return result;
  }

  LSTATUS openFirstSubKey() {
    wchar_t child[kNameUnits + 1] = {};  // always terminated
    DWORD length = kNameUnits;
    const LSTATUS result =
        RegEnumKeyExW(deepest(), 0, child, &length, nullptr, nullptr, nullptr, nullptr);
    return result == ERROR_SUCCESS ? open(deepest(), child) : result;
  }

 private:
  std::vector<ScopedRegistryKey> keys_;
};

}  // namespace

LSTATUS deleteRegistryTree(HKEY parent, const wchar_t* name) {
  if (!namesSubKey(name)) {
    return ERROR_BADKEY;
  }
  const OpenKeyDeletion deleteKey;
  if (!deleteKey) {
    return ERROR_PROC_NOT_FOUND;
  }
  OpenKeys keys;
  LSTATUS result = keys.open(parent, name);
  while (result == ERROR_SUCCESS && !keys.empty()) {
    // The first sub-key, over and over: each is gone when its parent's turn comes again.
    result = keys.openFirstSubKey();
    if (result == ERROR_NO_MORE_ITEMS) {
      result = deleteKey(keys.deepest());
      keys.closeDeepest();
    }
  }
  return result;
}

LSTATUS deleteRegistryTree9x(HKEY parent, const wchar_t* name) {
  const AnsiText text(name);  // the code page may make a backslash of another character
  const char* const ansi = text;
  return namesSubKey(ansi) ? RegDeleteKeyA(parent, ansi) : ERROR_BADKEY;
}
