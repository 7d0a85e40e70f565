#include "service/service_manager.h"

namespace corvane {

namespace {

ScopedServiceHandle opened(SC_HANDLE handle) {
  throwUnless(handle != nullptr);
  return ScopedServiceHandle(handle);
}

}  // namespace

ScopedServiceHandle openServiceManager() {
  const auto openManager = RUNTIME_FUNCTION(advapi32, OpenSCManagerW);
  if (!openManager) {
    throw NoServiceManager();
  }
  return opened(openManager(nullptr, nullptr, DWORD{SC_MANAGER_ALL_ACCESS}));
}

ScopedServiceHandle openService(SC_HANDLE manager, const wchar_t* name, DWORD access) {
  const auto open = RUNTIME_FUNCTION(advapi32, OpenServiceW);
  if (!open) {
    throw NoServiceManager();
  }
  return opened(open(manager, name, access));
}

}  // namespace corvane
