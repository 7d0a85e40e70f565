#pragma once

#include <windows.h>

#include "bridge/win32/text.h"

namespace corvane {

/// The owner and the primary group of a file, on the NT family.
enum class Principal : DWORD {
  kOwner = OWNER_SECURITY_INFORMATION,
  kGroup = GROUP_SECURITY_INFORMATION,
};

/// An account as the system names it.
struct AccountName {
  WString name;
  WString domain;
};

/// Both throw Win32Failure for a failure with a reason. The functions are looked up in
/// advapi32.dll.

/// Win32: GetNamedSecurityInfoW, LookupAccountSidW.
AccountName readPrincipal(const wchar_t* path, Principal which);

/// `account`: whatever LookupAccountNameW accepts, a bare name or one with its domain. An
/// administrator may give a file to anybody: the privileges for that are enabled first. Win32:
/// LookupAccountNameW, SetFileSecurityW.
void writePrincipal(const wchar_t* path, Principal which, const wchar_t* account);

}  // namespace corvane
