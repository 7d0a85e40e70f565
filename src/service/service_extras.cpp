#include "service/service_extras.h"

#include <algorithm>

#include "security/privilege_enabler.h"
#include "service/service_answer.h"

namespace corvane {

namespace {

using ServiceQuery = ServiceOperation<decltype(&QueryServiceConfig2W)>;

std::optional<ServiceAnswer> ask(const ServiceQuery& query, DWORD level) {
  return askServiceManager(ERROR_INSUFFICIENT_BUFFER, [&](void* buffer, DWORD size, DWORD* needed) {
    return query(level, static_cast<BYTE*>(buffer), size, needed);
  });
}

OptionalText descriptionIn(const ServiceAnswer& answer) {
  OptionalText text = answer.textAt(answer.record<SERVICE_DESCRIPTIONW>().lpDescription);
  return hasText(text.get()) ? std::move(text) : OptionalText();
}

FailureActions actionsIn(const ServiceAnswer& answer) {
  const auto& told = answer.record<SERVICE_FAILURE_ACTIONSW>();
  FailureActions failure;
  failure.resetPeriod = told.dwResetPeriod;
  failure.rebootMessage = answer.textAt(told.lpRebootMsg);
  failure.command = answer.textAt(told.lpCommand);
  const auto actions = answer.records<SC_ACTION>(told.lpsaActions, told.cActions);
  failure.actions.assign(actions.begin(), actions.end());
  return failure;
}

ScopedDatabaseLock lockDatabase(const FailureActionFunctions& call, SC_HANDLE manager) {
  ScopedDatabaseLock lock({call.unlockServiceDatabase}, call.lockServiceDatabase(manager));
  throwUnless(static_cast<bool>(lock));
  return lock;
}

/// Texts that the system only reads and declares otherwise.
wchar_t* writable(const wchar_t* text) {
  return const_cast<wchar_t*>(text);
}

}  // namespace

OptionalText queryServiceDescription(const wchar_t* name) {
  const ServiceQuery query(SERVICE_FUNCTION(QueryServiceConfig2W), name, kQueryServiceConfig);
  try {
    const auto answer = ask(query, SERVICE_CONFIG_DESCRIPTION);
    return answer ? descriptionIn(*answer) : OptionalText();
  } catch (const Win32Failure&) {
    return {};
  }
}

void changeServiceDescription(const wchar_t* name, const wchar_t* description) {
  const ServiceOperation change(SERVICE_FUNCTION(ChangeServiceConfig2W),
                                name,
                                kChangeServiceConfig);
  // Null would leave the old one.
  SERVICE_DESCRIPTIONW record = {writable(description == nullptr ? L"" : description)};
  throwUnless(change(DWORD{SERVICE_CONFIG_DESCRIPTION}, &record) != FALSE);
}

std::optional<FailureActions> queryFailureActions(const wchar_t* name) {
  const ServiceQuery query(SERVICE_FUNCTION(QueryServiceConfig2W), name, kQueryServiceConfig);
  const auto answer = ask(query, SERVICE_CONFIG_FAILURE_ACTIONS);
  return answer ? std::optional(actionsIn(*answer)) : std::nullopt;
}

FailureActionsChanger::FailureActionsChanger(const FailureActionFunctions& call,
                                             const wchar_t* name)
    : call_(call),
      manager_(openServiceManager()),
      lock_(lockDatabase(call, manager_.get())),
      service_(openService(manager_.get(), name, SERVICE_ALL_ACCESS)) {}

void FailureActionsChanger::change(const FailureActions& actions) const {
  std::vector<SC_ACTION> list = actions.actions;
  // Of none, too, there is a place: with null the system leaves the actions that there are.
  list.reserve(1);
  SERVICE_FAILURE_ACTIONSW record = {actions.resetPeriod,
                                     writable(actions.rebootMessage.get()),
                                     writable(actions.command.get()),
                                     static_cast<DWORD>(list.size()),
                                     list.data()};
  const bool reboots = std::any_of(list.begin(), list.end(), [](const SC_ACTION& action) {
    return action.Type == SC_ACTION_REBOOT;
  });
  std::optional<ShutdownPrivilegeEnabler> privilege;
  if (reboots) {
    privilege.emplace();
  }
  throwUnless(call_.changeServiceConfig2(service_.get(),
                                         DWORD{SERVICE_CONFIG_FAILURE_ACTIONS},
                                         &record) != FALSE);
}

std::optional<SERVICE_STATUS_PROCESS> queryServiceStatusProcess(const wchar_t* name) {
  const ServiceOperation query(SERVICE_FUNCTION(QueryServiceStatusEx), name, kQueryServiceStatus);
  const auto answer =
      askServiceManager(ERROR_INSUFFICIENT_BUFFER, [&](void* buffer, DWORD size, DWORD* needed) {
        return query(SC_STATUS_PROCESS_INFO, static_cast<BYTE*>(buffer), size, needed);
      });
  return answer ? std::optional(answer->record<SERVICE_STATUS_PROCESS>()) : std::nullopt;
}

}  // namespace corvane
