#pragma once

#include "bridge/win32/scoped_handle.h"

namespace corvane {

/// The process that started this one. It is held from the beginning, so that its number cannot
/// become another's.
class ParentProcess {
 public:
  /// False when it is gone already. Win32: NtQueryInformationProcess, OpenProcess.
  ParentProcess();

  explicit operator bool() const noexcept { return static_cast<bool>(process_); }
  DWORD id() const noexcept { return id_; }
  /// Signalled when it ends.
  HANDLE handle() const noexcept { return process_.get(); }

  void awaitEnd() const noexcept { WaitForSingleObject(process_.get(), INFINITE); }

 private:
  DWORD id_;
  ScopedKernelHandle process_;
};

}  // namespace corvane
