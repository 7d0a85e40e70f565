#pragma once

#include <optional>

#include "bridge/win32/text.h"
#include "registry/registry_key.h"

namespace corvane {

/// A set of environment variables that outlives processes: a key of the registry, from which the
/// system makes the environment of those that are started. Both operations throw
/// RegistryException.
class StoredEnvironment {
 public:
  /// The NT family's, of the machine or of the user.
  static StoredEnvironment ofMachine() noexcept;
  static StoredEnvironment ofUser() noexcept;
  /// That of Windows ME.
  static StoredEnvironment ofWindowsME() noexcept;

  /// The value as it is stored: references to other variables stay. Nothing when there is none.
  std::optional<WString> get(const wchar_t* name) const;

  /// Stores the value, or removes it when it is null, one that is not there is not missed; and
  /// tells every window, so that the shell gives the new environment to what it starts. A window
  /// that does not answer is waited for three seconds, one that is known to hang is passed over.
  /// Win32: SendMessageTimeoutA.
  void set(const wchar_t* name, const wchar_t* value) const;

 private:
  StoredEnvironment(RegistryRoot root, const wchar_t* path, bool expandable) noexcept
      : root_(root), path_(path), expandable_(expandable) {}

  RegistryRoot root_;
  const wchar_t* path_;
  bool expandable_;
};

}  // namespace corvane
