#include "product/uninstaller_entry.h"

#include "bridge/win32/platform.h"
#include "bridge/win32/text.h"
#include "registry/known_keys.h"
#include "registry/registry_key.h"
#include "security/admin_membership.h"

namespace corvane {

namespace {

constexpr const wchar_t* kUninstall = L"Uninstall";

/// The longest key name and display name that old versions of the list show.
constexpr size_t kMaximumLength = 63;

/// Where that cannot be told, the user is none.
bool isAdministrator() {
  try {
    return queryAdminMembership();
  } catch (const Win32Failure&) {
    return false;
  }
}

RegistryRoot entryRoot() {
  return isWindowsNT() && !isAdministrator() ? RegistryRoot::kCurrentUser
                                             : RegistryRoot::kLocalMachine;
}

WString listPath() {
  return WString(kCurrentVersion) + L"\\" + kUninstall;
}

WString entryPath(const WString& keyName) {
  return listPath() + L"\\" + keyName;
}

/// Takes an entry out if it is there. Without a name there is none: the path would be the list
/// itself.
void removeFromList(const RegistryKey& registry, RegistryRoot root, const WString& keyName) {
  if (!keyName.empty() && registry.keyExists(root, entryPath(keyName).c_str())) {
    registry.deleteKey(root, listPath().c_str(), keyName.c_str(), false);
  }
}

}  // namespace

void registerUninstaller(const WString& keyName,
                         const WString& displayName,
                         const wchar_t* uninstallString) {
  if (keyName.empty()) {
    throw Win32Failure(ERROR_INVALID_PARAMETER);
  }
  const RegistryKey registry;
  const RegistryRoot root = entryRoot();
  if (root == RegistryRoot::kCurrentUser && !registry.keyExists(root, listPath().c_str())) {
    registry.createKey(root, kCurrentVersion, kUninstall);
  }
  registry.createKey(root, listPath().c_str(), keyName.substr(0, kMaximumLength).c_str());
  const WString path = entryPath(keyName);
  const WString shown = isWindows2000() ? displayName : displayName.substr(0, kMaximumLength);
  registry.setStringValue(root, path.c_str(), L"DisplayName", false, shown.c_str());
  registry.setStringValue(root, path.c_str(), L"UninstallString", false, uninstallString);
}

void unregisterUninstaller(const WString& keyName, const WString& otherKeyName) {
  const RegistryKey registry;
  const RegistryRoot root = entryRoot();
  removeFromList(registry, root, otherKeyName);
  removeFromList(registry, root, keyName.substr(0, kMaximumLength));
}

}  // namespace corvane
