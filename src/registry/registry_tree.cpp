#include "registry/registry_tree.h"

#include <winternl.h>

#include <utility>
#include <vector>

#include "bridge/win32/ansi_or_wide.h"
#include "bridge/win32/runtime_function.h"
#include "registry/scoped_registry_key.h"

namespace corvane {

namespace {

/// A key's name has at most 255 characters, and a terminator.
constexpr DWORD kNameUnits = 256;

template <class Character>
bool namesSubKey(const Character* name) noexcept {
  return name != nullptr && *name != Character{} && *name != Character{'\\'};
}

// Of the native interface, in whose terms alone a link can be told and deleted. What is in no
// header of the SDK is declared here.
using DeleteKey = NTSTATUS(NTAPI*)(HANDLE);
using QueryValueKey = NTSTATUS(NTAPI*)(HANDLE, UNICODE_STRING*, ULONG, void*, ULONG, ULONG*);
constexpr ULONG kBasicInformation = 0;
constexpr auto kNoSuchValue = static_cast<NTSTATUS>(0xC0000034);

/// Whether a key is certainly no link: it lacks the value that makes one. Asked through a handle of
/// its own, for which the rights to delete do not suffice; a system that gives none leaves it open,
/// and the key is deleted in the way that is right for both.
bool isNoLink(HKEY key) noexcept {
  const RuntimeFunction<QueryValueKey> queryValueKey("ntdll.dll", "NtQueryValueKey");
  const HANDLE process = GetCurrentProcess();
  ScopedKernelHandle readable;
  if (!queryValueKey ||
      DuplicateHandle(process, key, process, readable.receive(), KEY_QUERY_VALUE, FALSE, 0) ==
          FALSE) {
    return false;
  }
  wchar_t name[] = L"SymbolicLinkValue";
  UNICODE_STRING value = {sizeof(name) - sizeof(wchar_t), sizeof(name), name};
  ULONG size = 0;
  return queryValueKey(readable.get(), &value, kBasicInformation, nullptr, 0UL, &size) ==
         kNoSuchValue;
}

/// Deletes a key that is open, link or not. RegDeleteKey knows keys by name alone: some systems
/// refuse a link to it, others follow it.
LSTATUS deleteOpenKey(HKEY key) noexcept {
  const RuntimeFunction<DeleteKey> deleteKey("ntdll.dll", "NtDeleteKey");
  const auto toWin32Error = RUNTIME_FUNCTION(ntdll, RtlNtStatusToDosError);
  if (!deleteKey || !toWin32Error) {
    return ERROR_PROC_NOT_FOUND;
  }
  const ULONG error = toWin32Error(deleteKey(key));
  // Somebody else has deleted it since it was opened: it is missing.
  return error == ERROR_KEY_DELETED ? ERROR_FILE_NOT_FOUND : static_cast<LSTATUS>(error);
}

/// A key of the tree that is being deleted, open as a link: where one leads, nothing is looked at.
struct Level {
  WString name;
  ScopedRegistryKey key;
  bool hasSubKeys = false;
};

/// The open keys from the top of a tree down to where its deletion is. A list and no recursion, so
/// that depth costs no stack.
class OpenKeys {
 public:
  explicit OpenKeys(HKEY parent) noexcept : parent_(parent) {}

  bool empty() const noexcept { return levels_.empty(); }

  /// A name that holds a NUL reads as a shorter one, or as the key itself.
  LSTATUS open(WString name) {
    if (!namesSubKey(name.c_str())) {
      return ERROR_BADKEY;
    }
    HKEY opened = nullptr;
    const LSTATUS result = RegOpenKeyExW(deepest(),
                                         name.c_str(),
                                         REG_OPTION_OPEN_LINK,
                                         DELETE | KEY_ENUMERATE_SUB_KEYS,
                                         &opened);
    if (result == ERROR_SUCCESS) {
      Level level = {std::move(name), ScopedRegistryKey(opened)};
      levels_.push_back(std::move(level));
    }
    return result;
  }

  LSTATUS openFirstSubKey() {
    wchar_t child[kNameUnits + 1] = {};  // always terminated
    DWORD length = kNameUnits;
    const LSTATUS result =
        RegEnumKeyExW(deepest(), 0, child, &length, nullptr, nullptr, nullptr, nullptr);
    if (result == ERROR_SUCCESS) {
      levels_.back().hasSubKeys = true;
      return open(child);
    }
    return result;
  }

  /// A link has no sub-keys: what had some is none.
  LSTATUS deleteDeepest() {
    Level level = std::move(levels_.back());
    levels_.pop_back();
    if (!level.hasSubKeys && !isNoLink(level.key.get())) {
      return deleteOpenKey(level.key.get());
    }
    level.key.close();
    return RegDeleteKeyW(deepest(), level.name.c_str());
  }

 private:
  HKEY deepest() const noexcept { return levels_.empty() ? parent_ : levels_.back().key.get(); }

  HKEY parent_;
  std::vector<Level> levels_;
};

}  // namespace

LSTATUS deleteRegistryTree(HKEY parent, const wchar_t* name) {
  OpenKeys keys(parent);
  LSTATUS result = keys.open(textOrEmpty(name));
  while (result == ERROR_SUCCESS && !keys.empty()) {
    // The first sub-key, over and over: each is gone when its parent's turn comes again.
    result = keys.openFirstSubKey();
    if (result == ERROR_NO_MORE_ITEMS) {
      result = keys.deleteDeepest();
    }
  }
  return result;
}

LSTATUS deleteRegistryTree9x(HKEY parent, const wchar_t* name) {
  const AnsiText text(name);  // the code page may make a backslash of another character
  const char* const ansi = text;
  return namesSubKey(ansi) ? RegDeleteKeyA(parent, ansi) : ERROR_BADKEY;
}

}  // namespace corvane
