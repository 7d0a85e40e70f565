#include <com_corvane_wizard_platform_win32_Win32SecurityServiceImpl.h>

#include "bridge/java/java_values.h"
#include "bridge/java/native_frame.h"
#include "bridge/win32/platform.h"
#include "security/admin_membership.h"

// The natives of Win32SecurityServiceImpl. What each does and raises is said at its Java
// declaration.

namespace {

constexpr jint kIsAdminFailed = -110000;

}  // namespace

extern "C" {

JNIEXPORT jboolean JNICALL
Java_com_corvane_wizard_platform_win32_Win32SecurityServiceImpl_isCurrentUserAdmin(JNIEnv* env,
                                                                                   jobject) {
  return nativeFrame(env, kIsAdminFailed, [] {
    return toJavaBoolean(isWindows9x() || queryAdminMembership());
  });
}

}  // extern "C"
