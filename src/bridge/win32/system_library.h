#pragma once

#include <windows.h>

#include <atomic>

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

/// A library of Windows that is loaded in the same way by the first who needs it, and stays.
///
/// One that somebody else has loaded already goes when they free it, so it is loaded all the same,
/// once: the reference is the library's own. (Threads that come first together take one each.) That
/// it is still there is asked each time by its full path; one of that name from elsewhere is
/// another library.
class KeptSystemLibrary {
 public:
  explicit constexpr KeptSystemLibrary(const wchar_t* name) noexcept : name_(name) {}

  /// Null when it cannot be loaded; the thread's last error says why.
  /// Win32: GetSystemDirectoryW, GetModuleHandleW, LoadLibraryW.
  HMODULE get() noexcept;

 private:
  const wchar_t* name_;
  std::atomic<HMODULE> own_ = nullptr;
};

}  // namespace corvane
