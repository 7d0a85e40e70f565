#include <com_corvane_wizard_platform_win32_Win32ServiceImpl.h>

#include "bridge/java/java_values.h"
#include "bridge/java/jni_string.h"
#include "bridge/java/native_frame.h"
#include "bridge/win32/platform.h"
#include "service/service_beans.h"
#include "service/service_config.h"
#include "service/service_control.h"
#include "service/service_extras.h"

using namespace corvane;

// The natives of Win32ServiceImpl for services. What each does, takes and raises is said at its
// Java declaration.

namespace {

// What Java is told when a native fails. The first five have six digits and all others seven, and
// so it stays: installers know these numbers.
constexpr jint kCreateFailed = -120000;
constexpr jint kDeleteFailed = -120001;
constexpr jint kStartFailed = -120002;
constexpr jint kControlFailed = -120003;
constexpr jint kChangeConfigFailed = -120004;
constexpr jint kQueryConfigFailed = -1200005;
constexpr jint kQueryStatusFailed = -1200006;
constexpr jint kGetDisplayNameFailed = -1200007;
constexpr jint kGetKeyNameFailed = -1200008;
constexpr jint kEnumerateFailed = -1200009;
constexpr jint kQueryFailureActionsFailed = -1200010;
constexpr jint kQueryDescriptionFailed = -1200011;
constexpr jint kChangeDescriptionFailed = -1200012;
constexpr jint kChangeFailureActionsFailed = -1200013;
constexpr jint kQueryStatusProcessFailed = -1200014;

/// Something stands in the way of telling whether a service exists: the number by which Windows
/// says that it does, for what cannot be opened for any reason but its absence is most likely
/// there.
constexpr jint kExistenceNotTold = ERROR_SERVICE_EXISTS;

/// The frame of a native that reaches for the service manager. Where that cannot be reached for
/// want of a function, Java gets the default value and no exception: see NoServiceManager.
template <class Work>
auto serviceFrame(JNIEnv* env, jint code, const Work& work) noexcept -> decltype(work()) {
  return nativeFrame(env, code, [&] {
    try {
      return work();
    } catch (const NoServiceManager&) {
      return decltype(work())();
    }
  });
}

/// For natives that do not leave it to Windows to refuse what is no name or no object.
void requireArguments(const JniString& name, bool others = true) {
  if (!hasText(name.get()) || !others) {
    throw Win32Failure(ERROR_BAD_ARGUMENTS);
  }
}

jstring textOrNull(JNIEnv* env, const WString& text) {
  return text.empty() ? nullptr : newJavaString(env, text);
}

}  // namespace

