#pragma once

#include <windows.h>

#include <optional>
#include <vector>

#include "bridge/win32/optional_text.h"
#include "service/service_manager.h"

namespace corvane {

// What Windows 2000 added to services. All throw Win32Failure and NoServiceManager.

/// What a person is told of a service; absent where there is none. Only that the service cannot be
/// opened is a failure: a description that cannot be read is none, for nothing depends on it.
OptionalText queryServiceDescription(const wchar_t* name);

/// An absent description takes away the one that there is.
void changeServiceDescription(const wchar_t* name, const wchar_t* description);

/// What the service manager does when the service's program ends without having been stopped.
struct FailureActions {
  DWORD resetPeriod = INFINITE;  // seconds without a failure after which they begin anew
  OptionalText rebootMessage;
  OptionalText command;
  std::vector<SC_ACTION> actions;  // at the first failure, the second and so on
};

/// Nothing when the system says that there is nothing to tell.
std::optional<FailureActions> queryFailureActions(const wchar_t* name);

/// The functions by which failure actions are changed; false when one is missing.
struct FailureActionFunctions {
  RuntimeFunction<decltype(&ChangeServiceConfig2W)> changeServiceConfig2 =
      RUNTIME_FUNCTION(advapi32, ChangeServiceConfig2W);
  RuntimeFunction<decltype(&LockServiceDatabase)> lockServiceDatabase =
      RUNTIME_FUNCTION(advapi32, LockServiceDatabase);
  RuntimeFunction<decltype(&UnlockServiceDatabase)> unlockServiceDatabase =
      RUNTIME_FUNCTION(advapi32, UnlockServiceDatabase);

  explicit operator bool() const noexcept {
    return changeServiceConfig2 && lockServiceDatabase && unlockServiceDatabase;
  }
};

struct DatabaseLockTraits {
  using Handle = SC_LOCK;
  static Handle none() noexcept { return nullptr; }
  void close(Handle lock) const noexcept { unlock(lock); }

  RuntimeFunction<decltype(&UnlockServiceDatabase)> unlock;
};
using ScopedDatabaseLock = ScopedHandle<DatabaseLockTraits>;

/// Changes the failure actions of a service. As long as this lives the service is open and the
/// database of services locked: none starts between what is there and what is to be.
class FailureActionsChanger {
 public:
  FailureActionsChanger(const FailureActionFunctions& call, const wchar_t* name);

  /// To have the machine started anew takes a privilege, which is enabled then and stays enabled
  /// (see PrivilegeEnabler). That it is not had is left to the system to tell.
  void change(const FailureActions& actions) const;

 private:
  const FailureActionFunctions call_;
  // Given back in the other order.
  const ScopedServiceHandle manager_;
  const ScopedDatabaseLock lock_;
  const ScopedServiceHandle service_;
};

/// The state of a service with the process that it runs in; nothing when the system says that there
/// is nothing to tell.
std::optional<SERVICE_STATUS_PROCESS> queryServiceStatusProcess(const wchar_t* name);

}  // namespace corvane
