#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace bed {

/// The version of Windows that the library sees.
struct WindowsVersion {
  /// 1: Windows 9x, 2: the NT family.
  uint32_t platform;
  uint32_t major;
  uint32_t minor;
  /// Whether the system knows the long version record, as Windows 98 and NT 4 did not at first.
  bool knowsLongRecord = true;
  /// A system that tells nothing at all.
  bool tells = true;
};

/// GetVersionExA and GetVersionExW answer with this version.
void fakeVersion(const WindowsVersion& version);

/// What a registry value holds at one query.
struct ValueContent {
  uint32_t type;
  std::vector<uint8_t> data;
};

/// RegQueryValueExA and RegQueryValueExW find these contents, one after the other; the last one
/// stays. As the system does, they hand out not a byte more than there is and leave the rest of the
/// buffer as it was.
void fakeValue(ValueContent content);
/// How many of them were not found.
size_t valuesInVain();

/// LoadLibraryExA loads `file` when the library asks for `name`, which the system may not have.
void fakeModule(std::string name, std::string file);

/// Gives everything back to the system.
void clearFakedContents();

}  // namespace bed
