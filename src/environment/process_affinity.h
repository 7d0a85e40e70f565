#pragma once

namespace corvane {

/// Keeps the process on one processor: the active one with the lowest number, of the first 32. Does
/// nothing where the system has no such function (Windows 9x) or none of these processors is
/// active. Win32: SetProcessAffinityMask.
void useOneProcessor() noexcept;

}  // namespace corvane
