#pragma once

#include <windows.h>

#include <cstdint>

namespace corvane {

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

/// For functions that return 0 or the reason of their failure.
inline void throwUnlessZero(uint32_t error) {
  if (error != 0) {
    throw Win32Failure(error);
  }
}

/// For functions that failed just now: throws the thread's last error, which is read before
/// anything is allocated for the exception.
[[noreturn]] inline void throwLastError() {
  const uint32_t error = GetLastError();
  throw Win32Failure(error);
}

/// For functions that return whether they succeeded and leave the reason as the last error.
inline void throwUnless(bool succeeded) {
  if (!succeeded) {
    throwLastError();
  }
}

/// For work of which only a failure with a reason is reported: without one (the last error is 0)
/// the answer is the default value of its type.
template <class Work>
auto reasonedOnly(const Work& work) -> decltype(work()) {
  try {
    return work();
  } catch (const Win32Failure& failure) {
    throwUnlessZero(failure.code());
  }
  return decltype(work())();
}

}  // namespace corvane
