#include <com_corvane_wizard_platform_win32_Win32SystemUtilServiceImpl.h>
#include <com_corvane_wizard_platform_win32_Win32WizardInitializeServiceImpl.h>

#include "bridge/java/java_values.h"
#include "bridge/java/native_text.h"
#include "bridge/win32/platform.h"
#include "environment/process_affinity.h"
#include "environment/system_info.h"

// The natives of Win32SystemUtilServiceImpl and Win32WizardInitializeServiceImpl. What each does
// and raises is said at its Java declaration.

namespace {

constexpr jint kServiceLevelFailed = -70005;
constexpr jint kBootDirectoryFailed = -70009;

}  // namespace

extern "C" {

JNIEXPORT jstring JNICALL
Java_com_corvane_wizard_platform_win32_Win32SystemUtilServiceImpl_getOSServiceLevel(JNIEnv* env,
                                                                                    jobject) {
  return nativeText(env, kServiceLevelFailed, [](WString& text) { text = serviceLevel(); });
}

JNIEXPORT jboolean JNICALL
Java_com_corvane_wizard_platform_win32_Win32SystemUtilServiceImpl_isWinNTor2K(JNIEnv* env,
                                                                              jobject) {
  return nativeFrame(env, [] { return toJavaBoolean(isWindowsNT()); });
}

JNIEXPORT jboolean JNICALL
Java_com_corvane_wizard_platform_win32_Win32SystemUtilServiceImpl_isWinME(JNIEnv* env, jobject) {
  return nativeFrame(env, [] { return toJavaBoolean(isWindowsME()); });
}

JNIEXPORT jstring JNICALL
Java_com_corvane_wizard_platform_win32_Win32SystemUtilServiceImpl_getBootDirectory(JNIEnv* env,
                                                                                   jobject) {
  return nativeFrame(env, kBootDirectoryFailed, [&] {
    return newJavaString(env, bootDirectory());
  });
}

JNIEXPORT void JNICALL
Java_com_corvane_wizard_platform_win32_Win32WizardInitializeServiceImpl_setProcessAffinity(
    JNIEnv* env,
    jobject) {
  nativeFrame(env, [] { useOneProcessor(); });
}

}  // extern "C"
