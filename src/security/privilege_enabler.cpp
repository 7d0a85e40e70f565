#include "security/privilege_enabler.h"

#include "bridge/win32/last_error.h"
#include "bridge/win32/platform.h"
#include "security/advapi32.h"

namespace corvane {

PrivilegeEnabler::PrivilegeEnabler(const char* privilege) noexcept
    : error_(isWindowsNT() ? enable(privilege) : ERROR_PROC_NOT_FOUND),
      enabled_(error_ == ERROR_SUCCESS) {}

PrivilegeEnabler::~PrivilegeEnabler() {
  const LastErrorKeeper keeper;
  if (enabled_) {
    privileges_.Privileges[0].Attributes = 0;
    adjust(token_);
  }
  if (token_ != nullptr) {
    CloseHandle(token_);
  }
}

DWORD PrivilegeEnabler::enable(const char* privilege) noexcept {
  const HMODULE module = advapi32();
  if (!(openProcessToken_ = RUNTIME_FUNCTION_OF(module, OpenProcessToken)) ||
      !(lookupPrivilegeValue_ = RUNTIME_FUNCTION_OF(module, LookupPrivilegeValueA)) ||
      !(adjustTokenPrivileges_ = RUNTIME_FUNCTION_OF(module, AdjustTokenPrivileges))) {
    return GetLastError();
  }
  HANDLE token = nullptr;  // and not the field: see the class
  if (openProcessToken_(GetCurrentProcess(),
                        DWORD{TOKEN_ADJUST_PRIVILEGES | TOKEN_QUERY},
                        &token) == FALSE) {
    return GetLastError();
  }
  LUID_AND_ATTRIBUTES& entry = privileges_.Privileges[0];
  if (lookupPrivilegeValue_(nullptr, privilege, &entry.Luid) == FALSE) {
    return GetLastError();
  }
  privileges_.PrivilegeCount = 1;
  entry.Attributes = SE_PRIVILEGE_ENABLED;
  adjust(token);
  return GetLastError();  // whatever the result: a privilege that is not held is told only so
}

void PrivilegeEnabler::adjust(HANDLE token) noexcept {
  adjustTokenPrivileges_(token, FALSE, &privileges_, DWORD{sizeof(privileges_)}, nullptr, nullptr);
}

}  // namespace corvane
