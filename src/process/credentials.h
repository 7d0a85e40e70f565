#pragma once

#include <windows.h>

#include "bridge/win32/ansi_or_wide.h"
#include "bridge/win32/scoped_handle.h"
#include "bridge/win32/win32_failure.h"

namespace corvane {

/// The user as whom a program is to run.
struct Credentials {
  Credentials() = default;
  Credentials(const Credentials&) = delete;
  Credentials& operator=(const Credentials&) = delete;
  /// The password is not left behind in memory that is free.
  ~Credentials() { SecureZeroMemory(password.data(), password.size() * sizeof(wchar_t)); }

  /// One alone is enough: a workgroup without a user is for Windows to refuse, not to be passed
  /// over.
  bool areGiven() const noexcept {
    return !user.empty() || !password.empty() || !workgroup.empty();
  }

  /// The token of the user, logged on as at the machine itself. Throws Win32Failure.
  ScopedKernelHandle logOn() const {
    ScopedKernelHandle token;
    throwUnless(LogonUserA(AnsiText(user.c_str()),
                           AnsiText(workgroup.c_str()),
                           AnsiText(password.c_str()),
                           LOGON32_LOGON_INTERACTIVE,
                           LOGON32_PROVIDER_DEFAULT,
                           token.receive()) != FALSE);
    return token;
  }

  WString user;
  WString password;
  WString workgroup;
};

}  // namespace corvane
