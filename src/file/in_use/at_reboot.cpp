#include "file/in_use/at_reboot.h"

#include "bridge/win32/ansi_or_wide.h"
#include "bridge/win32/platform.h"
#include "file/in_use/reboot_file_list.h"

namespace corvane {

namespace {

FileOutcome deleteAtRebootNT(const wchar_t* path) {
  const MoveFileExFunction moveFileEx = findMoveFileEx();
  const bool scheduled =
      moveFileEx && moveFileEx(path, nullptr, DWORD{MOVEFILE_DELAY_UNTIL_REBOOT}) != FALSE;
  return scheduled ? FileOutcome::atReboot() : FileOutcome::failed(GetLastError());
}

FileOutcome deleteAtReboot9x(const wchar_t* path) {
  RebootFileList list;
  list.addDelete(AnsiText(path));
  const DWORD error = list.commit();
  return error == ERROR_SUCCESS ? FileOutcome::atReboot() : FileOutcome::failed(error);
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

}  // namespace corvane
