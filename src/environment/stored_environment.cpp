#include "environment/stored_environment.h"

#include <windows.h>

namespace corvane {

namespace {

constexpr UINT kTimeOutMilliseconds = 3000;

/// ANSI on every Windows: what is told is the name of a key, the same in both families.
void tellEveryWindow() {
  DWORD_PTR answer = 0;
  SendMessageTimeoutA(HWND_BROADCAST,
                      WM_SETTINGCHANGE,
                      0,
                      reinterpret_cast<LPARAM>("Environment"),
                      SMTO_ABORTIFHUNG,
                      kTimeOutMilliseconds,
                      &answer);
}

}  // namespace

// On the NT family each value is made expandable, whatever it holds: the path of programs refers to
// other variables, and would cease to if it were written back as a plain text.

StoredEnvironment StoredEnvironment::ofMachine() noexcept {
  return {RegistryRoot::kLocalMachine,
          L"SYSTEM\\CurrentControlSet\\Control\\Session Manager\\Environment",
          true};
}

StoredEnvironment StoredEnvironment::ofUser() noexcept {
  return {RegistryRoot::kCurrentUser, L"Environment", true};
}

StoredEnvironment StoredEnvironment::ofWindowsME() noexcept {
  // Without the blank that the NT family has in it: that is the key which Windows ME reads.
  return {RegistryRoot::kLocalMachine,
          L"SYSTEM\\CurrentControlSet\\Control\\SessionManager\\Environment",
          false};
}

std::optional<WString> StoredEnvironment::get(const wchar_t* name) const {
  const RegistryKey registry;
  return registry.valueExists(root_, path_, name)
             ? std::optional(registry.getStringValue(root_, path_, name, false))
             : std::nullopt;
}

void StoredEnvironment::set(const wchar_t* name, const wchar_t* value) const {
  const RegistryKey registry;
  if (value != nullptr) {
    registry.setStringValue(root_, path_, name, expandable_, value);
  } else {
    registry.deleteValue(root_, path_, name, false);
  }
  tellEveryWindow();
}

}  // namespace corvane
