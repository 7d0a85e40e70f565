#pragma once

#include <windows.h>

#include "bridge/win32/optional_text.h"

namespace corvane {

/// Lifts the read-only attribute of a file for the length of an operation on it.
///
/// With `restore` the file gets its attributes back at the end: it outlives the operation. Without,
/// it is about to disappear or to be replaced. Nothing here fails but the copy of the path
/// (std::bad_alloc), and ending keeps the thread's last error. Win32: GetFileAttributesA/W,
/// SetFileAttributesA/W.
class ReadOnlyGuard {
 public:
  /// `path` may be null, like any path that Java gives.
  ReadOnlyGuard(const wchar_t* path, bool restore);
  ReadOnlyGuard(const ReadOnlyGuard&) = delete;
  ReadOnlyGuard& operator=(const ReadOnlyGuard&) = delete;
  ~ReadOnlyGuard();

 private:
  DWORD getAttributes() const noexcept;
  void setAttributes(DWORD attributes) const noexcept;

  /// The path in the form of the family, made once: restoring must not need memory.
  OptionalText widePath_;
  ByteBuffer ansiPath_;
  bool ansi_;
  bool restore_;
  bool changed_ = false;
  DWORD attributes_ = 0;
};

}  // namespace corvane
