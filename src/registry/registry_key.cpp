#include "registry/registry_key.h"

#include <algorithm>

#include "bridge/win32/ansi_or_wide.h"
#include "registry/registry_result.h"
#include "registry/registry_tree.h"
#include "registry/scoped_registry_key.h"

namespace corvane {

namespace {

/// The rights on the parent of a key that is deleted.
constexpr REGSAM kDeleteSubKey = DELETE | READ_CONTROL | KEY_SET_VALUE | KEY_CREATE_SUB_KEY;

/// Names are enumerated into a buffer of this many elements.
constexpr DWORD kNameElements = 1024;

HKEY predefinedKey(RegistryRoot root) noexcept {
  switch (root) {
    case RegistryRoot::kClassesRoot:
      return HKEY_CLASSES_ROOT;
    case RegistryRoot::kCurrentConfig:
      return HKEY_CURRENT_CONFIG;
    case RegistryRoot::kCurrentUser:
      return HKEY_CURRENT_USER;
    case RegistryRoot::kLocalMachine:
      return HKEY_LOCAL_MACHINE;
    case RegistryRoot::kUsers:
      return HKEY_USERS;
    default:
      return nullptr;
  }
}

/// Collects names for index 0, 1, 2, ... `next(index, buffer)` asks for one: it returns the
/// function's result and sets how many elements of the buffer may hold the name.
template <class Next>
std::vector<WString> enumerateNames(bool ansi, const Next& next) {
  ByteBuffer buffer;
  buffer.allocate(kNameElements, ansi ? sizeof(char) : sizeof(wchar_t));
  std::vector<WString> names;
  for (DWORD index = 0;; ++index) {
    DWORD length = kNameElements;
    const LSTATUS result = next(index, TextBuffer(buffer.data()), length);
    if (result == ERROR_NO_MORE_ITEMS) {
      return names;
    }
    throwUnlessSuccess(result);
    length = std::min(length, kNameElements);
    names.push_back(ansi ? boundedTextFromAnsi(buffer.data<char>(), length)
                         : boundedText(buffer.data<wchar_t>(), length));
  }
}

}  // namespace

RegistryRoot rootFromJava(int root) noexcept {
  return root >= 1 && root <= 5 ? RegistryRoot{root} : RegistryRoot::kNone;
}

LSTATUS RegistryKey::tryOpen(RegistryRoot root,
                             const wchar_t* path,
                             REGSAM access,
                             HKEY& key) const {
  key = predefinedKey(root);
  if (path == nullptr) {
    return ERROR_SUCCESS;
  }
  return ansiOrWide(isWin9x_, RegOpenKeyExA, RegOpenKeyExW, key, path, DWORD{0}, access, &key);
}

HKEY RegistryKey::openKey(RegistryRoot root, const wchar_t* path, REGSAM access) const {
  HKEY key = nullptr;
  throwUnlessSuccess(tryOpen(root, path, access, key));
  return key;
}

bool RegistryKey::keyExists(RegistryRoot root, const wchar_t* path) const {
  HKEY key = nullptr;
  const LSTATUS result = tryOpen(root, path, KEY_QUERY_VALUE, key);
  if (result == ERROR_SUCCESS) {
    ScopedRegistryKey(key).close();
  }
  return foundOrMissing(result);
}

void RegistryKey::createKey(RegistryRoot root,
                            const wchar_t* parentPath,
                            const wchar_t* name) const {
  const ScopedRegistryKey parent(openKey(root, parentPath, KEY_CREATE_SUB_KEY));
  HKEY created = nullptr;
  throwUnlessSuccess(ansiOrWide(isWin9x_,
                                RegCreateKeyExA,
                                RegCreateKeyExW,
                                parent.get(),
                                name,
                                DWORD{0},
                                nullptr,
                                DWORD{REG_OPTION_NON_VOLATILE},
                                REGSAM{KEY_SET_VALUE},
                                nullptr,
                                &created,
                                nullptr));
  ScopedRegistryKey(created).close();
}

void RegistryKey::deleteKey(RegistryRoot root,
                            const wchar_t* parentPath,
                            const wchar_t* name,
                            bool mustExist) const {
  const ScopedRegistryKey parent(openKey(root, parentPath, kDeleteSubKey));
  throwUnlessDeleted(isWindowsNT() ? deleteRegistryTree(parent.get(), name)
                                   : deleteRegistryTree9x(parent.get(), name),
                     mustExist);
}

RegistryKeyInfo RegistryKey::queryInfo(RegistryRoot root, const wchar_t* path) const {
  RegistryKeyInfo info;
  const HKEY key = openKey(root, path, KEY_QUERY_VALUE);  // stays open: see the header
  throwUnlessSuccess(ansiOrWide(isWin9x_,
                                RegQueryInfoKeyA,
                                RegQueryInfoKeyW,
                                key,
                                nullptr,
                                nullptr,
                                nullptr,
                                &info.subKeyCount,
                                &info.maxSubKeyNameLength,
                                nullptr,
                                &info.valueCount,
                                &info.maxValueNameLength,
                                &info.maxValueDataLength,
                                nullptr,
                                nullptr));
  return info;
}

std::vector<WString> RegistryKey::getValueNames(RegistryRoot root, const wchar_t* path) const {
  const HKEY key = openKey(root, path, KEY_QUERY_VALUE);  // stays open: see the header
  return enumerateNames(isWin9x_, [&](DWORD index, TextBuffer name, DWORD& length) {
    DWORD type = 0;
    return ansiOrWide(isWin9x_,
                      RegEnumValueA,
                      RegEnumValueW,
                      key,
                      index,
                      name,
                      &length,
                      nullptr,
                      &type,
                      nullptr,
                      nullptr);
  });
}

std::vector<WString> RegistryKey::getSubKeyNames(RegistryRoot root, const wchar_t* path) const {
  const HKEY key = openKey(root, path, KEY_READ);  // stays open: see the header
  return enumerateNames(isWin9x_, [&](DWORD index, TextBuffer name, DWORD& length) {
    return ansiOrWide(isWin9x_, RegEnumKeyA, RegEnumKeyW, key, index, name, length);
  });
}

}  // namespace corvane
