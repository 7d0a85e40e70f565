#pragma once

#include <windows.h>

/// Deletes the key `name` below `parent` with all keys below it, deepest first, through the wide
/// functions of the NT family (where a key with sub-keys cannot be deleted as it is). Returns the
/// Win32 error, ERROR_BADKEY for a null or empty name; what was deleted before a failure stays
/// deleted.
LSTATUS deleteRegistryTree(HKEY parent, const wchar_t* name) noexcept;
