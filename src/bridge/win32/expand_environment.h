#pragma once

#include "bridge/win32/text.h"

namespace corvane {

/// Replaces %NAME% references by the variables of the process, into `out`, terminated, with the
/// functions of the family. Returns the system's count of characters (of bytes for `ansi`), 0 when
/// it failed. Win32: ExpandEnvironmentStringsA/W.
uint32_t expandEnvironment(bool ansi, const wchar_t* text, ByteBuffer& out);

/// The same as a text, which is empty when the expansion failed.
WString expandedText(bool ansi, const WString& text);

}  // namespace corvane
