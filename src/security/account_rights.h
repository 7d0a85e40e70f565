#pragma once

#include <vector>

#include "bridge/win32/optional_text.h"

namespace corvane {

// The rights that the security authority of a computer has on record for an account: privileges,
// and the ways in which it may log on ("SeServiceLogonRight"). For the NT family.
//
// All throw Win32Failure: with ERROR_CALL_NOT_IMPLEMENTED when a function is missing, with
// ERROR_FILE_NOT_FOUND when there is no record of any right of the account. The functions are
// looked up in Advapi32.dll.

/// An account, and the computer where its rights are on record.
struct RightsHolder {
  WString account;
  WString system;  // empty is this one
};

/// A right that is null is passed as a text that is none; the authority judges it.
using Rights = std::vector<OptionalText>;

/// Win32: LsaAddAccountRights.
void addAccountRights(const RightsHolder& holder, const Rights& rights);

/// Win32: LsaRemoveAccountRights.
void removeAccountRights(const RightsHolder& holder, const Rights& rights);

/// Takes all of them away, and the record itself. Win32: LsaRemoveAccountRights.
void removeAllAccountRights(const RightsHolder& holder);

/// In the authority's order. Win32: LsaEnumerateAccountRights.
std::vector<WString> accountRights(const RightsHolder& holder);

}  // namespace corvane
