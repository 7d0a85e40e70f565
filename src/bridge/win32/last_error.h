#pragma once

#include <windows.h>

namespace corvane {

/// Gives the thread its last error back at the end of the scope, so that cleaning up never changes
/// the error that is about to be reported.
class LastErrorKeeper {
 public:
  LastErrorKeeper() = default;
  LastErrorKeeper(const LastErrorKeeper&) = delete;
  LastErrorKeeper& operator=(const LastErrorKeeper&) = delete;
  ~LastErrorKeeper() { SetLastError(error_); }

 private:
  const DWORD error_ = GetLastError();
};

}  // namespace corvane
