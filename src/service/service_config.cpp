#include "service/service_config.h"

#include <vector>

#include "bridge/win32/multi_string.h"
#include "service/service_answer.h"

namespace corvane {

namespace {

/// The type as Windows has it, with the flag in it. It changes nothing in SERVICE_NO_CHANGE.
DWORD typeForWindows(const ServiceConfig& config) {
  return config.serviceType | (config.enableDesktopInteraction ? SERVICE_INTERACTIVE_PROCESS : 0U);
}

/// Without dependencies there is no list: that makes a service that has none, and leaves those of
/// one that has.
ByteBuffer packDependencies(const OptionalTexts& dependencies) {
  std::vector<WString> texts;
  if (dependencies) {
    for (const OptionalText& dependency : *dependencies) {
      if (dependency.get() == nullptr) {
        throw Win32Failure(ERROR_BAD_ARGUMENTS);
      }
      texts.emplace_back(dependency.get());
    }
  }
  return texts.empty() ? ByteBuffer() : packMultiString(texts);
}

/// An empty text counts as absent.
const wchar_t* textOrNull(const wchar_t* text) {
  return hasText(text) ? text : nullptr;
}

ServiceConfig configIn(const ServiceAnswer& answer) {
  const auto& told = answer.record<QUERY_SERVICE_CONFIGW>();
  ServiceConfig config;
  config.displayName = answer.textAt(told.lpDisplayName);
  config.serviceType = told.dwServiceType & ~DWORD{SERVICE_INTERACTIVE_PROCESS};
  config.enableDesktopInteraction = (told.dwServiceType & SERVICE_INTERACTIVE_PROCESS) != 0;
  config.startType = told.dwStartType;
  config.errorControl = told.dwErrorControl;
  config.command = answer.textAt(told.lpBinaryPathName);
  config.loadOrderGroup = answer.textAt(told.lpLoadOrderGroup);
  config.dependencies = answer.textsAt(told.lpDependencies);
  config.userName = answer.textAt(told.lpServiceStartName);
  return config;
}

}  // namespace

std::optional<ServiceConfig> queryServiceConfig(const wchar_t* name) {
  const ServiceOperation query(SERVICE_FUNCTION(QueryServiceConfigW), name, kQueryServiceConfig);
  const auto answer =
      askServiceManager(ERROR_INSUFFICIENT_BUFFER, [&](void* buffer, DWORD size, DWORD* needed) {
        return query(static_cast<QUERY_SERVICE_CONFIGW*>(buffer), size, needed);
      });
  return answer ? std::optional(configIn(*answer)) : std::nullopt;
}

ServiceCreator::ServiceCreator()
    : createService_(SERVICE_FUNCTION(CreateServiceW)), manager_(openServiceManager()) {}

void ServiceCreator::create(const wchar_t* name, const ServiceConfig& config) const {
  const ByteBuffer dependencies = packDependencies(config.dependencies);
  const wchar_t* const userName = textOrNull(config.userName.get());
  const wchar_t* const password = userName == nullptr ? nullptr : textOrNull(config.password.get());
  const ScopedServiceHandle service(createService_(manager_.get(),
                                                   name,
                                                   config.displayName.get(),
                                                   DWORD{SERVICE_ALL_ACCESS},
                                                   typeForWindows(config),
                                                   config.startType,
                                                   config.errorControl,
                                                   config.command.get(),
                                                   config.loadOrderGroup.get(),
                                                   nullptr,
                                                   dependencies.data<wchar_t>(),
                                                   userName,
                                                   password));
  throwUnless(static_cast<bool>(service));
}

ServiceChanger::ServiceChanger(const wchar_t* name)
    : changeServiceConfig_(SERVICE_FUNCTION(ChangeServiceConfigW), name, kChangeServiceConfig) {}

void ServiceChanger::change(const ServiceConfig& config) const {
  const ByteBuffer dependencies = packDependencies(config.dependencies);
  throwUnless(changeServiceConfig_(typeForWindows(config),
                                   config.startType,
                                   config.errorControl,
                                   config.command.get(),
                                   config.loadOrderGroup.get(),
                                   nullptr,
                                   dependencies.data<wchar_t>(),
                                   config.userName.get(),
                                   config.password.get(),
                                   config.displayName.get()) != FALSE);
}

}  // namespace corvane
