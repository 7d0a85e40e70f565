#pragma once

#include <cstdint>

#include "bridge/win32/text.h"

namespace corvane {

/// The text of a failure: the system's own message for `messageId` (with the line break that ends
/// it), a blank, and the number in parentheses. The system's part is empty when it knows no text;
/// all of it is empty when nothing could be built.
///
/// `messageId`: a Win32 error or an HRESULT. Those from 2100 to 2999 belong to network management
/// and have their text in netmsg.dll. Win32: FormatMessageA/W, LoadLibraryExA.
WString errorMessage(bool windows9x, uint32_t messageId);

/// "code: message", for a code that is put into a text of its own. Keeps the thread's last error.
WString formatErrorText(int32_t code, uint32_t messageId);

}  // namespace corvane
