#include <com_corvane_wizard_platform_win32_Win32ServiceImpl.h>

#include "bridge/java/java_values.h"
#include "bridge/java/jni_string.h"
#include "bridge/java/native_frame.h"
#include "file/properties/file_version.h"
#include "file/properties/fixed_file_info.h"
#include "file/properties/short_path.h"

using namespace corvane;

// The natives of Win32ServiceImpl for files. What each does, takes and raises is said at its Java
// declaration.

namespace {

constexpr jint kGetShortPathFailed = -1200015;

}  // namespace

extern "C" {

/// A file whose version cannot be read, for whatever reason, has none: nothing is raised. A Java
/// exception stays pending.
NATIVE(jobject, Win32ServiceImpl, getFixedFileInfo)(JNIEnv* env, jobject, jstring path) {
  return catchAll(
      [&] {
        const auto info = fixedFileInfo(JniString(env, path).get());
        return info ? newFixedFileInfo(env, *info) : nullptr;
      },
      [] {});
}

NATIVE(jstring, Win32ServiceImpl, getShortPath)(JNIEnv* env, jobject, jstring path) {
  return nativeFrame(env, kGetShortPathFailed, [&] {
    return newJavaString(env, shortPath(JniString(env, path).get()));
  });
}

}  // extern "C"
