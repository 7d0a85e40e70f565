#pragma once

#include <windows.h>

#include <optional>

namespace corvane {

/// How an operation on a file that may be in use ended: the result that Java gets, and beside it
/// the failure to raise, if there is one.
struct FileOutcome {
  enum Result {
    kFailed = -1,
    kDone = 0,
    kAtReboot = 1,  // the next start of Windows completes it
  };

  static FileOutcome done() noexcept { return {}; }
  static FileOutcome atReboot() noexcept { return {kAtReboot, {}}; }

  /// Some operations answer kDone beside their failure, and kAtReboot where half of the work is
  /// left for the next start all the same.
  static FileOutcome failed(DWORD error, Result result = kFailed) noexcept {
    FileOutcome outcome{result, {}};
    outcome.setError(error);
    return outcome;
  }

  Result result = kDone;

  /// A Win32 error.
  std::optional<DWORD> error;

  /// Keeps a reason; 0 is none.
  void setError(DWORD reason) noexcept {
    error.reset();
    if (reason != ERROR_SUCCESS) {
      error = reason;
    }
  }

  /// One of the two errors that a file gives which somebody has open. The second one can mean that
  /// it is refused, too.
  bool mayBeInUse() const noexcept {
    return error == ERROR_SHARING_VIOLATION || error == ERROR_ACCESS_DENIED;
  }
};

}  // namespace corvane
