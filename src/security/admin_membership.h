#pragma once

namespace corvane {

/// Whether the current user is a member of the local group Administrators: that of the thread's
/// token when the thread impersonates, otherwise of the process's. Membership alone counts, also
/// where the group is for denying only (a filtered token).
///
/// Throws Win32Failure where there is no answer. The token stays open: as a rule it is the
/// process's, which keeps it as long anyway. For the NT family. Win32: OpenThreadToken,
/// OpenProcessToken, GetTokenInformation, EqualSid.
bool queryAdminMembership();

}  // namespace corvane
