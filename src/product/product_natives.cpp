#include <com_corvane_wizard_platform_win32_Win32ProductServiceImpl.h>

#include "bridge/java/java_values.h"
#include "bridge/java/jni_string.h"
#include "bridge/java/native_frame.h"
#include "product/uninstaller_entry.h"

using namespace corvane;

// The natives of Win32ProductServiceImpl. What each does, takes and raises is said at its Java
// declaration.

namespace {

constexpr jint kRegisterFailed = -90000;
constexpr jint kUnregisterFailed = -90001;

}  // namespace

extern "C" {

NATIVE(void, Win32ProductServiceImpl, win32RegisterUninstaller)
(JNIEnv* env, jobject, jstring keyName, jstring displayName, jstring uninstallString) {
  nativeFrame(env, kRegisterFailed, [&] {
    const WString key = textFromJava(env, keyName);
    const WString display = textFromJava(env, displayName);
    const JniString command(env, uninstallString);
    registerUninstaller(key, display, command.get());
  });
}

NATIVE(void, Win32ProductServiceImpl, win32UnregisterUninstaller)
(JNIEnv* env, jobject, jstring keyName, jstring otherKeyName) {
  nativeFrame(env, kUnregisterFailed, [&] {
    const WString key = textFromJava(env, keyName);
    const WString other = textFromJava(env, otherKeyName);
    unregisterUninstaller(key, other);
  });
}

}  // extern "C"
