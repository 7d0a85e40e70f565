#include "process/launch_with_logon.h"

#include "bridge/win32/runtime_function.h"
#include "bridge/win32/system_library.h"
#include "process/child_process.h"

namespace corvane {

namespace {

using CreateProcessWithLogon = RuntimeFunction<decltype(&CreateProcessWithLogonW)>;

/// `commandLine`: the system writes into it.
ChildProcess start(const CreateProcessWithLogon& create,
                   const Credentials& credentials,
                   WString commandLine,
                   WORD showWindow) {
  wchar_t desktop[] = L"";
  STARTUPINFOW startup = {};
  startup.cb = sizeof(startup);
  startup.lpDesktop = desktop;
  startup.dwFlags = STARTF_USESHOWWINDOW;
  startup.wShowWindow = showWindow;
  PROCESS_INFORMATION started = {};
  throwUnless(create(credentials.user.c_str(),
                     credentials.workgroup.c_str(),
                     credentials.password.get(),
                     DWORD{LOGON_NETCREDENTIALS_ONLY},
                     nullptr,
                     commandLine.data(),
                     DWORD{0},
                     nullptr,
                     nullptr,
                     &startup,
                     &started) != FALSE);
  return ChildProcess(started);
}

}  // namespace

void launchWithLogon(const ProcessRequest& request,
                     const Credentials& credentials,
                     const WString& commandLine) {
  const ScopedModule advapi32(loadSystemLibrary("Advapi32.dll", 0));
  throwUnless(static_cast<bool>(advapi32));
  const auto create = RUNTIME_FUNCTION_OF(advapi32.get(), CreateProcessWithLogonW);
  throwUnless(static_cast<bool>(create));
  const ScopedKernelHandle token = credentials.logOn();
  ChildProcess child = start(create, credentials, commandLine, request.showWindow());
  child.awaitEnd(request);
  child.closeProcess();
}

}  // namespace corvane
