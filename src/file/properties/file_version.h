#pragma once

#include <windows.h>

#include <optional>

namespace corvane {

/// The fixed part of the version that is in the resources of a file; nothing when there is none or
/// it cannot be read. Nothing is believed of the data: what does not lie within them is not there.
/// Win32: GetFileVersionInfoSizeA/W, GetFileVersionInfoA/W, VerQueryValueA/W.
std::optional<VS_FIXEDFILEINFO> fixedFileInfo(const wchar_t* path);

}  // namespace corvane
