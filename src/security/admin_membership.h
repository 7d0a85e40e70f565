#pragma once

#include <windows.h>

/// Whether the current user is a member of the local group Administrators: that of the thread's
/// token when the thread impersonates, otherwise of the process's. Membership alone counts, also
/// where the group is for denying only (a filtered token).
///
/// `error` is 0, or the Win32 error for which there is no answer; the result is false then. The
/// token stays open: as a rule it is the process's, which keeps it as long anyway. For the NT
/// family. Throws std::bad_alloc. Win32: OpenThreadToken, OpenProcessToken, GetTokenInformation,
/// EqualSid.
bool queryAdminMembership(DWORD& error);
