#pragma once

#include <windows.h>

#include <ntsecapi.h>

#include "bridge/win32/required_function.h"
#include "bridge/win32/text.h"
#include "bridge/win32/win32_failure.h"

namespace corvane {

/// The function of the security authority. A system that lacks it cannot do what was asked, and
/// that is its own error.
#define LSA_FUNCTION(name) required<ERROR_CALL_NOT_IMPLEMENTED>(RUNTIME_FUNCTION(Advapi32, name))

/// A text as the security authority takes it, which borrows it; null is a text that is none. Throws
/// Win32Failure for one whose length has no place there: it would be another, shorter right.
LSA_UNICODE_STRING lsaText(const wchar_t* text);

/// The opened policy of a computer.
///
/// Nothing closes it but `close` and `closeQuietly`, which end what was done with it: it stays open
/// after any failure. To close it is one more request to an authority that may be another
/// computer's and has just failed to answer; who called would wait for it a second time, and the
/// handle ends with the process.
class SecurityPolicy {
 public:
  /// `system`: the computer; empty is this one. Win32: LsaOpenPolicy.
  SecurityPolicy(const WString& system, ACCESS_MASK access);

  LSA_HANDLE get() const noexcept { return handle_; }

  /// Throws the Win32 error of a request that failed; 0 when the system counts the status as none.
  /// Win32: LsaNtStatusToWinError.
  void throwUnlessGood(NTSTATUS status) const;

  /// For changes, which are told to be made when the authority has taken leave too.
  void close() const;

  /// For inquiries: the answer is there whatever comes of this.
  void closeQuietly() const noexcept;

 private:
  const RuntimeFunction<decltype(&LsaNtStatusToWinError)> toWin32Error_;
  LSA_HANDLE handle_ = nullptr;
};

}  // namespace corvane
