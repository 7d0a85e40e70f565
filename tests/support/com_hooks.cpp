#include "com_hooks.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <map>
#include <set>
#include <span>
#include <string>
#include <string_view>

#include "import_hooks.h"

namespace bed {
namespace {

// The methods of the interfaces in the order of their tables.
constexpr std::string_view kMalloc[] = {
    "QueryInterface",
    "AddRef",
    "Release",
    "Alloc",
    "Realloc",
    "Free",
    "GetSize",
    "DidAlloc",
    "HeapMinimize",
};
constexpr std::string_view kPersistFile[] = {
    "QueryInterface",
    "AddRef",
    "Release",
    "GetClassID",
    "IsDirty",
    "Load",
    "Save",
    "SaveCompleted",
    "GetCurFile",
};
constexpr std::string_view kShellLink[] = {
    "QueryInterface",
    "AddRef",
    "Release",
    "GetPath",
    "GetIDList",
    "SetIDList",
    "GetDescription",
    "SetDescription",
    "GetWorkingDirectory",
    "SetWorkingDirectory",
    "GetArguments",
    "SetArguments",
    "GetHotkey",
    "SetHotkey",
    "GetShowCmd",
    "SetShowCmd",
    "GetIconLocation",
    "SetIconLocation",
    "SetRelativePath",
    "Resolve",
    "SetPath",
};

/// Which call hands out which interface, and where.
struct Source {
  std::string_view function;
  int argument;
  std::string_view name;
  std::span<const std::string_view> methods;
};
constexpr Source kSources[] = {
    {"SHGetMalloc", 0, "IMalloc", kMalloc},
    {"CoCreateInstance", 4, "IShellLinkA", kShellLink},
    {"IShellLinkA::QueryInterface", 2, "IPersistFile", kPersistFile},
};

/// Room for the whole table of any of them, and for what a class has behind it.
using Table = std::array<const void*, 32>;

/// The table with stubs; one for each that they are made from.
Table& hookedTable(const Source& source, const void** original) {
  static std::map<const void**, Table> tables;
  const auto [found, isNew] = tables.try_emplace(original);
  if (isNew) {
    for (size_t index = 0; index < source.methods.size(); ++index) {
      const std::string name = std::string(source.name) + "::" + std::string(source.methods[index]);
      found->second[index] = methodStub(name, original[index]);
    }
  }
  return found->second;
}

}  // namespace

void hookInterface(const Call& call) {
  static std::set<const void*> hooked;
  const auto* source =
      std::find_if(std::begin(kSources), std::end(kSources), [&](const auto& from) {
        return from.function == call.function->name;
      });
  if (source == std::end(kSources) || static_cast<int32_t>(call.result) < 0) {
    return;
  }
  auto* const object = *reinterpret_cast<const void****>(call.words[source->argument]);
  if (!hooked.contains(*object)) {
    Table& table = hookedTable(*source, *object);
    hooked.insert(table.data());
    *object = table.data();
  }
}

}  // namespace bed
