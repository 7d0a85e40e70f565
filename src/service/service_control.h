#pragma once

#include <windows.h>

#include <vector>

#include "bridge/win32/optional_text.h"
#include "bridge/win32/text.h"
#include "service/service_manager.h"

namespace corvane {

// What is done with a service, and what is asked of it and of all. All throw Win32Failure, and
// NoServiceManager; null names are handed to the system, which refuses them.

/// Whether there is a service of that name; anything but its opening and "does not exist" is
/// thrown.
bool serviceExists(SC_HANDLE manager, const wchar_t* name);

/// Deletes a service. As long as somebody has it open, or it runs, it is only marked for it.
void deleteService(const wchar_t* name);

/// Starts a service, which is open from the beginning.
class ServiceStarter {
 public:
  explicit ServiceStarter(const wchar_t* name);

  /// Returns when the service's program runs. No list and an empty one are the same.
  void start(const OptionalTexts& arguments) const;

 private:
  ServiceOperation<decltype(&StartServiceW)> start_;
};

/// Sends a control to a service. Returns the state in which it is then.
SERVICE_STATUS controlService(const wchar_t* name, DWORD control);

SERVICE_STATUS queryServiceStatus(const wchar_t* name);

/// The name that is shown for a service, by the name of its key, and the other way round; empty
/// when the system gives none.
WString serviceDisplayName(const wchar_t* keyName);
WString serviceKeyName(const wchar_t* displayName);

/// The key names of the services of these types in these states; no list when there are none.
OptionalTexts enumerateServices(DWORD types, DWORD states);

}  // namespace corvane
