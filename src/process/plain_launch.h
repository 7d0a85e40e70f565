#pragma once

#include "process/process_request.h"

namespace corvane {

/// Runs a command line as the user of this process, in a console of its own, hands its output to
/// the request and waits for its end. Throws Win32Failure when it cannot be started, and
/// JavaException. Win32: CreateProcessA, whatever the Windows: the command line goes through the
/// code page.
void launchPlainly(const ProcessRequest& request, const WString& commandLine);

}  // namespace corvane
