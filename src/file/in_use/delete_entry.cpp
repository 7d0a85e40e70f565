#include "file/in_use/delete_entry.h"

#include <cstdio>

#include "bridge/win32/ansi_or_wide.h"
#include "bridge/win32/path.h"
#include "file/in_use/at_reboot.h"
#include "file/properties/read_only_guard.h"

namespace corvane {

namespace {

BOOL callDelete(const wchar_t* path, EntryKind kind) {
  return kind == EntryKind::kFile ? ansiOrWide(DeleteFileA, DeleteFileW, path)
                                  : ansiOrWide(RemoveDirectoryA, RemoveDirectoryW, path);
}

FileOutcome deleteEntryNow(const wchar_t* path, EntryKind kind) {
  if (isDriveAlone(path)) {
    return FileOutcome::failed(ERROR_PATH_NOT_FOUND);
  }
  const ReadOnlyGuard guard(path, false);
  const BOOL deleted = callDelete(path, kind);
  return deleted != FALSE ? FileOutcome::done() : FileOutcome::failed(GetLastError());
}

}  // namespace

FileOutcome deleteEntry(const wchar_t* path, EntryKind kind) {
  const FileOutcome outcome = deleteEntryNow(path, kind);
  if (outcome.error == ERROR_LOCK_VIOLATION) {
    std::fprintf(stderr, "it knows its locked");  // these words, and no line feed
  }
  return outcome.mayBeInUse() ? deleteAtReboot(path) : outcome;
}

}  // namespace corvane
