#include "security/advapi32.h"

HMODULE advapi32() noexcept {
  const HMODULE loaded = GetModuleHandleW(L"advapi32.dll");
  return loaded != nullptr ? loaded : LoadLibraryW(L"advapi32.dll");
}
