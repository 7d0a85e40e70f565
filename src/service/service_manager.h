#pragma once

#include <windows.h>

#include "bridge/win32/required_function.h"
#include "bridge/win32/scoped_handle.h"
#include "bridge/win32/win32_failure.h"

namespace corvane {

// How the system's service manager is reached. Its functions are wide everywhere: what has services
// has them in that form.

struct ServiceHandleTraits {
  using Handle = SC_HANDLE;
  static Handle none() noexcept { return nullptr; }
  static void close(Handle handle) noexcept { CloseServiceHandle(handle); }
};

/// A handle to the service manager or to a service; closed with CloseServiceHandle.
using ScopedServiceHandle = ScopedHandle<ServiceHandleTraits>;

/// A function by which the manager or a service is opened is missing. Nobody is told: that this
/// Windows has no services is told by the function that an operation is about, which is looked up
/// before (`SERVICE_FUNCTION`), and where no function is, no service exists.
struct NoServiceManager {};

/// The function of the service manager that an operation is about. Windows 95, 98 and ME lack it.
#define SERVICE_FUNCTION(name) required<ERROR_PROC_NOT_FOUND>(RUNTIME_FUNCTION(advapi32, name))

// The rights that are asked for with a service.
constexpr DWORD kQueryServiceStatus = READ_CONTROL | SERVICE_QUERY_STATUS;
constexpr DWORD kQueryServiceConfig = READ_CONTROL | SERVICE_QUERY_CONFIG;
/// Who changes a service shall be allowed to stop and start it as well: only then does the change
/// come about. That is asked before anything is changed.
constexpr DWORD kChangeServiceConfig = GENERIC_EXECUTE | SERVICE_CHANGE_CONFIG;

/// Opens this machine's service manager. All rights are asked for, also by questions: who lacks
/// them learns it from the first of an installer's calls, and not when half of them are done.
/// Throws Win32Failure and NoServiceManager.
ScopedServiceHandle openServiceManager();

/// Opens a service; null is handed to the system, which refuses it.
ScopedServiceHandle openService(SC_HANDLE manager, const wchar_t* name, DWORD access);

/// One function of the service manager and the service that it is called for, which is open as long
/// as this lives: `ServiceOperation(SERVICE_FUNCTION(DeleteService), name, DELETE)()`.
template <class Function>
class ServiceOperation {
 public:
  /// Throws Win32Failure and NoServiceManager.
  ServiceOperation(RuntimeFunction<Function> function, const wchar_t* name, DWORD access)
      : function_(function), service_(openService(manager_.get(), name, access)) {}

  /// Calls the function with the service and what comes behind it, and returns its result.
  template <class... Arguments>
  BOOL operator()(Arguments... arguments) const {
    return function_(service_.get(), arguments...);
  }

 private:
  RuntimeFunction<Function> function_;
  // Closed in the other order.
  ScopedServiceHandle manager_ = openServiceManager();
  ScopedServiceHandle service_;
};

}  // namespace corvane
