#pragma once

#include <cstdint>

/// The inner exception of the library: a piece of work failed for the reason that the system names.
/// The native frame reports it to Java with the native's own code. Subsystems derive their own.
class Win32Failure {
 public:
  /// `code`: a Win32 error number, or an HRESULT where a function gives one.
  explicit Win32Failure(uint32_t code) noexcept : code_(code) {}

  uint32_t code() const noexcept { return code_; }

 private:
  uint32_t code_;
};
