#pragma once

#include "bridge/win32/text.h"

namespace corvane {

/// Where things go. Failures are thrown as Win32Failure.

/// The directory for temporary files, which is there. Win32: GetTempPathA/W.
WString temporaryDirectory();

/// Win32: GetWindowsDirectoryA/W.
WString windowsDirectory();

/// The system directory; empty when it is not there. Win32: GetSystemDirectoryA/W.
WString systemDirectory();

/// "ProgramFilesDir" of the registry. A failure has the low 16 bits of its reason only; one that
/// has none in them is the empty text.
WString programFilesDirectory();

/// "CommonFilesDir" of the registry. Only a reason with its highest bit set is a failure: a value
/// that is missing is the empty text. Unlike where programs go, an installer can do
/// without a place to share.
WString commonFilesDirectory();

/// Where the data of products is kept: the common files directory, which `directory` holds already,
/// when files can be made in it, otherwise the user's application data. When that cannot be found,
/// `directory` stays and Win32Failure is thrown: 3 when the folder is unknown, 5 when it has no
/// path. Win32: GetTempFileNameA, SHGetSpecialFolderLocation.
void findProductDataDirectory(WString& directory);

}  // namespace corvane
