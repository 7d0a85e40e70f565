#pragma once

#include "bridge/win32/scoped_handle.h"
#include "bridge/win32/text.h"

namespace corvane {

/// The SID of an account, as this computer knows it. `account` is whatever LookupAccountNameA
/// accepts, a bare name or one with its domain. Throws Win32Failure. Win32: GetComputerNameA,
/// LookupAccountNameA.
LocalHolder findAccountSid(const WString& account);

}  // namespace corvane
