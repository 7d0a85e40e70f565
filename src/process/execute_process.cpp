#include "process/execute_process.h"

#include "bridge/win32/error_message.h"
#include "bridge/win32/platform.h"
#include "process/launch_as_user.h"
#include "process/launch_with_logon.h"
#include "process/plain_launch.h"

namespace corvane {

namespace {

constexpr jint kCredentialsOn9x = -110201;
constexpr jint kUserLaunchFailed = -110202;
constexpr jint kPlainLaunchFailed = -110203;
/// Of the warning alone: another way may be tried yet.
constexpr jint kUserLaunchWarning = -110204;

/// The program in quotes, whose path may hold blanks, and what follows it as it is. A quote at
/// either end is taken for the one that belongs there: no program at all is one quote, which
/// Windows refuses.
WString commandLineOf(WString command, const WString& arguments) {
  if (command.empty() || command.front() != L'"') {
    command.insert(0, 1, L'"');
  }
  if (command.back() != L'"') {
    command += L'"';
  }
  return arguments.empty() ? command : command + L" " + arguments;
}

/// 0 when the work was done, or failed without a reason, which counts as done; else the error that
/// kept it.
template <class Work>
DWORD errorOf(const Work& work) {
  try {
    work();
  } catch (const Win32Failure& failure) {
    return failure.code();
  }
  return ERROR_SUCCESS;
}

ExecutionResult resultOf(DWORD error, jint code) noexcept {
  return error == ERROR_SUCCESS ? ExecutionResult() : ExecutionResult{code, error};
}

/// The service that starts programs for other users came with Windows 2000. Later ones have it too,
/// but there this remains the failure that it was.
ExecutionResult tryWithLogon(const ProcessRequest& request,
                             const Credentials& credentials,
                             const WString& commandLine,
                             DWORD error,
                             const WarningLog& log) {
  log.warn(formatErrorText(kUserLaunchWarning, error));
  if (!isWindows2000()) {
    log.warn(formatErrorText(kUserLaunchFailed, ERROR_INVALID_FUNCTION));
    return {kUserLaunchFailed, error};
  }
  const auto launch = [&] { launchWithLogon(request, credentials, commandLine); };
  return resultOf(errorOf(launch), kUserLaunchFailed);
}

ExecutionResult executeAsUser(const ProcessRequest& request,
                              const Credentials& credentials,
                              const WString& commandLine,
                              const WarningLog& log) {
  const DWORD error = errorOf([&] { launchAsUser(request, credentials, commandLine); });
  return error == ERROR_SUCCESS ? ExecutionResult()
                                : tryWithLogon(request, credentials, commandLine, error, log);
}

}  // namespace

ExecutionResult executeProcess(const ProcessRequest& request, const WarningLog& log) {
  const WString command = request.command();
  const WString arguments = request.argumentString();
  Credentials credentials;
  credentials.user = request.user();
  credentials.password = request.password();
  credentials.workgroup = request.workgroup();
  const WString commandLine = commandLineOf(command, arguments);
  if (!credentials.areGiven()) {
    return resultOf(errorOf([&] { launchPlainly(request, commandLine); }), kPlainLaunchFailed);
  }
  if (isWindows9x()) {
    return {kCredentialsOn9x, ERROR_SUCCESS};
  }
  return executeAsUser(request, credentials, commandLine, log);
}

}  // namespace corvane
