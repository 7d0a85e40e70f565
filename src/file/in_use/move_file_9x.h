#pragma once

#include "file/in_use/file_outcome.h"

namespace corvane {

/// The move of Windows 95, 98 and ME; see moveFile. What is in use goes into WinInit.Ini; that this
/// file could not be written is not reported: the source is still there, and can be moved again.
FileOutcome moveFile9x(const wchar_t* source, const wchar_t* target, bool overwrite);

}  // namespace corvane
