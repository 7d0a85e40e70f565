#include <com_corvane_wizard_platform_win32_Win32SystemUtilServiceImpl.h>

#include <optional>

#include "bridge/java/java_collections.h"
#include "bridge/java/java_values.h"
#include "bridge/java/native_frame.h"
#include "process/after_exit.h"
#include "process/startup_commands.h"

using namespace corvane;

// The natives of Win32SystemUtilServiceImpl for what happens after the installer: at the next start
// of Windows, and when the process has ended. What each does, takes and raises is said at its Java
// declaration.

namespace {

constexpr jint kAddFailed = -70002;
constexpr jint kListFailed = -70003;
constexpr jint kRemoveFailed = -70004;
constexpr jint kDeleteFailed = -70007;

/// The frame of what is done with a command, which must not be empty. What nobody expected comes
/// under the native's code as well: whoever registers a command has to know whether it runs.
template <class Work>
void withCommand(JNIEnv* env, jint code, jstring command, const Work& work) {
  nativeFrameWithReason(env, code, [&] {
    const WString text = textFromJava(env, command);
    if (text.empty()) {
      throw Win32Failure(static_cast<uint32_t>(E_INVALIDARG));
    }
    work(text);
  });
}

}  // namespace

extern "C" {

NATIVE(void, Win32SystemUtilServiceImpl, addSystemStartupCommand)
(JNIEnv* env, jobject, jstring command) {
  withCommand(env, kAddFailed, command, addStartupCommand);
}

/// What was read before a failure is returned beside the exception.
NATIVE(jobject, Win32SystemUtilServiceImpl, systemStartupCommands)(JNIEnv* env, jobject) {
  return nativeFrame(env, [&] {
    const JavaVector commands(env);
    if (!commands) {
      return jobject();
    }
    std::optional<uint32_t> error;
    try {
      listStartupCommands([&](const WString& command) { commands.add(command); });
    } catch (const Win32Failure& failure) {
      error = failure.code();
    }
    const jobject elements = commands.elements();
    if (error) {
      throwServiceException(env, kListFailed, *error);
    }
    return elements;
  });
}

NATIVE(void, Win32SystemUtilServiceImpl, removeSystemStartupCommand)
(JNIEnv* env, jobject, jstring command) {
  withCommand(env, kRemoveFailed, command, removeStartupCommand);
}

NATIVE(void, Win32SystemUtilServiceImpl, nativeDeleteFilesAfterExit)
(JNIEnv* env, jobject, jobject files, jobject directories, jboolean flag, jstring cleaner) {
  nativeFrame(env, kDeleteFailed, [&] {
    const JavaEnumerations enumerations(env);
    if (!enumerations) {
      return;
    }
    const AnsiText program(textFromJava(env, cleaner).c_str());
    AfterExitList list;
    enumerations.forEachText(files, [&](const WString& path) { list.addFile(path); });
    enumerations.forEachText(directories, [&](const WString& path) { list.addDirectory(path); });
    if (!list.isEmpty() || fromJavaBoolean(flag)) {
      reasonedOnly([&] { handToCleaner(program, fromJavaBoolean(flag), list); });
    }
  });
}

}  // extern "C"
