#pragma once

#include <windows.h>

#include "bridge/win32/ansi_or_wide.h"
#include "bridge/win32/scoped_handle.h"
#include "bridge/win32/secret_text.h"
#include "bridge/win32/win32_failure.h"

namespace corvane {

/// A password converted for one call of an ANSI function, and overwritten at the end.
class AnsiSecret {
 public:
  explicit AnsiSecret(const wchar_t* text) : AnsiSecret() {
    // Made whole by now, so that what a conversion leaves that fails is overwritten, too.
    throwUnlessConverted(wideToAnsi(text, text_));
  }
  AnsiSecret(const AnsiSecret&) = delete;
  AnsiSecret& operator=(const AnsiSecret&) = delete;
  ~AnsiSecret() { SecureZeroMemory(text_.data(), text_.byteLength()); }

  operator const char*() const noexcept { return text_.data<char>(); }

 private:
  AnsiSecret() = default;

  ByteBuffer text_;
};

/// The user as whom a program is to run.
struct Credentials {
  /// One alone is enough: a workgroup without a user is for Windows to refuse, not to be passed
  /// over.
  bool areGiven() const noexcept {
    return !user.empty() || hasText(password.get()) || !workgroup.empty();
  }

  /// The token of the user, logged on as at the machine itself. Throws Win32Failure.
  ScopedKernelHandle logOn() const {
    ScopedKernelHandle token;
    throwUnless(LogonUserA(AnsiText(user.c_str()),
                           AnsiText(workgroup.c_str()),
                           AnsiSecret(password.get()),
                           LOGON32_LOGON_INTERACTIVE,
                           LOGON32_PROVIDER_DEFAULT,
                           token.receive()) != FALSE);
    return token;
  }

  WString user;
  SecretText password;
  WString workgroup;
};

}  // namespace corvane
