#pragma once

#include <windows.h>

#include <vector>

#include "bridge/win32/scoped_handle.h"
#include "bridge/win32/text.h"

namespace corvane {

/// What a directory says of something in it.
struct ListedFile {
  WString name;
  DWORD attributes = 0;

  bool isDirectory() const noexcept { return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0; }
  bool isReadOnly() const noexcept { return (attributes & FILE_ATTRIBUTE_READONLY) != 0; }
  /// A link, or something else that is more than it seems, such as a file that is kept elsewhere.
  bool isReparsePoint() const noexcept { return (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0; }
};

/// A file or a directory that is held open. It is asked, listed, changed and deleted through its
/// handle, and so is opened what is in it: it stays the same, whatever others put under its name or
/// on the way to it. A link is opened itself, never what it leads to.
///
/// By the system's own calls, for Win32 opens nothing in a directory that is open: NtOpenFile,
/// NtQueryInformationFile, NtSetInformationFile, NtQueryDirectoryFile. Every Windows of the NT
/// family has them.
class HeldFile {
 public:
  enum class Kind { kFile, kDirectory };

  /// Of none: what is in it are whole paths, behind `\\?\`.
  HeldFile() = default;
  /// False when it cannot be opened, or is of another kind; `error` says why. Others may do all
  /// with it meanwhile.
  HeldFile(const HeldFile& directory, const WString& name, Kind kind, ACCESS_MASK rights);

  explicit operator bool() const noexcept { return static_cast<bool>(handle_); }
  /// A Win32 error.
  DWORD error() const noexcept { return error_; }

  /// The following need rights: FILE_READ_ATTRIBUTES, and FILE_LIST_DIRECTORY,
  /// FILE_WRITE_ATTRIBUTES or DELETE.

  bool isReparsePoint() const;
  /// A junction or a symbolic link: a name for something that is elsewhere. One whose kind the
  /// system does not tell counts as such too.
  bool isLink() const;
  /// What is in it, "." and ".." left out; as much as the system tells.
  std::vector<ListedFile> list() const;
  void makeWriteable() const;
  /// Deletes a file, a link or an empty directory, by when it is closed at the latest; or the
  /// Win32 error.
  DWORD remove() const;

 private:
  ScopedKernelHandle handle_;
  DWORD error_ = ERROR_SUCCESS;
};

}  // namespace corvane
