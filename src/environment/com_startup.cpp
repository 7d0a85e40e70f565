#include "environment/com_startup.h"

#include <objbase.h>

namespace corvane {

namespace {

/// Constructed when the system attaches the library to the process, destroyed when it detaches it.
/// Both happen under the loader's lock, where as a rule nothing is started: but the thread that
/// loads the library is the only one that is known to be there, and its result is what decides
/// later whether shortcuts are made. Starting COM needs no other thread, so nobody waits.
class ComStartup {
 public:
  ComStartup() noexcept : result_(CoInitialize(nullptr)) {}
  ComStartup(const ComStartup&) = delete;
  ComStartup& operator=(const ComStartup&) = delete;
  /// Unconditional: also a start that failed is followed by this call, for the library goes when
  /// the process does, and there is nothing left to harm.
  ~ComStartup() { CoUninitialize(); }

  HRESULT result() const noexcept { return result_; }

 private:
  HRESULT result_;
};

const ComStartup comStartup;

}  // namespace

HRESULT comStartupResult() noexcept {
  return comStartup.result();
}

}  // namespace corvane
