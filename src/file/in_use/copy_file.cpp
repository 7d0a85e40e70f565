#include "file/in_use/copy_file.h"

#include "bridge/win32/ansi_or_wide.h"
#include "bridge/win32/path.h"
#include "file/in_use/at_reboot.h"
#include "file/in_use/reboot_file_list.h"
#include "file/properties/read_only_guard.h"

namespace corvane {

namespace {

/// One copy. The names beside the target are made at its start: nothing may need memory while the
/// old file is out of its place.
class FileCopy {
 public:
  FileCopy(const wchar_t* source, const wchar_t* target, bool overwrite)
      : source_(source),
        target_(target),
        failIfExists_(overwrite ? FALSE : TRUE),
        aside_(besideTarget(target, kDeleteOnReboot)),
        pending_(besideTarget(target, kUseOnReboot)) {}

  FileOutcome run() {
    if (!copyTo(target_) && outcome_.error == ERROR_SHARING_VIOLATION) {
      if (isWindowsNT()) {
        copyOntoLockedTargetNT();
      } else {
        copyOntoLockedTarget9x();
      }
    }
    return outcome_;
  }

 private:
  /// Keeps the error of a copy that fails; one that works has none.
  bool copyTo(const wchar_t* path) {
    const BOOL copied = ansiOrWide(CopyFileA, CopyFileW, source_, path, failIfExists_);
    outcome_.setError(copied != FALSE ? ERROR_SUCCESS : GetLastError());
    return copied != FALSE;
  }

  void copyOntoLockedTargetNT() {
    const MoveFileExFunction moveFileEx = findMoveFileEx();
    if (!moveFileEx) {
      outcome_.setError(GetLastError());
    } else if (moveFileEx(target_, aside_.c_str(), DWORD{0}) != FALSE) {
      copyIntoPlace(moveFileEx);
    } else {
      copyForReboot(moveFileEx);
    }
  }

  /// The old file is out of the way. When the copy fails it comes back, and what that left as the
  /// last error is reported: the reason why the old file is not back, if it is not.
  void copyIntoPlace(const MoveFileExFunction& moveFileEx) {
    if (copyTo(target_)) {
      // That the old file stays behind when this fails is no failure of the copy.
      moveFileEx(aside_.c_str(), nullptr, DWORD{MOVEFILE_DELAY_UNTIL_REBOOT});
      outcome_.result = FileOutcome::kAtReboot;
    } else {
      moveFileEx(aside_.c_str(), target_, DWORD{0});
      outcome_.error = GetLastError();
    }
  }

  /// The old file does not even move: the new one waits beside it.
  void copyForReboot(const MoveFileExFunction& moveFileEx) {
    if (!copyTo(pending_.c_str())) {
      return;
    }
    if (moveFileEx(pending_.c_str(), target_, kReplaceAtReboot) != FALSE) {
      outcome_.result = FileOutcome::kAtReboot;
    } else {
      outcome_.setError(GetLastError());
    }
  }

  void copyOntoLockedTarget9x() {
    const AnsiText pending(pending_.c_str());
    const AnsiText target(target_);
    if (!copyTo(pending_.c_str())) {
      return;
    }
    RebootFileList list;
    list.addRename(pending, target);
    outcome_.setError(list.commit());
    outcome_.result = FileOutcome::kAtReboot;
  }

  const wchar_t* source_;
  const wchar_t* target_;
  BOOL failIfExists_;
  WString aside_;
  WString pending_;
  FileOutcome outcome_;
};

}  // namespace

FileOutcome copyFile(const wchar_t* source, const wchar_t* target, bool overwrite) {
  if (isDriveAlone(target)) {
    return FileOutcome::failed(ERROR_PATH_NOT_FOUND, FileOutcome::kDone);
  }
  const ReadOnlyGuard guard(target, false);
  return FileCopy(source, target, overwrite).run();
}

}  // namespace corvane
