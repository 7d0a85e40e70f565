#include "environment/com_startup.h"

#include <objbase.h>

namespace corvane {

namespace {

/// Constructed when the system attaches the library to the process, destroyed when it detaches it.
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
