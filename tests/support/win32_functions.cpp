#include "win32_functions.h"

#include <windows.h>

#include <algorithm>
#include <iterator>

namespace bed {
namespace {

bool allocatesText(const Call& call) {
  return (call.words[0] & FORMAT_MESSAGE_ALLOCATE_BUFFER) != 0;
}

/// Access denied, as COM says it.
constexpr uint32_t kDenied = 0x80070005U;
/// And as the system's own functions say it.
constexpr uint32_t kDeniedStatus = 0xC0000022U;

using enum Failure;

constexpr Win32Function kFunctions[] = {
    // The registry.
    {"NtDeleteKey", kStatus, kDeniedStatus},
    {"NtQueryValueKey", kStatus, kDeniedStatus},
    {"RtlNtStatusToDosError"},
    {"RegCloseKey", kCannotFail, 0, closes(Account::kKey, 0)},
    {"RegCreateKeyExA", kStatus, ERROR_ACCESS_DENIED, opensAt(Account::kKey, 7)},
    {"RegCreateKeyExW", kStatus, ERROR_ACCESS_DENIED, opensAt(Account::kKey, 7)},
    {"RegDeleteKeyA", kStatus, ERROR_ACCESS_DENIED},
    {"RegDeleteKeyW", kStatus, ERROR_ACCESS_DENIED},
    {"RegDeleteValueA", kStatus, ERROR_ACCESS_DENIED},
    {"RegDeleteValueW", kStatus, ERROR_ACCESS_DENIED},
    {"RegEnumKeyA", kStatus, ERROR_ACCESS_DENIED},
    {"RegEnumKeyW", kStatus, ERROR_ACCESS_DENIED},
    {"RegEnumKeyExW", kStatus, ERROR_ACCESS_DENIED},
    {"RegEnumValueA", kStatus, ERROR_ACCESS_DENIED},
    {"RegEnumValueW", kStatus, ERROR_ACCESS_DENIED},
    {"RegOpenKeyExA", kStatus, ERROR_ACCESS_DENIED, opensAt(Account::kKey, 4)},
    {"RegOpenKeyExW", kStatus, ERROR_ACCESS_DENIED, opensAt(Account::kKey, 4)},
    {"RegQueryInfoKeyA", kStatus, ERROR_ACCESS_DENIED},
    {"RegQueryInfoKeyW", kStatus, ERROR_ACCESS_DENIED},
    {"RegQueryValueExA", kStatus, ERROR_ACCESS_DENIED},
    {"RegQueryValueExW", kStatus, ERROR_ACCESS_DENIED},
    {"RegSetValueExA", kStatus, ERROR_ACCESS_DENIED},
    {"RegSetValueExW", kStatus, ERROR_ACCESS_DENIED},

    // Text, versions and messages.
    {"ExpandEnvironmentStringsA", kZero, ERROR_NOT_ENOUGH_MEMORY},
    {"ExpandEnvironmentStringsW", kZero, ERROR_NOT_ENOUGH_MEMORY},
    {"FormatMessageA",
     kZero,
     ERROR_MR_MID_NOT_FOUND,
     opensAt(Account::kLocalBlock, 4),
     allocatesText},
    {"FormatMessageW",
     kZero,
     ERROR_MR_MID_NOT_FOUND,
     opensAt(Account::kLocalBlock, 4),
     allocatesText},
    {"GetACP"},
    {"GetVersionExA", kZero, ERROR_INVALID_PARAMETER},
    {"GetVersionExW", kZero, ERROR_INVALID_PARAMETER},
    {"LocalFree", kCannotFail, 0, closes(Account::kLocalBlock, 0)},
    {"MultiByteToWideChar", kZero, ERROR_NO_UNICODE_TRANSLATION},
    {"WideCharToMultiByte", kZero, ERROR_NO_UNICODE_TRANSLATION},

    // Modules and what is looked up in them.
    {"FreeLibrary", kCannotFail, 0, closes(Account::kModule, 0)},
    {"GetModuleHandleA", kZero, ERROR_MOD_NOT_FOUND},
    {"GetModuleHandleW", kZero, ERROR_MOD_NOT_FOUND},
    {"GetProcAddress", kZero, ERROR_PROC_NOT_FOUND},
    {"LoadLibraryW", kZero, ERROR_MOD_NOT_FOUND},
    {"LoadLibraryExA", kZero, ERROR_MOD_NOT_FOUND, opensResult(Account::kModule)},
    {"LoadLibraryExW", kZero, ERROR_MOD_NOT_FOUND, opensResult(Account::kModule)},

    // Files.
    {"CloseHandle", kCannotFail, 0, closes(Account::kHandle, 0)},
    {"CopyFileA", kZero, ERROR_ACCESS_DENIED},
    {"CopyFileW", kZero, ERROR_ACCESS_DENIED},
    {"CreateFileA", kMinusOne, ERROR_ACCESS_DENIED, opensResult(Account::kHandle)},
    {"CreateFileW", kMinusOne, ERROR_ACCESS_DENIED, opensResult(Account::kHandle)},
    {"CreateFileMappingA", kZero, ERROR_DISK_FULL, opensResult(Account::kHandle)},
    {"DuplicateHandle", kZero, ERROR_ACCESS_DENIED, opensAt(Account::kHandle, 3)},
    {"DeleteFileA", kZero, ERROR_ACCESS_DENIED},
    {"DeleteFileW", kZero, ERROR_ACCESS_DENIED},
    {"FindClose", kCannotFail, 0, closes(Account::kSearch, 0)},
    {"FindFirstFileA", kMinusOne, ERROR_ACCESS_DENIED, opensResult(Account::kSearch)},
    {"FindFirstFileW", kMinusOne, ERROR_ACCESS_DENIED, opensResult(Account::kSearch)},
    {"FindNextFileA", kZero, ERROR_NO_MORE_FILES},
    {"FindNextFileW", kZero, ERROR_NO_MORE_FILES},
    {"GetFileAttributesA", kMinusOne, ERROR_ACCESS_DENIED},
    {"GetFileAttributesW", kMinusOne, ERROR_ACCESS_DENIED},
    {"GetFileSize", kMinusOne, ERROR_ACCESS_DENIED},
    {"GetShortPathNameA", kZero, ERROR_ACCESS_DENIED},
    {"GetWindowsDirectoryA", kZero, ERROR_ACCESS_DENIED},
    {"MapViewOfFile", kZero, ERROR_NOT_ENOUGH_MEMORY, opensResult(Account::kView)},
    {"MoveFileA", kZero, ERROR_ACCESS_DENIED},
    {"MoveFileExW", kZero, ERROR_ACCESS_DENIED},
    {"RemoveDirectoryA", kZero, ERROR_ACCESS_DENIED},
    {"RemoveDirectoryW", kZero, ERROR_ACCESS_DENIED},
    {"SetEndOfFile", kZero, ERROR_ACCESS_DENIED},
    {"SetFileAttributesA", kZero, ERROR_ACCESS_DENIED},
    {"SetFileAttributesW", kZero, ERROR_ACCESS_DENIED},
    {"SetFilePointer", kMinusOne, ERROR_ACCESS_DENIED},
    {"SetFileTime", kZero, ERROR_ACCESS_DENIED},
    {"UnmapViewOfFile", kCannotFail, 0, closes(Account::kView, 0)},

    // Drives and directories. A kind of drive or folder that is unknown is no error.
    {"CreateDirectoryA", kZero, ERROR_ACCESS_DENIED},
    {"CreateDirectoryW", kZero, ERROR_ACCESS_DENIED},
    {"GetDiskFreeSpaceA", kZero, ERROR_ACCESS_DENIED},
    {"GetDiskFreeSpaceExA", kZero, ERROR_ACCESS_DENIED},
    {"GetDiskFreeSpaceExW", kZero, ERROR_ACCESS_DENIED},
    {"GetDiskFreeSpaceW", kZero, ERROR_ACCESS_DENIED},
    {"GetDriveTypeA", kZero},
    {"GetDriveTypeW", kZero},
    {"GetLogicalDriveStringsA", kZero, ERROR_ACCESS_DENIED},
    {"GetLogicalDriveStringsW", kZero, ERROR_ACCESS_DENIED},
    {"GetSystemDirectoryA", kZero, ERROR_ACCESS_DENIED},
    {"GetSystemDirectoryW", kZero, ERROR_ACCESS_DENIED},
    {"GetTempFileNameA", kZero, ERROR_ACCESS_DENIED},
    {"GetTempPathA", kZero, ERROR_ACCESS_DENIED},
    {"GetTempPathW", kZero, ERROR_ACCESS_DENIED},
    {"GetVolumeInformationA", kZero, ERROR_ACCESS_DENIED},
    {"GetVolumeInformationW", kZero, ERROR_ACCESS_DENIED},
    {"GetWindowsDirectoryW", kZero, ERROR_ACCESS_DENIED},

    // The shell. The allocator that owns the item lists is always there.
    {"SHChangeNotify"},
    {"SHGetMalloc", kCannotFail, 0, opensAt(Account::kInterface, 0)},
    {"SHGetPathFromIDListA", kZero},
    {"SHGetSpecialFolderLocation", kStatus, kDenied, opensAt(Account::kItemList, 2)},
    {"SHGetSpecialFolderPathA", kZero},
    {"CoCreateInstance", kStatus, kDenied, opensAt(Account::kInterface, 4)},
    {"IMalloc::Free", kCannotFail, 0, closes(Account::kItemList, 1)},
    {"IMalloc::Release", kCannotFail, 0, closes(Account::kInterface, 0)},
    {"IPersistFile::Release", kCannotFail, 0, closes(Account::kInterface, 0)},
    {"IPersistFile::Save", kStatus, kDenied},
    {"IShellLinkA::QueryInterface", kStatus, kDenied, opensAt(Account::kInterface, 2)},
    {"IShellLinkA::Release", kCannotFail, 0, closes(Account::kInterface, 0)},
    {"IShellLinkA::SetArguments", kStatus, kDenied},
    {"IShellLinkA::SetIconLocation", kStatus, kDenied},
    {"IShellLinkA::SetPath", kStatus, kDenied},
    {"IShellLinkA::SetWorkingDirectory", kStatus, kDenied},

    // Accounts, tokens and owners.
    {"AdjustTokenPrivileges", kZero, ERROR_ACCESS_DENIED},
    {"AllocateAndInitializeSid", kZero, ERROR_ACCESS_DENIED, opensAt(Account::kSid, 10)},
    {"EqualSid", kZero},
    {"FreeSid", kCannotFail, 0, closes(Account::kSid, 0)},
    {"GetNamedSecurityInfoW", kStatus, ERROR_ACCESS_DENIED, opensAt(Account::kLocalBlock, 7)},
    {"GetTokenInformation", kZero, ERROR_ACCESS_DENIED},
    {"InitializeSecurityDescriptor", kZero, ERROR_ACCESS_DENIED},
    {"IsValidSecurityDescriptor", kZero, ERROR_ACCESS_DENIED},
    {"LookupAccountNameW", kZero, ERROR_ACCESS_DENIED},
    {"LookupAccountSidW", kZero, ERROR_ACCESS_DENIED},
    {"LookupPrivilegeValueA", kZero, ERROR_ACCESS_DENIED},
    {"OpenProcessToken", kZero, ERROR_ACCESS_DENIED, opensAt(Account::kHandle, 2)},
    {"OpenThreadToken", kZero, ERROR_ACCESS_DENIED, opensAt(Account::kHandle, 3)},
    {"SetFileSecurityW", kZero, ERROR_ACCESS_DENIED},
    {"SetNamedSecurityInfoW", kStatus, ERROR_ACCESS_DENIED},
    {"SetSecurityDescriptorGroup", kZero, ERROR_ACCESS_DENIED},
    {"SetSecurityDescriptorOwner", kZero, ERROR_ACCESS_DENIED},

    // The process.
    {"GetCurrentProcess"},
    {"GetCurrentThread"},
    {"GetSystemInfo"},
    {"SetErrorMode"},
    {"SetProcessAffinityMask", kZero, ERROR_ACCESS_DENIED},
    {"CoInitialize", kStatus, 0x8007000EU},
    {"CoUninitialize"},
    {"GetLastError"},
    {"SetLastError"},

    // The C runtime's heap. realloc closes and opens; the heap guard books it.
    {"calloc", kZero, 0, opensResult(Account::kHeapBlock)},
    {"free", kCannotFail, 0, closes(Account::kHeapBlock, 0)},
    {"malloc", kZero, 0, opensResult(Account::kHeapBlock)},
    {"realloc", kZero, 0, opensResult(Account::kHeapBlock)},
};

/// What the C++ runtime that is linked into the library calls for itself: locks, unwinding, the C
/// library.
// clang-format off
constexpr std::string_view kUntouchedFunctions[] = {
    "CreateSemaphoreW", "DeleteCriticalSection", "EnterCriticalSection",
    "GetCurrentThreadId", "InitializeCriticalSection", "IsDBCSLeadByteEx", "LeaveCriticalSection",
    "RaiseException", "ReleaseSemaphore", "RtlCaptureContext",
    "RtlLookupFunctionEntry", "RtlUnwindEx", "RtlVirtualUnwind", "Sleep", "TlsAlloc", "TlsFree",
    "TlsGetValue", "TlsSetValue", "VirtualProtect", "VirtualQuery", "WaitForSingleObject",
    "___lc_codepage_func", "___mb_cur_max_func", "__iob_func", "_amsg_exit", "_close", "_errno",
    "_initterm", "_lock", "_mbsicmp", "_read", "_unlock", "_vsnwprintf", "_wcsnicmp", "abort", "fputc", "fputwc", "fwprintf", "fwrite",
    "localeconv", "memchr", "memcmp", "memcpy", "memmove", "memset", "strcmp", "strerror",
    "strlen", "strncmp", "vfprintf", "wcschr", "wcslen", "wcsncpy", "wcsspn", "wcstol",
};
// clang-format on

}  // namespace

const Win32Function* findWin32Function(std::string_view name) {
  static constexpr Win32Function untouched{"", kUntouched};
  if (std::find(std::begin(kUntouchedFunctions), std::end(kUntouchedFunctions), name) !=
      std::end(kUntouchedFunctions)) {
    return &untouched;
  }
  const auto* found =
      std::find_if(std::begin(kFunctions),
                   std::end(kFunctions),
                   [&](const Win32Function& function) { return function.name == name; });
  return found == std::end(kFunctions) ? nullptr : found;
}

uint64_t failureResult(const Win32Function& function, uint32_t error) {
  switch (function.failure) {
    case kStatus:
      return error;
    case kMinusOne:
      return ~uint64_t{0};
    default:
      return 0;
  }
}

bool succeeded(const Win32Function& function, uint64_t result) {
  switch (function.failure) {
    case kStatus:
      return static_cast<int32_t>(result) == 0;
    case kZero:
      return result != 0;
    case kMinusOne:
      return static_cast<uint32_t>(result) != ~uint32_t{0};
    default:
      return true;
  }
}

}  // namespace bed
