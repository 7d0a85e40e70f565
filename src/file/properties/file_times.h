#pragma once

#include <cstdint>
#include <optional>

namespace corvane {

/// The times to give a file; those that are absent stay as they are. Each is a number of
/// 100-nanosecond intervals since 1 January 1601 (UTC), as in Windows' FILETIME.
struct FileTimes {
  std::optional<int64_t> created = {};
  std::optional<int64_t> accessed = {};
  std::optional<int64_t> modified = {};
};

/// Sets the times of a file; a read-only file stays read-only. Not of a directory: that fails with
/// ERROR_ACCESS_DENIED. Throws Win32Failure. Win32: CreateFileA/W, SetFileTime.
void setFileTimes(const wchar_t* path, const FileTimes& times);

}  // namespace corvane