extern "C" {

NATIVE(jboolean, Win32ServiceImpl, serviceExists)(JNIEnv* env, jobject, jstring serviceName) {
  // Two codes: the one of the description when no service can be asked for, which is that of a
  // machine and not of this service.
  return serviceFrame(env, kChangeDescriptionFailed, [&] {
    const JniString name(env, serviceName);
    const ScopedServiceHandle manager = openServiceManager();
    return serviceFrame(env, kExistenceNotTold, [&] {
      return toJavaBoolean(serviceExists(manager.get(), name.get()));
    });
  });
}

NATIVE(void, Win32ServiceImpl, createNTService)
(JNIEnv* env, jobject, jstring serviceName, jobject config) {
  serviceFrame(env, kCreateFailed, [&] {
    const JniString name(env, serviceName);
    requireArguments(name, config != nullptr);
    const ServiceCreator creator;
    creator.create(name.get(), readServiceConfig(env, config));
  });
}

NATIVE(void, Win32ServiceImpl, deleteNTService)(JNIEnv* env, jobject, jstring serviceName) {
  serviceFrame(env, kDeleteFailed, [&] {
    const JniString name(env, serviceName);
    deleteService(name.get());
  });
}

NATIVE(void, Win32ServiceImpl, startNTService)
(JNIEnv* env, jobject, jstring serviceName, jobjectArray arguments) {
  serviceFrame(env, kStartFailed, [&] {
    const JniString name(env, serviceName);
    const ServiceStarter starter(name.get());
    starter.start(optionalTextsFromJava(env, arguments));
  });
}

NATIVE(jobject, Win32ServiceImpl, controlNTService)
(JNIEnv* env, jobject, jstring serviceName, jint control) {
  return serviceFrame(env, kControlFailed, [&] {
    const JniString name(env, serviceName);
    return newServiceStatus(env, controlService(name.get(), static_cast<DWORD>(control)));
  });
}

NATIVE(void, Win32ServiceImpl, changeNTServiceConfig)
(JNIEnv* env, jobject, jstring serviceName, jobject config) {
  serviceFrame(env, kChangeConfigFailed, [&] {
    const JniString name(env, serviceName);
    requireArguments(name, config != nullptr);
    const ServiceChanger changer(name.get());
    changer.change(readServiceConfig(env, config));
  });
}

NATIVE(jobject, Win32ServiceImpl, queryNTServiceConfig)
(JNIEnv* env, jobject, jstring serviceName) {
  return serviceFrame(env, kQueryConfigFailed, [&] {
    const JniString name(env, serviceName);
    requireArguments(name);
    const auto config = queryServiceConfig(name.get());
    return config ? newServiceConfig(env, *config) : nullptr;
  });
}

NATIVE(jobject, Win32ServiceImpl, queryNTServiceStatus)
(JNIEnv* env, jobject, jstring serviceName) {
  return serviceFrame(env, kQueryStatusFailed, [&] {
    const JniString name(env, serviceName);
    requireArguments(name);
    return newServiceStatus(env, queryServiceStatus(name.get()));
  });
}

NATIVE(jstring, Win32ServiceImpl, getNTServiceDisplayName)
(JNIEnv* env, jobject, jstring serviceKeyName) {
  return serviceFrame(env, kGetDisplayNameFailed, [&] {
    const JniString keyName(env, serviceKeyName);
    return textOrNull(env, serviceDisplayName(keyName.get()));
  });
}

NATIVE(jstring, Win32ServiceImpl, getNTServiceKeyName)
(JNIEnv* env, jobject, jstring displayName) {
  return serviceFrame(env, kGetKeyNameFailed, [&] {
    const JniString name(env, displayName);
    return textOrNull(env, serviceKeyName(name.get()));
  });
}

NATIVE(jobjectArray, Win32ServiceImpl, enumNTServiceKeys)
(JNIEnv* env, jobject, jint serviceType, jint serviceState) {
  return serviceFrame(env, kEnumerateFailed, [&] {
    return newOptionalJavaStringArray(
        env,
        enumerateServices(static_cast<DWORD>(serviceType), static_cast<DWORD>(serviceState)));
  });
}

NATIVE(jboolean, Win32ServiceImpl, isWin2k)(JNIEnv* env, jobject) {
  return nativeFrame(env, [] { return toJavaBoolean(isWindows2000()); });
}

NATIVE(jstring, Win32ServiceImpl, queryWin2kServiceDescription)
(JNIEnv* env, jobject, jstring serviceName) {
  return serviceFrame(env, kQueryDescriptionFailed, [&] {
    const JniString name(env, serviceName);
    requireArguments(name);
    return newOptionalJavaString(env, queryServiceDescription(name.get()).get());
  });
}

NATIVE(void, Win32ServiceImpl, changeWin2kServiceDescription)
(JNIEnv* env, jobject, jstring serviceName, jstring description) {
  serviceFrame(env, kChangeDescriptionFailed, [&] {
    const JniString name(env, serviceName);
    const JniString text(env, description);
    requireArguments(name);
    changeServiceDescription(name.get(), text.get());
  });
}

NATIVE(jobject, Win32ServiceImpl, queryWin2kServiceFailureActions)
(JNIEnv* env, jobject, jstring serviceName) {
  return serviceFrame(env, kQueryFailureActionsFailed, [&] {
    const JniString name(env, serviceName);
    requireArguments(name);
    const auto actions = queryFailureActions(name.get());
    return actions ? newFailureActions(env, *actions) : nullptr;
  });
}

NATIVE(void, Win32ServiceImpl, changeWin2kServiceFailureActions)
(JNIEnv* env, jobject, jstring serviceName, jobject actions) {
  serviceFrame(env, kChangeFailureActionsFailed, [&] {
    const JniString name(env, serviceName);
    requireArguments(name, actions != nullptr);
    const FailureActionFunctions functions;
    if (!functions) {
      // With the description's code: what is missing came to Windows with the descriptions, and who
      // has met that with one of them knows it for the other.
      throwServiceException(env, kChangeDescriptionFailed, ERROR_PROC_NOT_FOUND);
      return;
    }
    const FailureActionsChanger changer(functions, name.get());
    changer.change(readFailureActions(env, actions));
  });
}

NATIVE(jobject, Win32ServiceImpl, queryWin2kServiceStatusProcess)
(JNIEnv* env, jobject, jstring serviceName) {
  return serviceFrame(env, kQueryStatusProcessFailed, [&] {
    const JniString name(env, serviceName);
    requireArguments(name);
    const auto status = queryServiceStatusProcess(name.get());
    return status ? newServiceStatusProcess(env, *status) : nullptr;
  });
}

}  // extern "C"
