#include <com_corvane_wizard_platform_win32_Win32SystemUtilServiceImpl.h>

#include "bridge/java/native_frame.h"
#include "process/execute_process.h"

using namespace corvane;

// The native of Win32SystemUtilServiceImpl that runs programs. What it does and raises is said at
// its Java declaration.

namespace {

constexpr jint kExecutionFailed = -110200;

void raise(JNIEnv* env, const ExecutionResult& result) {
  if (result.code != 0 && result.error == 0) {
    throwServiceException(env, result.code);
  } else if (result.code != 0) {
    throwServiceException(env, result.code, result.error);
  }
}

}  // namespace

extern "C" {

NATIVE(void, Win32SystemUtilServiceImpl, nativeExecuteProcess)
(JNIEnv* env, jobject service, jobject object, jint showWindow) {
  codeOnlyFrame(env, kExecutionFailed, [&] {
    const ProcessRequest request(env, object, showWindow);
    const ExecutionResult result = codeOnlyFrame(env, kExecutionFailed, [&] {
      return executeProcess(request, WarningLog(env, service));
    });
    request.closeStreams();
    raise(env, result);
  });
}

}  // extern "C"
