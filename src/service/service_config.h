#pragma once

#include <windows.h>

#include <optional>

#include "bridge/win32/optional_text.h"
#include "bridge/win32/secret_text.h"
#include "service/service_manager.h"

namespace corvane {

/// What a service is, as it is made, changed and told. In a change, SERVICE_NO_CHANGE, an absent
/// text and dependencies that are none leave what there is. The names and the order are those of
/// Java's NTServiceConfig.
struct ServiceConfig {
  OptionalText displayName;
  DWORD serviceType = SERVICE_NO_CHANGE;  // without SERVICE_INTERACTIVE_PROCESS, which is the next
  bool enableDesktopInteraction = false;
  DWORD startType = SERVICE_NO_CHANGE;
  DWORD errorControl = SERVICE_NO_CHANGE;
  OptionalText command;
  OptionalText loadOrderGroup;
  OptionalTexts dependencies;
  OptionalText userName;
  SecretText password;  // never told
};

// All throw Win32Failure, with ERROR_BAD_ARGUMENTS for a dependency that is absent, and
// NoServiceManager.

/// What a service is; nothing when the system says that there is nothing to tell.
std::optional<ServiceConfig> queryServiceConfig(const wchar_t* name);

/// Makes a service; the manager is open from the beginning.
class ServiceCreator {
 public:
  ServiceCreator();

  /// Without a user name the service runs as LocalSystem, and there is no password then.
  void create(const wchar_t* name, const ServiceConfig& config) const;

 private:
  RuntimeFunction<decltype(&CreateServiceW)> createService_;
  ScopedServiceHandle manager_;
};

/// Changes what a service is; it is open from the beginning.
class ServiceChanger {
 public:
  explicit ServiceChanger(const wchar_t* name);

  /// User name and password are handed over as they are: an empty one is not an absent one.
  void change(const ServiceConfig& config) const;

 private:
  ServiceOperation<decltype(&ChangeServiceConfigW)> changeServiceConfig_;
};

}  // namespace corvane
