#include <com_corvane_wizard_platform_win32_environment_WindowsEnvironment.h>

#include "bridge/java/java_values.h"
#include "bridge/java/jni_string.h"
#include "bridge/java/native_frame.h"
#include "bridge/win32/platform.h"
#include "environment/process_environment.h"
#include "environment/stored_environment.h"

using namespace corvane;

// The natives of environment.WindowsEnvironment. What each does and raises is said at its Java
// declaration.

namespace {

constexpr jint kStoreFailed = -70000;
constexpr jint kSetFailed = -70008;
constexpr jint kReadFailed = -70010;

StoredEnvironment environmentOfNT(jboolean system) {
  return fromJavaBoolean(system) ? StoredEnvironment::ofMachine() : StoredEnvironment::ofUser();
}

jstring textOrNull(JNIEnv* env, const std::optional<WString>& text) {
  return text ? newJavaString(env, *text) : nullptr;
}

jstring stored(JNIEnv* env, const StoredEnvironment& variables, jstring name) {
  const JniString variable(env, name);
  return textOrNull(env, variables.get(variable.get()));
}

void store(JNIEnv* env, const StoredEnvironment& variables, jstring name, jstring value) {
  const JniString variable(env, name);
  const JniString text(env, value);
  variables.set(variable.get(), text.get());
}

}  // namespace

extern "C" {

NATIVE(jstring, environment_WindowsEnvironment, getProcessEnvironmentVariable)
(JNIEnv* env, jobject, jstring name) {
  return nativeFrame(env, [&] {
    const JniString variable(env, name);
    return hasText(variable.get()) ? textOrNull(env, processVariable(variable.get()))
                                   : newJavaString(env, {});
  });
}

NATIVE(void, environment_WindowsEnvironment, setProcessEnvironmentVariable)
(JNIEnv* env, jobject, jstring name, jstring value) {
  nativeFrame(env, kSetFailed, [&] {
    const JniString variable(env, name);
    const JniString text(env, value);
    if (hasText(variable.get())) {
      setProcessVariable(variable.get(), text.get());
    }
  });
}

NATIVE(jstring, environment_WindowsEnvironment, winNTGetRawEnvironmentVariable)
(JNIEnv* env, jobject, jstring name, jboolean system) {
  return nativeFrame(env, kReadFailed, [&] {
    return isWindowsNT() ? stored(env, environmentOfNT(system), name) : nullptr;
  });
}

NATIVE(void, environment_WindowsEnvironment, winNTSetEnvironmentVariable)
(JNIEnv* env, jobject, jstring name, jstring value, jboolean system) {
  nativeFrame(env, kStoreFailed, [&] {
    if (isWindowsNT()) {
      store(env, environmentOfNT(system), name, value);
    }
  });
}

NATIVE(jstring, environment_WindowsEnvironment, winMEGetRawEnvironmentVariable)
(JNIEnv* env, jobject, jstring name) {
  return nativeFrame(env, kReadFailed, [&] {
    return isWindowsME() ? stored(env, StoredEnvironment::ofWindowsME(), name) : nullptr;
  });
}

NATIVE(void, environment_WindowsEnvironment, winMESetEnvironmentVariable)
(JNIEnv* env, jobject, jstring name, jstring value) {
  nativeFrame(env, kStoreFailed, [&] {
    if (isWindowsME()) {
      store(env, StoredEnvironment::ofWindowsME(), name, value);
    }
  });
}

}  // extern "C"
