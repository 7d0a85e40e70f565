#pragma once

#include <windows.h>

#include <cstdint>
#include <vector>

#include "bridge/win32/text.h"

namespace corvane {

/// Drives and what they hold. A drive is named by its root, a path such as C:\. Failures are thrown
/// as Win32Failure.

/// Bytes free for the caller. A failure for which the system names no reason counts as 0 bytes.
/// Win32: GetDiskFreeSpaceExA/W, or GetDiskFreeSpaceA/W where that is missing.
int64_t driveFreeSpace(const wchar_t* drive);

/// All drives. Win32: GetLogicalDriveStringsA/W.
std::vector<WString> driveNames();

/// 1 fixed, 2 removable, 3 remote, 4 CD, 5 RAM disk, -1 anything else. Win32: GetDriveTypeA.
int driveType(const wchar_t* drive);

/// The name of the file system. Win32: GetVolumeInformationA/W.
WString driveFormat(const wchar_t* drive);

/// Whether a name may have 255 characters. Win32: GetVolumeInformationA.
bool supportsLongFileNames(const wchar_t* drive);

}  // namespace corvane
