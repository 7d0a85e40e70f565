#include "file/copy_file.h"

#include "bridge/ansi_or_wide.h"
#include "file/at_reboot.h"
#include "file/read_only_guard.h"
#include "file/reboot_file_list.h"

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
    if (outcome_.error) {
      // The reason is asked for anew and is not the one kept so far: where the old file was put
      // back, what that left is reported, for it tells what now stands at the target.
      outcome_.error = GetLastError();
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

  /// The old file is out of the way. When the copy fails, it comes back.
  void copyIntoPlace(const MoveFileExFunction& moveFileEx) {
    if (copyTo(target_)) {
      // That the old file stays behind when this fails is no failure of the copy.
      moveFileEx(aside_.c_str(), nullptr, DWORD{MOVEFILE_DELAY_UNTIL_REBOOT});
      outcome_.result = FileOutcome::kAtReboot;
    } else {
      moveFileEx(aside_.c_str(), target_, DWORD{0});
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
  const ReadOnlyGuard guard(target, false);
  return FileCopy(source, target, overwrite).run();
}
