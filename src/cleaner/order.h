#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

#include "bridge/win32/text.h"

namespace corvane {

/// Something that is to go: a file, or, when it is a tree, whatever stands there with all that is
/// in it.
struct Removable {
  WString path;
  bool isTree = false;
};

/// What the cleaner is told in its one message: a flag, 0 or 1, the number of the process to wait
/// for in hexadecimal, a blank, and paths with semicolons between; a star before a path says that
/// it is a tree. The flag means nothing to it.
struct Order {
  DWORD process = 0;
  /// As it came: it is not read before it is known from whom.
  std::string list;

  /// What is in the list, but only paths that may be removed; see removablePath.
  std::vector<Removable> removables() const;
};

/// The order in a message of `size` bytes, its NUL included; nothing when it is none, or null.
std::optional<Order> orderIn(const char* message, size_t size);

}  // namespace corvane
