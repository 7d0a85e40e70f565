#include <com_corvane_wizard_platform_win32_Win32SecurityServiceImpl.h>

#include "bridge/java/java_values.h"
#include "bridge/java/native_frame.h"
#include "bridge/win32/platform.h"
#include "security/admin_membership.h"

using namespace corvane;

// The natives of Win32SecurityServiceImpl. What each does and raises is said at its Java
// declaration.

namespace {

constexpr jint kIsAdminFailed = -110000;

}  // namespace

extern "C" {

NATIVE(jboolean, Win32SecurityServiceImpl, isCurrentUserAdmin)(JNIEnv* env, jobject) {
  return nativeFrame(env, kIsAdminFailed, [] {
    return toJavaBoolean(isWindows9x() || queryAdminMembership());
  });
}

}  // extern "C"
