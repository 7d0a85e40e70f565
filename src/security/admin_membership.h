#pragma once

/// Whether the current user is a member of the local group Administrators: that of the thread's
/// token when the thread impersonates, otherwise of the process's. Membership alone counts, also
/// where the group is for denying only (a filtered token).
///
/// Throws Win32Failure where there is no answer. The token stays open until the process ends: it is
/// asked for once or twice in an installer's life, and its callers were promised just that. For the
/// NT family. Win32: OpenThreadToken, OpenProcessToken, GetTokenInformation, EqualSid.
bool queryAdminMembership();
