#pragma once

#include "process/credentials.h"
#include "process/process_request.h"

namespace corvane {

/// Runs a command line by the logon service of Windows 2000 and waits for its end: as this user,
/// who is the other one to the network. Nothing of its output reaches the request: the service
/// passes no handles on. The credentials are checked before, for it would start the program with
/// wrong ones, too, which then fail on the network. Throws Win32Failure when it cannot be started,
/// and JavaException. Win32: CreateProcessWithLogonW, looked up in advapi32.dll.
void launchWithLogon(const ProcessRequest& request,
                     const Credentials& credentials,
                     const WString& commandLine);

}  // namespace corvane
