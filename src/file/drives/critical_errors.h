#pragma once

#include <windows.h>

#include "bridge/win32/last_error.h"

namespace corvane {

/// Keeps the system's box for critical errors (no disk in the drive) from showing for the length of
/// an operation, which then simply fails. Ending keeps the thread's last error. Win32:
/// SetErrorMode.
class CriticalErrorSuppressor {
 public:
  CriticalErrorSuppressor() noexcept : old_(SetErrorMode(0)) {
    // Plus 1, not with the bit set: callers have always found this mode, also where the bit was set
    // before and the sum is another one.
    SetErrorMode(old_ + 1);
  }
  CriticalErrorSuppressor(const CriticalErrorSuppressor&) = delete;
  CriticalErrorSuppressor& operator=(const CriticalErrorSuppressor&) = delete;
  ~CriticalErrorSuppressor() {
    const LastErrorKeeper keeper;
    SetErrorMode(old_);
  }

 private:
  UINT old_;
};

/// Lets the box show, or not, for the whole process. Returns whether it was suppressed before.
inline bool enableCriticalErrorBox(bool enable) noexcept {
  const UINT old = SetErrorMode(0);
  SetErrorMode(enable ? 0 : old | SEM_FAILCRITICALERRORS);
  return (old & SEM_FAILCRITICALERRORS) != 0;
}

}  // namespace corvane
