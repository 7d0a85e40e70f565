#pragma once

#include <jni.h>
#include <windows.h>

#include "service/service_config.h"
#include "service/service_extras.h"

namespace corvane {

// Between what the service manager takes and tells and the Java objects of the package
// win32service. What a Java class lacks is done without (see java_bean.h); a class or constructor
// that is missing makes null. What their methods throw is PendingJavaException.

jobject newServiceStatus(JNIEnv* env, const SERVICE_STATUS& status);
jobject newServiceStatusProcess(JNIEnv* env, const SERVICE_STATUS_PROCESS& status);

jobject newServiceConfig(JNIEnv* env, const ServiceConfig& config);
ServiceConfig readServiceConfig(JNIEnv* env, jobject config);

jobject newFailureActions(JNIEnv* env, const FailureActions& actions);

/// A kind of action that is none of Windows' becomes "none". Throws Win32Failure with
/// ERROR_BAD_ARGUMENTS for a count of actions below 0, or none at all.
FailureActions readFailureActions(JNIEnv* env, jobject actions);

}  // namespace corvane
