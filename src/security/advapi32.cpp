#include "security/advapi32.h"

#include "bridge/win32/system_library.h"

namespace corvane {

HMODULE advapi32() noexcept {
  const HMODULE loaded = GetModuleHandleW(L"advapi32.dll");
  return loaded != nullptr ? loaded : loadSystemLibrary(L"advapi32.dll");
}

}  // namespace corvane
