#pragma once

#include <string>

#include "bridge/win32/ansi_or_wide.h"

namespace corvane {

/// What is to go when this process has ended, as the cleaner is told: each directory has a star
/// before it, and semicolons stand between. Adding throws Win32Failure.
class AfterExitList {
 public:
  void addFile(const WString& path);
  void addDirectory(const WString& path);

  bool isEmpty() const noexcept { return list_.empty(); }
  const std::string& text() const noexcept { return list_; }

 private:
  void add(const char* mark, const WString& path);

  std::string list_;
};

/// Starts the cleaner, a program that deletes files when this process has ended, and hands it the
/// list. Its own file is deleted by the system when it is over, unless quotes keep that from being
/// found.
///
/// Throws Win32Failure when it cannot be started. That nothing of it listens is not noticed: any
/// program may be the cleaner. It takes more than a second, for windows are waited for. `cleaner`
/// is the whole command line. Win32: CreateFileA, CreateProcessA, WaitForInputIdle, SendMessageA
/// with WM_COPYDATA.
void handToCleaner(const char* cleaner, bool flag, const AfterExitList& list);

}  // namespace corvane
