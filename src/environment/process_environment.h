#pragma once

#include <optional>

#include "bridge/win32/text.h"

namespace corvane {

// The environment variables of this process. The wide functions are called on the NT family alone.

/// The value of a variable; nothing when there is none, or it is empty: the system does not tell
/// the two apart. Win32: GetEnvironmentVariableA/W.
std::optional<WString> processVariable(const wchar_t* name);

/// Sets a variable; a null value removes it, and one that is not there is not missed. Throws
/// Win32Failure. Win32: SetEnvironmentVariableA/W.
void setProcessVariable(const wchar_t* name, const wchar_t* value);

}  // namespace corvane
