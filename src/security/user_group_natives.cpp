#include <com_corvane_wizard_platform_win32_Win32SecurityServiceImpl.h>

#include "bridge/java/java_values.h"
#include "bridge/java/native_frame.h"
#include "bridge/java/nt_only.h"
#include "security/network_management.h"
#include "security/users_and_groups.h"

using namespace corvane;

// The natives of Win32SecurityServiceImpl for users and groups. What each does, takes and raises is
// said at its Java declaration.

namespace {

// What Java is told when a native fails.
constexpr jint kCreateGroupFailed = -110001;
constexpr jint kDeleteGroupFailed = -110002;
constexpr jint kCreateUserFailed = -110003;
constexpr jint kDeleteUserFailed = -110004;

// And when what all of them need fails.
constexpr jint kJoinFailed = kCreateGroupFailed;
constexpr jint kNoController = -110004;
constexpr jint kNoNetworkManagement = -110005;
constexpr jint kBadArgument = E_INVALIDARG;

template <class Work>
void accountFrame(JNIEnv* env, jint code, const Work& work) {
  nativeFrame(env, code, [&] {
    try {
      onNTFamily(env, work);
    } catch (const BadAccountArgument&) {
      throwServiceException(env, kBadArgument);
    } catch (const NoNetworkManagement&) {
      throwServiceException(env, kNoNetworkManagement);
    } catch (const NoController& failure) {
      throwServiceException(env, kNoController, failure.code());
    } catch (const NotJoined& failure) {
      throwServiceException(env, kJoinFailed, failure.code());
    }
  });
}

}  // namespace

extern "C" {

NATIVE(void, Win32SecurityServiceImpl, win32CreateUser)
(JNIEnv* env,
 jobject,
 jstring domain,
 jstring name,
 jstring password,
 jstring fullName,
 jstring comment,
 jobjectArray groups) {
  accountFrame(env, kCreateUserFailed, [&] {
    const NewUser user = {
        .name = textFromJava(env, name),
        .password = secretFromJava(env, password),
        .fullName = textFromJava(env, fullName),
        .comment = textFromJava(env, comment),
        .groups = groups == nullptr ? std::vector<WString>() : textsFromJava(env, groups)};
    createUser(textFromJava(env, domain), user);
  });
}

NATIVE(void, Win32SecurityServiceImpl, deleteUser)
(JNIEnv* env, jobject, jstring domain, jstring name) {
  accountFrame(env, kDeleteUserFailed, [&] {
    deleteUser(textFromJava(env, domain), textFromJava(env, name));
  });
}

NATIVE(void, Win32SecurityServiceImpl, win32CreateGroup)
(JNIEnv* env, jobject, jstring domain, jstring name, jstring comment) {
  accountFrame(env, kCreateGroupFailed, [&] {
    createGroup(textFromJava(env, domain), textFromJava(env, name), textFromJava(env, comment));
  });
}

NATIVE(void, Win32SecurityServiceImpl, deleteGroup)
(JNIEnv* env, jobject, jstring domain, jstring name) {
  accountFrame(env, kDeleteGroupFailed, [&] {
    deleteGroup(textFromJava(env, domain), textFromJava(env, name));
  });
}

}  // extern "C"
