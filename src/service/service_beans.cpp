#include "service/service_beans.h"

#include <climits>
#include <variant>

#include "bridge/java/java_bean.h"

namespace corvane {

namespace {

#define SERVICE_CLASS(name) "com/corvane/wizard/platform/win32/win32service/" #name

/// A property of a Java object that is a number, and where a record has it.
template <class Record>
struct Number {
  using Member = DWORD Record::*;
  const char* property;
  Member number;
};

constexpr Number<SERVICE_STATUS> kStatus[] = {
    {"ServiceType", &SERVICE_STATUS::dwServiceType},
    {"CurrentState", &SERVICE_STATUS::dwCurrentState},
    {"ControlsAccepted", &SERVICE_STATUS::dwControlsAccepted},
    {"Win32ExitCode", &SERVICE_STATUS::dwWin32ExitCode},
    {"ServiceSpecificExitCode", &SERVICE_STATUS::dwServiceSpecificExitCode},
    {"CheckPoint", &SERVICE_STATUS::dwCheckPoint},
    {"WaitHint", &SERVICE_STATUS::dwWaitHint},
};

constexpr Number<SERVICE_STATUS_PROCESS> kStatusProcess[] = {
    {"ServiceType", &SERVICE_STATUS_PROCESS::dwServiceType},
    {"CurrentState", &SERVICE_STATUS_PROCESS::dwCurrentState},
    {"ControlsAccepted", &SERVICE_STATUS_PROCESS::dwControlsAccepted},
    {"Win32ExitCode", &SERVICE_STATUS_PROCESS::dwWin32ExitCode},
    {"ServiceSpecificExitCode", &SERVICE_STATUS_PROCESS::dwServiceSpecificExitCode},
    {"CheckPoint", &SERVICE_STATUS_PROCESS::dwCheckPoint},
    {"WaitHint", &SERVICE_STATUS_PROCESS::dwWaitHint},
    {"ProcessId", &SERVICE_STATUS_PROCESS::dwProcessId},
    {"ServiceFlags", &SERVICE_STATUS_PROCESS::dwServiceFlags},
};

/// A property of NTServiceConfig, read and written by the same name.
struct ConfigProperty {
  const char* property;
  std::variant<DWORD ServiceConfig::*,
               bool ServiceConfig::*,
               OptionalText ServiceConfig::*,
               OptionalTexts ServiceConfig::*,
               SecretText ServiceConfig::*>
      member;
};

constexpr ConfigProperty kConfig[] = {
    {"DisplayName", &ServiceConfig::displayName},
    {"ServiceType", &ServiceConfig::serviceType},
    {"EnableDesktopInteraction", &ServiceConfig::enableDesktopInteraction},
    {"StartType", &ServiceConfig::startType},
    {"ErrorControl", &ServiceConfig::errorControl},
    {"Command", &ServiceConfig::command},
    {"LoadOrderGroup", &ServiceConfig::loadOrderGroup},
    {"Dependencies", &ServiceConfig::dependencies},
    {"UserName", &ServiceConfig::userName},
    {"Password", &ServiceConfig::password},
};

constexpr const char* kConfigClass = SERVICE_CLASS(NTServiceConfig);
constexpr const char* kFailureActionsClass = SERVICE_CLASS(Win2kServiceFailureActions);
constexpr const char* kActionClass = SERVICE_CLASS(Win2kSCAction);

template <class Record, size_t count>
jobject newNumbers(JNIEnv* env,
                   const char* className,
                   const Number<Record> (&numbers)[count],
                   const Record& record) {
  return newBean(env, className, [&](const BeanWriter& bean) {
    for (const Number<Record>& number : numbers) {
      bean.set(number.property, record.*number.number);
    }
  });
}

void addActions(JNIEnv* env, const BeanWriter& bean, const std::vector<SC_ACTION>& actions) {
  if (actions.empty()) {
    return;
  }
  const JavaClass type(env, kActionClass);
  if (!isFound(env, type)) {
    return;
  }
  const JavaConstructor<jint, jint> construct(env, type.get(), "(II)V");
  if (!isFound(env, construct)) {
    return;
  }
  const auto add = bean.find<jobject>("addAction", "(L" SERVICE_CLASS(Win2kSCAction) ";)V");
  if (!add) {
    return;
  }
  for (const SC_ACTION& action : actions) {
    const auto made = construct(static_cast<jint>(action.Type), static_cast<jint>(action.Delay));
    throwIfJavaExceptionPending(env);
    add(bean.get(), made.get());
  }
}

SC_ACTION_TYPE actionType(DWORD type) {
  switch (type) {
    case SC_ACTION_RESTART:
    case SC_ACTION_REBOOT:
    case SC_ACTION_RUN_COMMAND:
      return static_cast<SC_ACTION_TYPE>(type);
    default:
      return SC_ACTION_NONE;
  }
}

/// No action for null, and where there is no class for them.
SC_ACTION readAction(JNIEnv* env, jobject object) {
  const BeanReader bean(env, kActionClass, object);
  if (object == nullptr || !bean) {
    return {};
  }
  DWORD delay = INFINITE;
  DWORD type = SC_ACTION_NONE;
  bean.get("Delay", delay);
  bean.get("ActionType", type);
  return {actionType(type), delay};
}

std::vector<SC_ACTION> readActions(JNIEnv* env, const BeanReader& bean, jobject actions) {
  auto count = static_cast<DWORD>(-1);
  bean.get("ActionCount", count);
  if (count > INT_MAX) {
    throw Win32Failure(ERROR_BAD_ARGUMENTS);
  }
  const auto at = bean.find<jobject(jint)>("getActionAt", "(I)L" SERVICE_CLASS(Win2kSCAction) ";");
  std::vector<SC_ACTION> list;
  for (DWORD index = 0; index < count; ++index) {
    const LocalReference action(env, at ? at(actions, static_cast<jint>(index)) : nullptr);
    list.push_back(readAction(env, action.get()));
  }
  return list;
}

/// A text that Windows does not have is not set.
void setIfPresent(const BeanWriter& bean, const char* property, const OptionalText& text) {
  if (text.get() != nullptr) {
    bean.set(property, text);
  }
}

}  // namespace

jobject newServiceStatus(JNIEnv* env, const SERVICE_STATUS& status) {
  return newNumbers(env, SERVICE_CLASS(NTServiceStatus), kStatus, status);
}

jobject newServiceStatusProcess(JNIEnv* env, const SERVICE_STATUS_PROCESS& status) {
  return newNumbers(env, SERVICE_CLASS(Win2kServiceStatusProcess), kStatusProcess, status);
}

jobject newServiceConfig(JNIEnv* env, const ServiceConfig& config) {
  return newBean(env, kConfigClass, [&](const BeanWriter& bean) {
    for (const ConfigProperty& each : kConfig) {
      std::visit([&](auto member) { bean.set(each.property, config.*member); }, each.member);
    }
  });
}

ServiceConfig readServiceConfig(JNIEnv* env, jobject config) {
  const BeanReader bean(env, kConfigClass, config);
  ServiceConfig read;
  for (const ConfigProperty& each : kConfig) {
    std::visit([&](auto member) { bean.get(each.property, read.*member); }, each.member);
  }
  return read;
}

jobject newFailureActions(JNIEnv* env, const FailureActions& actions) {
  return newBean(env, kFailureActionsClass, [&](const BeanWriter& bean) {
    bean.set("ResetPeriod", actions.resetPeriod);
    setIfPresent(bean, "RebootMsg", actions.rebootMessage);
    setIfPresent(bean, "Command", actions.command);
    addActions(env, bean, actions.actions);
  });
}

FailureActions readFailureActions(JNIEnv* env, jobject actions) {
  const BeanReader bean(env, kFailureActionsClass, actions);
  FailureActions read;
  bean.get("RebootMsg", read.rebootMessage);
  bean.get("Command", read.command);
  bean.get("ResetPeriod", read.resetPeriod);
  read.actions = readActions(env, bean, actions);
  return read;
}

}  // namespace corvane
