#pragma once

#include "process/credentials.h"
#include "process/process_request.h"

namespace corvane {

/// Runs a command line as another user, who is let onto the desktop for it, hands its output to the
/// request and waits for its end. Throws Win32Failure when it cannot be started, and JavaException.
/// For the NT family; the texts go through the code page.
/// Win32: LogonUserA, ImpersonateLoggedOnUser, CreateProcessAsUserA.
void launchAsUser(const ProcessRequest& request,
                  const Credentials& credentials,
                  const WString& commandLine);

}  // namespace corvane
