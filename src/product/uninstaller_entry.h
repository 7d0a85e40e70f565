#pragma once

#include "bridge/win32/text.h"

namespace corvane {

/// The entry of a product in the system's list of programs: a key below "Uninstall" with the values
/// "DisplayName" and "UninstallString". It is the machine's; on the NT family the user's own when
/// that user is no administrator or that cannot be told. Both throw Win32Failure; what is done
/// before a failure stays.

/// Makes the entry. The key is made under the first 63 characters of its name, while the values are
/// written to the key with the whole name: with a longer name they fail with ERROR_FILE_NOT_FOUND
/// unless that key is there. So a name that is too long never overwrites the entry of another
/// product. The display name is cut to 63 characters too, but not on Windows 2000.
void registerUninstaller(const WString& keyName,
                         const WString& displayName,
                         const wchar_t* uninstallString);

/// Removes the entry with the whole `otherKeyName` and the one with the first 63 characters of
/// `keyName`; what is not there is not missed.
void unregisterUninstaller(const WString& keyName, const WString& otherKeyName);

}  // namespace corvane
