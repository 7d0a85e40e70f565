#pragma once

#include <windows.h>

namespace corvane {

/// Loads a library of Windows by its full path in the system's directory. By its bare name, a file
/// that stands beside the program or in another folder of the search path could be loaded in its
/// place, with the rights of the installer. Null when it cannot be loaded; the thread's last error
/// says why.
/// Win32: GetSystemDirectoryW, LoadLibraryW.
HMODULE loadSystemLibrary(const wchar_t* name) noexcept;

/// The same where the ANSI functions are called on every Windows.
/// Win32: GetSystemDirectoryA, LoadLibraryExA.
HMODULE loadSystemLibrary(const char* name, DWORD flags) noexcept;

/// A library of Windows that is loaded by whoever needs it first, in the same way, and stays. It is
/// found again by its full path: one of the same name from elsewhere is another library.
/// Win32: GetSystemDirectoryW, GetModuleHandleW, LoadLibraryW.
HMODULE keptSystemLibrary(const wchar_t* name) noexcept;

}  // namespace corvane
