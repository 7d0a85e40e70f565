#include "file/at_reboot.h"

#include "bridge/win32/ansi_or_wide.h"
#include "bridge/win32/platform.h"
#include "file/reboot_file_list.h"

namespace {

FileOutcome scheduled(bool done, DWORD error) {
  FileOutcome outcome;
  outcome.result = done ? FileOutcome::kAtReboot : FileOutcome::kFailed;
  outcome.setError(error);
  return outcome;
}

FileOutcome deleteAtRebootNT(const wchar_t* path) {
  const MoveFileExFunction moveFileEx = findMoveFileEx();
  const bool done =
      moveFileEx && moveFileEx(path, nullptr, DWORD{MOVEFILE_DELAY_UNTIL_REBOOT}) != FALSE;
  return scheduled(done, done ? ERROR_SUCCESS : GetLastError());
}

FileOutcome deleteAtReboot9x(const wchar_t* path) {
  RebootFileList list;
  list.addDelete(AnsiText(path));
  const DWORD error = list.commit();
  return scheduled(error == ERROR_SUCCESS, error);
}

}  // namespace

MoveFileExFunction findMoveFileEx() noexcept {
  return RUNTIME_FUNCTION(kernel32, MoveFileExW);
}

WString besideTarget(const wchar_t* target, const wchar_t* suffix) {
  return textOrEmpty(target) + suffix;
}

FileOutcome deleteAtReboot(const wchar_t* path) {
  return isWindowsNT() ? deleteAtRebootNT(path) : deleteAtReboot9x(path);
}
