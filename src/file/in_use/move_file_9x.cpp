#include "file/in_use/move_file_9x.h"

#include "bridge/win32/ansi_or_wide.h"
#include "bridge/win32/scoped_handle.h"
#include "file/in_use/reboot_file_list.h"
#include "file/properties/read_only_guard.h"

namespace corvane {

namespace {

/// Reported whatever the error is, also when the system names none.
FileOutcome failedWith(DWORD error) {
  return {FileOutcome::kDone, error};
}

FileOutcome leftForReboot(RebootFileList& list) {
  list.commit();
  return FileOutcome::atReboot();
}

/// Whether the source is there, as far as can be told: it can be opened, or it cannot be for
/// another reason than that it is missing.
bool isThere(const char* source) {
  const ScopedFile probe(CreateFileA(source, GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
  if (probe) {
    return true;
  }
  const DWORD error = GetLastError();
  return error != ERROR_FILE_NOT_FOUND && error != ERROR_PATH_NOT_FOUND;
}

FileOutcome moveNow(const char* source, const char* target) {
  if (MoveFileA(source, target) != FALSE) {
    return FileOutcome::done();
  }
  const DWORD error = GetLastError();
  if (error != ERROR_ACCESS_DENIED) {
    return failedWith(error);
  }
  RebootFileList list;
  list.addRename(source, target);
  return leftForReboot(list);
}

FileOutcome replace(const char* source, const char* target) {
  if (DeleteFileA(target) != FALSE) {
    return moveNow(source, target);
  }
  // A target that is not there fails here too: there is nothing to replace.
  const DWORD error = GetLastError();
  if (error != ERROR_ACCESS_DENIED) {
    return failedWith(error);
  }
  RebootFileList list;
  list.addDelete(target);
  list.addRename(source, target);
  return leftForReboot(list);
}

/// Moving to an empty target means deleting the source. Any failure but "in use" is left to what a
/// move makes of it.
bool deletedAsMove(const char* source, FileOutcome& outcome) {
  if (DeleteFileA(source) != FALSE) {
    return true;
  }
  if (GetLastError() != ERROR_ACCESS_DENIED) {
    return false;
  }
  RebootFileList list;
  list.addDelete(source);
  outcome = leftForReboot(list);
  return true;
}

}  // namespace

FileOutcome moveFile9x(const wchar_t* source, const wchar_t* target, bool overwrite) {
  const AnsiText from(source);
  const AnsiText to(target);
  FileOutcome outcome;
  if (target != nullptr && *target == L'\0' && deletedAsMove(from, outcome)) {
    return outcome;
  }
  const ReadOnlyGuard guard(target, false);
  if (!isThere(from)) {
    return moveNow(from, to);
  }
  // Without leave to overwrite, nothing is moved at all and nothing is reported: installers count
  // on the answer 0 from these systems.
  return overwrite ? replace(from, to) : FileOutcome();
}

}  // namespace corvane
