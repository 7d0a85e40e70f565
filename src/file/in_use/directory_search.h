#pragma once

#include <windows.h>

#include "bridge/win32/scoped_handle.h"
#include "bridge/win32/text.h"

namespace corvane {

/// The entries of a directory in the system's order, "." and ".." left out.
/// Win32: FindFirstFileA/W, FindNextFileA/W, FindClose.
class DirectorySearch {
 public:
  /// Begins with the first entry that matches `pattern`. False when there is no search; the
  /// thread's last error says why.
  explicit DirectorySearch(const WString& pattern);

  explicit operator bool() const noexcept { return static_cast<bool>(search_); }

  /// Goes to the next entry, the first at the first call; false when there is none.
  bool next();

  /// Ends the search.
  void close() noexcept { search_.close(); }

  const WString& name() const noexcept { return name_; }
  bool isDirectory() const noexcept { return (attributes_ & FILE_ATTRIBUTE_DIRECTORY) != 0; }

  /// A junction or a symbolic link: a name for something that is elsewhere. One whose kind the
  /// system does not tell counts as such too.
  bool isLink() const noexcept;

 private:
  bool advance();
  void keep(const WIN32_FIND_DATAA& found);
  void keep(const WIN32_FIND_DATAW& found);

  const bool ansi_;
  bool atFirst_ = true;
  union FindData {
    WIN32_FIND_DATAW wide;
    WIN32_FIND_DATAA ansi;
  };
  FindData data_ = {};
  ScopedSearch search_;
  WString name_;
  DWORD attributes_ = 0;
  DWORD reparseTag_ = 0;
};

}  // namespace corvane
