#pragma once

#include <windows.h>

namespace corvane {

/// Adds entries to the end of an object's access list that let the owner of a SID do all there is
/// to do with it. The entries that are there stay as they are. Both throw Win32Failure. Win32:
/// GetUserObjectSecurity, AddAce, SetUserObjectSecurity.

/// Two entries: one that what is made in the station inherits, and one for the station itself.
void grantWindowStation(HWINSTA station, PSID sid);

void grantDesktop(HDESK desktop, PSID sid);

}  // namespace corvane
