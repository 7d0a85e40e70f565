#pragma once

#include "bridge/win32/text.h"

namespace corvane {

/// What the system tells about itself.

/// The text of the installed service pack, empty when there is none. Throws Win32Failure.
/// Win32: GetVersionExA/W.
WString serviceLevel();

/// The directory from which the system starts, as the registry has it ("BootDir"). Throws
/// RegistryException, and Win32Failure with 0xFFFFFFFF when it is on no drive. Win32:
/// GetDriveTypeA/W.
WString bootDirectory();

}  // namespace corvane
