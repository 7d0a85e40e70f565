#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace corvane {

/// What Windows 95, 98 and ME are to do with files at their next start: lines for the section
/// "[Rename]" of WinInit.Ini, in the Windows directory.
///
/// Paths are ANSI text. A line names files by their short names, which is all that the system knows
/// so early; a path that has none is used as it is given. Lines that are not committed are
/// discarded. Win32: GetShortPathNameA, GetWindowsDirectoryA, CreateFileMappingA.
class RebootFileList {
 public:
  /// `newFile` will replace `target`.
  void addRename(const char* newFile, const char* target);

  /// `path` will be deleted.
  void addDelete(const char* path);

  /// Writes the lines into the file, which is made when it is missing. Returns 0, and the list is
  /// empty then; or the Win32 error, and the lines are kept and the text of the file is as it was.
  DWORD commit();

  const std::vector<std::string>& lines() const noexcept { return lines_; }

 private:
  std::vector<std::string> lines_;
};

}  // namespace corvane
