#pragma once

#include <windows.h>

#include "bridge/win32/scoped_handle.h"
#include "process/process_request.h"

namespace corvane {

/// A program that was started: its process and its first thread.
class ChildProcess {
 public:
  ChildProcess() = default;
  explicit ChildProcess(const PROCESS_INFORMATION& started) noexcept
      : process_(started.hProcess), thread_(started.hThread) {}

  /// Gives a program with windows ten seconds to be ready for input; a console program is at once.
  void awaitReadiness() const noexcept;

  bool hasEnded() const noexcept;

  /// Waits without limit, and tells the request the exit code. When Windows does not tell it, the
  /// request keeps what it has.
  void awaitEnd(const ProcessRequest& request) const;

  void closeProcess() noexcept { process_.close(); }

 private:
  ScopedKernelHandle process_;
  ScopedKernelHandle thread_;
};

}  // namespace corvane
