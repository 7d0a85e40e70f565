#include <com_corvane_wizard_platform_win32_Win32SystemUtilServiceImpl.h>
#include <com_corvane_wizard_platform_win32_Win32WizardInitializeServiceImpl.h>

#include "bridge/java/java_values.h"
#include "bridge/java/native_text.h"
#include "bridge/win32/platform.h"
#include "environment/process_affinity.h"
#include "environment/system_info.h"

using namespace corvane;

// The natives of Win32SystemUtilServiceImpl and Win32WizardInitializeServiceImpl. What each does
// and raises is said at its Java declaration.

namespace {

constexpr jint kServiceLevelFailed = -70005;
constexpr jint kBootDirectoryFailed = -70009;

}  // namespace

extern "C" {

NATIVE(jstring, Win32SystemUtilServiceImpl, getOSServiceLevel)(JNIEnv* env, jobject) {
  return nativeText(env, kServiceLevelFailed, [](WString& text) { text = serviceLevel(); });
}

NATIVE(jboolean, Win32SystemUtilServiceImpl, isWinNTor2K)(JNIEnv* env, jobject) {
  return nativeFrame(env, [] { return toJavaBoolean(isWindowsNT()); });
}

NATIVE(jboolean, Win32SystemUtilServiceImpl, isWinME)(JNIEnv* env, jobject) {
  return nativeFrame(env, [] { return toJavaBoolean(isWindowsME()); });
}

NATIVE(jstring, Win32SystemUtilServiceImpl, getBootDirectory)(JNIEnv* env, jobject) {
  return nativeFrame(env, kBootDirectoryFailed, [&] {
    return newJavaString(env, bootDirectory());
  });
}

NATIVE(void, Win32WizardInitializeServiceImpl, setProcessAffinity)(JNIEnv* env, jobject) {
  nativeFrame(env, [] { useOneProcessor(); });
}

}  // extern "C"
