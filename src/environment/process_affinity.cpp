#include "environment/process_affinity.h"

#include <windows.h>

#include "bridge/win32/runtime_function.h"

namespace corvane {

void useOneProcessor() noexcept {
  const auto setProcessAffinityMask = RUNTIME_FUNCTION(kernel32, SetProcessAffinityMask);
  if (!setProcessAffinityMask) {
    return;
  }
  SYSTEM_INFO system = {};
  GetSystemInfo(&system);
  // Processors above 31 are not considered: one is all that is wanted.
  const auto active = static_cast<DWORD>(system.dwActiveProcessorMask);
  const DWORD lowest = active & (~active + 1);
  if (lowest != 0) {
    setProcessAffinityMask(GetCurrentProcess(), DWORD_PTR{lowest});
  }
}

}  // namespace corvane
