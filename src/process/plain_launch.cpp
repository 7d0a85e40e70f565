#include "process/plain_launch.h"

#include "bridge/win32/text.h"
#include "bridge/win32/win32_failure.h"
#include "process/child_process.h"
#include "process/output_pipes.h"
#include "process/output_reader.h"

namespace corvane {

namespace {

/// `commandLine`: the system writes into it.
ChildProcess start(ByteBuffer& commandLine, const OutputPipes& pipes, WORD showWindow) {
  STARTUPINFOA startup = pipes.startupInfo(showWindow);
  PROCESS_INFORMATION started = {};
  throwUnless(CreateProcessA(nullptr,
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

}  // namespace

void launchPlainly(const ProcessRequest& request, const WString& commandLine) {
  ByteBuffer ansiCommandLine;
  throwUnlessConverted(wideToAnsi(commandLine.c_str(), ansiCommandLine));
  OutputPipes pipes;
  pipes.open();
  const ChildProcess child = start(ansiCommandLine, pipes, request.showWindow());
  child.awaitReadiness();
  OutputReader(child, pipes).drainInto(request);
  child.awaitEnd(request);
}

}  // namespace corvane
