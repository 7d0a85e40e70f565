#pragma once

#include <cstdint>
#include <string>

namespace bed {

// What stands in the place of functions of the system.

/// The version of Windows that the library sees.
struct WindowsVersion {
  /// 1: Windows 9x, 2: the NT family.
  uint32_t platform;
  uint32_t major;
  uint32_t minor;
  /// Whether the system knows the long version record, as Windows 98 and NT 4 did not at first.
  bool knowsLongRecord;
  /// Not a system that tells nothing at all.
  bool tells;
};
void fakeVersion(const WindowsVersion& version);

/// RegQueryValueExA and RegQueryValueExW find these contents, one after the other; the last one
/// stays. As the system does, they hand out not a byte more than there is and leave the rest of the
/// buffer as it was.
void fakeValue(uint32_t type, const std::string& data);
/// How many of them were not found.
size_t valuesInVain();

/// LoadLibraryExA loads `file` when the library asks for `name`, which the system may not have.
void fakeModule(const std::string& name, const std::string& file);

/// What is called instead of `original`, which has this name.
const void* fakeOf(const std::string& name, const void* original);

/// Gives everything back to the system.
void clearFakes();

}  // namespace bed
