#include <com_corvane_wizard_platform_win32_Win32FileServiceImpl.h>

#include "bridge/java/jni_string.h"
#include "bridge/java/native_text.h"
#include "bridge/win32/platform.h"
#include "file/properties/file_owner.h"
#include "file/properties/file_times.h"
#include "file/properties/path_attributes.h"

using namespace corvane;

// The natives of Win32FileServiceImpl for attributes, owners and times. What each does, takes and
// raises is said at its Java declaration.

namespace {

// What Java is told when a native fails.
constexpr jint kGetAttributesFailed = -30000;
constexpr jint kSetAttributesFailed = -30001;
constexpr jint kSetTimesFailed = -30007;
constexpr jint kGetGroupFailed = -30008;
constexpr jint kSetGroupFailed = -30009;
constexpr jint kSetCreatedFailed = -30011;
constexpr jint kGetOwnerFailed = -30012;
constexpr jint kSetOwnerFailed = -30013;
constexpr jint kSetModifiedFailed = -30016;

/// A group of a domain that is not trusted any more has no name that could be asked for; the file
/// is none the worse for it, and the answer is "".
WString principalName(const wchar_t* path, Principal which) {
  try {
    return readPrincipal(path, which).name;
  } catch (const Win32Failure& failure) {
    if (which != Principal::kGroup || failure.code() != ERROR_TRUSTED_RELATIONSHIP_FAILURE) {
      throw;
    }
    return {};
  }
}

/// Windows 9x has no owners: "" is the answer there.
jstring getPrincipal(JNIEnv* env, jint code, jstring path, Principal which) {
  return nativeText(env, code, [&](WString& name) {
    if (isWindows9x()) {
      return;
    }
    const JniString file(env, path);
    name = principalName(file.get(), which);
  });
}

/// Windows 9x has no owners: nothing happens there.
void setPrincipal(JNIEnv* env, jint code, jstring path, Principal which, jstring account) {
  nativeFrame(env, code, [&] {
    if (isWindows9x()) {
      return;
    }
    const JniString file(env, path);
    const JniString name(env, account);
    writePrincipal(file.get(), which, name.get());
  });
}

void setTimes(JNIEnv* env, jint code, jstring file, const FileTimes& times) {
  nativeFrame(env, code, [&] {
    const JniString path(env, file);
    setFileTimes(path.get(), times);
  });
}

}  // namespace

extern "C" {

NATIVE(jobject, Win32FileServiceImpl, getFileAttributes)(JNIEnv* env, jobject, jstring path) {
  return nativeFrame(env, kGetAttributesFailed, [&] {
    const JniString file(env, path);
    return getPathAttributes(env, file.get());
  });
}

NATIVE(void, Win32FileServiceImpl, setFileAttributes)
(JNIEnv* env, jobject, jstring path, jobject attributes) {
  nativeFrame(env, kSetAttributesFailed, [&] {
    const JniString file(env, path);
    setPathAttributes(env, file.get(), attributes);
  });
}

NATIVE(void, Win32FileServiceImpl, win32SetFileCreated)
(JNIEnv* env, jobject, jstring path, jlong created) {
  setTimes(env, kSetCreatedFailed, path, {.created = created});
}

NATIVE(void, Win32FileServiceImpl, win32SetFileModified)
(JNIEnv* env, jobject, jstring path, jlong modified) {
  setTimes(env, kSetModifiedFailed, path, {.modified = modified});
}

NATIVE(void, Win32FileServiceImpl, win32SetFileTimes)
(JNIEnv* env, jobject, jstring path, jlong created, jlong accessed, jlong modified) {
  setTimes(env,
           kSetTimesFailed,
           path,
           {.created = created, .accessed = accessed, .modified = modified});
}

NATIVE(jstring, Win32FileServiceImpl, getFileOwner)(JNIEnv* env, jobject, jstring path) {
  return getPrincipal(env, kGetOwnerFailed, path, Principal::kOwner);
}

NATIVE(jstring, Win32FileServiceImpl, getFileOwnerGroup)(JNIEnv* env, jobject, jstring path) {
  return getPrincipal(env, kGetGroupFailed, path, Principal::kGroup);
}

NATIVE(void, Win32FileServiceImpl, setFileOwner)
(JNIEnv* env, jobject, jstring path, jstring owner) {
  setPrincipal(env, kSetOwnerFailed, path, Principal::kOwner, owner);
}

NATIVE(void, Win32FileServiceImpl, setFileOwnerGroup)
(JNIEnv* env, jobject, jstring path, jstring group) {
  setPrincipal(env, kSetGroupFailed, path, Principal::kGroup, group);
}

}  // extern "C"
