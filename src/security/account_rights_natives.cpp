#include <com_corvane_wizard_platform_win32_security_WindowsAccountPrivilegeServiceImpl.h>

#include <utility>

#include "bridge/java/java_values.h"
#include "bridge/java/native_frame.h"
#include "bridge/java/nt_only.h"
#include "security/account_rights.h"

using namespace corvane;

// The natives of WindowsAccountPrivilegeServiceImpl. What each does, takes and raises is said at
// its Java declaration.

namespace {

// What Java is told when a native fails.
constexpr jint kAddFailed = -110100;
constexpr jint kRemoveAllFailed = -110101;
constexpr jint kRemoveFailed = -110102;
constexpr jint kEnumerateFailed = -110103;

RightsHolder holderFromJava(JNIEnv* env, jstring account, jstring system) {
  return {.account = textFromJava(env, account), .system = textFromJava(env, system)};
}

Rights rightsFromJava(JNIEnv* env, jobjectArray rights) {
  OptionalTexts texts = optionalTextsFromJava(env, rights);
  if (!texts) {
    throw Win32Failure(ERROR_INVALID_PARAMETER);
  }
  return std::move(*texts);
}

/// The frame of what changes rights. A status that the system counts as no error ends the work as a
/// failure does, but there is nothing to be raised.
template <class Work>
void changeFrame(JNIEnv* env, jint code, const Work& work) {
  nativeFrame(env, code, [&] { onNTFamily(env, [&] { reasonedOnly(work); }); });
}

/// The frame of what takes rights away. That there were none is told with a severity: what was
/// wanted is so all the same, and who calls can tell it from the failures after which it is not.
template <class Work>
void removalFrame(JNIEnv* env, jint code, const Work& work) {
  changeFrame(env, code, [&] {
    try {
      work();
    } catch (const Win32Failure& failure) {
      if (failure.code() != ERROR_FILE_NOT_FOUND) {
        throw;
      }
      throwServiceExceptionWithSeverity(env, code, failure.code());
    }
  });
}

/// The rights for Java, which gets an array beside an exception too: it is made before that is
/// raised. Without a record of rights the array is empty, and nothing is raised.
jobjectArray enumerateRights(JNIEnv* env, const RightsHolder& holder) {
  std::vector<WString> rights;
  uint32_t error = ERROR_SUCCESS;
  try {
    rights = accountRights(holder);
  } catch (const Win32Failure& failure) {
    error = failure.code();
  }
  jobjectArray const array = newJavaStringArray(env, rights);
  if (error != ERROR_SUCCESS && error != ERROR_FILE_NOT_FOUND) {
    throwServiceException(env, kEnumerateFailed, error);
  }
  return array;
}

}  // namespace

extern "C" {

NATIVE(void, security_WindowsAccountPrivilegeServiceImpl, nativeAddAccountRights)
(JNIEnv* env, jobject, jstring account, jstring system, jobjectArray rights) {
  changeFrame(env, kAddFailed, [&] {
    const RightsHolder holder = holderFromJava(env, account, system);
    addAccountRights(holder, rightsFromJava(env, rights));
  });
}

NATIVE(void, security_WindowsAccountPrivilegeServiceImpl, nativeRemoveAllRights)
(JNIEnv* env, jobject, jstring account, jstring system) {
  removalFrame(env, kRemoveAllFailed, [&] {
    removeAllAccountRights(holderFromJava(env, account, system));
  });
}

NATIVE(void, security_WindowsAccountPrivilegeServiceImpl, nativeRemoveAccountRights)
(JNIEnv* env, jobject, jstring account, jstring system, jobjectArray rights) {
  removalFrame(env, kRemoveFailed, [&] {
    const RightsHolder holder = holderFromJava(env, account, system);
    removeAccountRights(holder, rightsFromJava(env, rights));
  });
}

NATIVE(jobjectArray, security_WindowsAccountPrivilegeServiceImpl, nativeEnumerateAccountRights)
(JNIEnv* env, jobject, jstring account, jstring system) {
  return nativeFrame(env, kEnumerateFailed, [&] {
    return onNTFamily(env,
                      [&] { return enumerateRights(env, holderFromJava(env, account, system)); });
  });
}

}  // extern "C"
