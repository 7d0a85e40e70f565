#pragma once

#include <windows.h>

#include "bridge/win32/byte_buffer.h"

namespace corvane {

/// A copy of the SID that a token has for its logon, which no other logon has, of the same user
/// either. Throws Win32Failure, with ERROR_NO_SUCH_LOGON_SESSION when the token has none.
/// Win32: GetTokenInformation, CopySid.
ByteBuffer logonSid(HANDLE token);

}  // namespace corvane
