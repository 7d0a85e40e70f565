#include "process/startup_commands.h"

#include <windows.h>

#include <optional>

#include "bridge/win32/format_wide.h"
#include "registry/known_keys.h"
#include "registry/registry_key.h"

namespace corvane {

namespace {

constexpr const wchar_t* kPrefix = L"ZELQ";
constexpr RegistryRoot kRoot = RegistryRoot::kLocalMachine;

/// Where every command goes by a name of its own, a gap is filled first. The number has 16 bits:
/// after 32767 come the negative ones, which are names as good as any.
WString firstFreeName(const RegistryKey& registry) {
  WString name;
  int16_t number = 1;
  do {
    name = formatWide(L"%s%05d", kPrefix, int{number++});
  } while (registry.valueExists(kRoot, kRunOnce, name.c_str()));
  return name;
}

bool isOwn(const WString& name) {
  return name.starts_with(kPrefix);
}

/// Nothing when the value is no text.
std::optional<WString> commandIn(const RegistryKey& registry, const WString& name, bool expand) {
  try {
    return registry.getStringValue(kRoot, kRunOnce, name.c_str(), expand);
  } catch (const RegistryException& failure) {
    if (failure.code() != ERROR_INVALID_DATATYPE) {
      throw;
    }
  }
  return std::nullopt;
}

}  // namespace

void addStartupCommand(const WString& command) {
  const RegistryKey registry;
  const WString name = firstFreeName(registry);
  registry.setStringValue(kRoot, kRunOnce, name.c_str(), false, command.c_str());
}

void listStartupCommands(const std::function<void(const WString&)>& take) {
  const RegistryKey registry;
  for (const WString& name : registry.getValueNames(kRoot, kRunOnce)) {
    if (const auto command = commandIn(registry, name, true)) {
      take(*command);
    }
  }
}

void removeStartupCommand(const WString& command) {
  const RegistryKey registry;
  for (const WString& name : registry.getValueNames(kRoot, kRunOnce)) {
    if (isOwn(name) && commandIn(registry, name, false) == command) {
      registry.deleteValue(kRoot, kRunOnce, name.c_str(), false);
      return;
    }
  }
}

}  // namespace corvane
