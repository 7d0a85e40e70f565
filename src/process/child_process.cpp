#include "process/child_process.h"

namespace corvane {

namespace {

constexpr DWORD kReadinessLimit = 10000;

}  // namespace

void ChildProcess::awaitReadiness() const noexcept {
  WaitForInputIdle(process_.get(), kReadinessLimit);
}

bool ChildProcess::hasEnded() const noexcept {
  return WaitForSingleObject(process_.get(), 0) == WAIT_OBJECT_0;
}

void ChildProcess::awaitEnd(const ProcessRequest& request) const {
  WaitForSingleObject(process_.get(), INFINITE);
  DWORD code = 0;
  if (GetExitCodeProcess(process_.get(), &code) != FALSE) {
    request.setReturnCode(code);
  }
}

}  // namespace corvane
