#pragma once

#include <windows.h>

#include <string>

// What both the bare and the required calls of a row do. Each returns 0 or the error.

/// The system is asked for the size first, as the library does.
DWORD temporaryDirectory(std::wstring& path);

DWORD programsDirectory(std::wstring& path);

/// The token stays open, as the library leaves it. The benchmark's user is an administrator.
DWORD checkAdministrator();

/// `file` is not changed: the function that takes it wants it so.
DWORD readOwner(std::wstring& file, std::wstring& name);
