#pragma once

#include <windows.h>

#include "bridge/win32/runtime_function.h"

namespace corvane {

/// Enables one privilege of the process for an operation. Nothing is raised: who must know reads
/// `error()`.
///
/// The end of the scope asks for the privilege to be disabled again through a token that was never
/// kept: the request has no effect, the privilege stays enabled until the process ends, and the
/// token open. A privilege belongs to the whole process, another thread of which may have come to
/// count on it. Win32: OpenProcessToken, LookupPrivilegeValueA, AdjustTokenPrivileges,
/// looked up in advapi32.dll.
class PrivilegeEnabler {
 public:
  explicit PrivilegeEnabler(const char* privilege) noexcept;
  PrivilegeEnabler(const PrivilegeEnabler&) = delete;
  PrivilegeEnabler& operator=(const PrivilegeEnabler&) = delete;
  /// Keeps the thread's last error.
  virtual ~PrivilegeEnabler();

  /// 0 when the privilege is enabled; ERROR_NOT_ALL_ASSIGNED when the account does not hold it,
  /// ERROR_PROC_NOT_FOUND on Windows 9x or an unknown one.
  DWORD error() const noexcept { return error_; }
  bool isEnabled() const noexcept { return enabled_; }

 private:
  DWORD enable(const char* privilege) noexcept;
  void adjust(HANDLE token) noexcept;

  RuntimeFunction<decltype(&OpenProcessToken)> openProcessToken_;
  RuntimeFunction<decltype(&LookupPrivilegeValueA)> lookupPrivilegeValue_;
  RuntimeFunction<decltype(&AdjustTokenPrivileges)> adjustTokenPrivileges_;
  HANDLE token_ = nullptr;
  TOKEN_PRIVILEGES privileges_ = {};
  DWORD error_;
  bool enabled_ = false;
};

/// The privilege that a reboot needs.
class ShutdownPrivilegeEnabler : public PrivilegeEnabler {
 public:
  ShutdownPrivilegeEnabler() noexcept : PrivilegeEnabler("SeShutdownPrivilege") {}
};

}  // namespace corvane
