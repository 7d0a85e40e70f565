#pragma once

#include <windows.h>

namespace corvane {

/// The module of the security functions, which are looked up in it when they are used. When it is
/// not there yet it is loaded from the system's directory, and stays. Null when it cannot be; the
/// thread's last error says why.
HMODULE advapi32() noexcept;

}  // namespace corvane
