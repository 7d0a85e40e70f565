#include "process/launch_as_user.h"

#include "bridge/win32/text.h"
#include "process/child_process.h"
#include "process/interactive_desktop.h"
#include "process/logon_sid.h"
#include "process/output_pipes.h"
#include "process/output_reader.h"

namespace corvane {

namespace {

struct ImpersonationTraits {
  using Handle = HANDLE;
  static Handle none() noexcept { return nullptr; }
  static void close(Handle) noexcept { RevertToSelf(); }
};

/// This thread acts as the user of a token, which it does not own.
using Impersonation = ScopedHandle<ImpersonationTraits>;

Impersonation impersonate(HANDLE token) {
  throwUnless(ImpersonateLoggedOnUser(token) != FALSE);
  return Impersonation(token);
}

/// `commandLine`: the system writes into it.
ChildProcess start(HANDLE token,
                   ByteBuffer& commandLine,
                   const OutputPipes& pipes,
                   WORD showWindow) {
  char desktop[] = "winsta0\\default";
  STARTUPINFOA startup = pipes.startupInfo(showWindow);
  startup.lpDesktop = desktop;
  PROCESS_INFORMATION started = {};
  throwUnless(CreateProcessAsUserA(token,
                                   nullptr,
                                   commandLine.data<char>(),
                                   nullptr,
                                   nullptr,
                                   TRUE,
                                   CREATE_NEW_CONSOLE | NORMAL_PRIORITY_CLASS,
                                   nullptr,
                                   nullptr,
                                   &startup,
                                   &started) != FALSE);
  return ChildProcess(started);
}

/// The thread is itself again before the request is told the exit code.
void run(HANDLE token, ByteBuffer& commandLine, const ProcessRequest& request) {
  OutputPipes pipes;
  ChildProcess child;
  Impersonation impersonation = impersonate(token);
  pipes.open();
  child = start(token, commandLine, pipes, request.showWindow());
  OutputReader(child, pipes).drainInto(request);
  impersonation.close();
  child.awaitEnd(request);
  child.closeProcess();
  pipes.close();
}

}  // namespace

void launchAsUser(const ProcessRequest& request,
                  const Credentials& credentials,
                  const WString& commandLine) {
  ByteBuffer ansiCommandLine;
  throwUnlessConverted(wideToAnsi(commandLine.c_str(), ansiCommandLine));
  const ScopedKernelHandle token = credentials.logOn();
  const InteractiveDesktop desktop;
  ByteBuffer sid = logonSid(token.get());
  desktop.grant(sid.data());
  run(token.get(), ansiCommandLine, request);
}

}  // namespace corvane
