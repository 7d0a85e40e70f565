#include "file/in_use/move_file.h"

#include "bridge/win32/path.h"
#include "bridge/win32/platform.h"
#include "file/in_use/at_reboot.h"
#include "file/in_use/move_file_9x.h"
#include "file/properties/read_only_guard.h"

namespace corvane {

namespace {

constexpr DWORD kMove = MOVEFILE_COPY_ALLOWED | MOVEFILE_WRITE_THROUGH;
constexpr DWORD kReplace = kMove | MOVEFILE_REPLACE_EXISTING;

/// One move. The names beside the target are made at its start: nothing may need memory while the
/// old file is out of its place.
class FileMove {
 public:
  FileMove(const MoveFileExFunction& moveFileEx,
           const wchar_t* source,
           const wchar_t* target,
           bool overwrite)
      : moveFileEx_(moveFileEx),
        source_(source),
        target_(target),
        flags_(overwrite ? kReplace : kMove),
        aside_(besideTarget(target, kDeleteOnReboot)),
        parked_(besideTarget(target, kMoveOnReboot)) {}

  FileOutcome run() {
    if (!move(source_, target_, flags_)) {
      outcome_.result = FileOutcome::kFailed;
      if (outcome_.mayBeInUse()) {
        moveOntoLockedTarget();
      }
    }
    if (!outcome_.error && outcome_.result == FileOutcome::kFailed) {
      outcome_.result = FileOutcome::kDone;
    }
    return outcome_;
  }

 private:
  /// Keeps the error of a move that fails; one that works has none.
  bool move(const wchar_t* from, const wchar_t* to, DWORD flags) {
    const bool moved = moveFileEx_(from, to, flags) != FALSE;
    outcome_.setError(moved ? ERROR_SUCCESS : GetLastError());
    return moved;
  }

  void moveOntoLockedTarget() {
    if (move(target_, aside_.c_str(), kReplace)) {
      moveIntoPlace();
    } else if (outcome_.mayBeInUse()) {
      moveAtReboot();
    }
  }

  /// The old file is out of the way. It stays there also when the second move fails: unlike a copy,
  /// a move does not put it back, because both files are still whole and the failure is raised.
  void moveIntoPlace() {
    move(source_, target_, flags_);
    if (!outcome_.error) {
      move(aside_.c_str(), nullptr, MOVEFILE_DELAY_UNTIL_REBOOT);
    }
    outcome_.result = FileOutcome::kAtReboot;
  }

  /// The old file does not even move: the source waits beside it.
  void moveAtReboot() {
    if (move(source_, parked_.c_str(), kReplace) &&
        move(parked_.c_str(), target_, kReplaceAtReboot)) {
      outcome_.result = FileOutcome::kAtReboot;
    }
  }

  const MoveFileExFunction& moveFileEx_;
  const wchar_t* source_;
  const wchar_t* target_;
  DWORD flags_;
  WString aside_;
  WString parked_;
  FileOutcome outcome_;
};

FileOutcome moveFileNT(const wchar_t* source, const wchar_t* target, bool overwrite) {
  const ReadOnlyGuard guard(target, false);
  const MoveFileExFunction moveFileEx = findMoveFileEx();
  if (!moveFileEx) {
    return FileOutcome::failed(GetLastError(), FileOutcome::kDone);
  }
  return FileMove(moveFileEx, source, target, overwrite).run();
}

}  // namespace

FileOutcome moveFile(const wchar_t* source, const wchar_t* target, bool overwrite) {
  if (target == nullptr) {
    // To some systems a move to nowhere is a deletion, and nobody asked for that.
    return FileOutcome::failed(ERROR_INVALID_PARAMETER);
  }
  if (isDriveAlone(source) || isDriveAlone(target)) {
    return FileOutcome::failed(ERROR_PATH_NOT_FOUND);
  }
  return isWindowsNT() ? moveFileNT(source, target, overwrite)
                       : moveFile9x(source, target, overwrite);
}

}  // namespace corvane
