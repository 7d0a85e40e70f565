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

// A star stands for the A and the W that end the names of a pair.
constexpr Win32Function kFunctions[] = {
    // The registry.
    {"NtDeleteKey", "", kStatus, kDeniedStatus},
    {"NtQueryValueKey", "--n", kStatus, kDeniedStatus},
    {"RtlNtStatusToDosError", "n"},
    {"RegCloseKey", "k", kCannotFail, 0, closes(Account::kKey, 0)},
    {"RegCreateKeyEx*", "-tnpnnp-p", kStatus, ERROR_ACCESS_DENIED, opensAt(Account::kKey, 7)},
    {"RegDeleteKey*", "-t", kStatus, ERROR_ACCESS_DENIED},
    {"RegDeleteValue*", "-t", kStatus, ERROR_ACCESS_DENIED},
    {"RegEnumKey*", "-n-n", kStatus, ERROR_ACCESS_DENIED},
    {"RegEnumKeyExW", "-n-i", kStatus, ERROR_ACCESS_DENIED},
    {"RegEnumValue*", "-n-i-ppp", kStatus, ERROR_ACCESS_DENIED},
    {"RegOpenKeyEx*", "ktnn", kStatus, ERROR_ACCESS_DENIED, opensAt(Account::kKey, 4)},
    {"RegQueryInfoKey*", "-ppppppppppp", kStatus, ERROR_ACCESS_DENIED},
    {"RegQueryValueEx*", "-t--pi", kStatus, ERROR_ACCESS_DENIED},
    {"RegSetValueEx*", "-tnndn", kStatus, ERROR_ACCESS_DENIED},

    // Text, versions and messages.
    {"ExpandEnvironmentStrings*", "t-n", kZero, ERROR_NOT_ENOUGH_MEMORY},
    {"FormatMessage*",
     "nwnn-n",
     kZero,
     ERROR_MR_MID_NOT_FOUND,
     opensAt(Account::kLocalBlock, 4),
     allocatesText},
    {"GetACP"},
    {"GetVersionEx*", "i", kZero, ERROR_INVALID_PARAMETER},
    {"LocalFree", "w", kCannotFail, 0, closes(Account::kLocalBlock, 0)},
    {"MultiByteToWideChar", "nn-n-n", kZero, ERROR_NO_UNICODE_TRANSLATION},
    {"WideCharToMultiByte", "nn-n-npp", kZero, ERROR_NO_UNICODE_TRANSLATION},

    // Modules and what is looked up in them.
    {"FreeLibrary", "w", kCannotFail, 0, closes(Account::kModule, 0)},
    {"GetModuleHandle*", "t", kZero, ERROR_MOD_NOT_FOUND},
    {"GetProcAddress", "-t", kZero, ERROR_PROC_NOT_FOUND},
    {"LoadLibraryW", "t", kZero, ERROR_MOD_NOT_FOUND},
    {"LoadLibraryEx*", "tpn", kZero, ERROR_MOD_NOT_FOUND, opensResult(Account::kModule)},

    // Files.
    {"CloseHandle", "w", kCannotFail, 0, closes(Account::kHandle, 0)},
    {"CopyFile*", "ttn", kZero, ERROR_ACCESS_DENIED},
    {"CreateFile*", "tnnpnnw", kMinusOne, ERROR_ACCESS_DENIED, opensResult(Account::kHandle)},
    {"CreateFileMappingA", "wpnnnp", kZero, ERROR_DISK_FULL, opensResult(Account::kHandle)},
    {"DuplicateHandle", "", kZero, ERROR_ACCESS_DENIED, opensAt(Account::kHandle, 3)},
    {"DeleteFile*", "t", kZero, ERROR_ACCESS_DENIED},
    {"FindClose", "w", kCannotFail, 0, closes(Account::kSearch, 0)},
    {"FindFirstFile*", "t", kMinusOne, ERROR_ACCESS_DENIED, opensResult(Account::kSearch)},
    {"FindNextFile*", "", kZero, ERROR_NO_MORE_FILES},
    {"GetFileAttributes*", "t", kMinusOne, ERROR_ACCESS_DENIED},
    {"GetFileSize", "", kMinusOne, ERROR_ACCESS_DENIED},
    {"GetShortPathNameA", "tpn", kZero, ERROR_ACCESS_DENIED},
    {"GetWindowsDirectory*", "-n", kZero, ERROR_ACCESS_DENIED},
    {"MapViewOfFile", "-nnnw", kZero, ERROR_NOT_ENOUGH_MEMORY, opensResult(Account::kView)},
    {"MoveFileA", "tt", kZero, ERROR_ACCESS_DENIED},
    {"MoveFileExW", "ttn", kZero, ERROR_ACCESS_DENIED},
    {"RemoveDirectory*", "t", kZero, ERROR_ACCESS_DENIED},
    {"SetEndOfFile", "", kZero, ERROR_ACCESS_DENIED},
    {"SetFileAttributes*", "tn", kZero, ERROR_ACCESS_DENIED},
    {"SetFilePointer", "-npn", kMinusOne, ERROR_ACCESS_DENIED},
    {"SetFileTime", "-qqq", kZero, ERROR_ACCESS_DENIED},
    {"UnmapViewOfFile", "", kCannotFail, 0, closes(Account::kView, 0)},

    // Drives and directories. A kind of drive or folder that is unknown is no error.
    {"CreateDirectory*", "tp", kZero, ERROR_ACCESS_DENIED},
    {"GetDiskFreeSpace*", "t", kZero, ERROR_ACCESS_DENIED},
    {"GetDiskFreeSpaceEx*", "t", kZero, ERROR_ACCESS_DENIED},
    {"GetDriveType*", "t", kZero},
    {"GetLogicalDriveStrings*", "n", kZero, ERROR_ACCESS_DENIED},
    {"GetSystemDirectory*", "-n", kZero, ERROR_ACCESS_DENIED},
    {"GetTempFileNameA", "ttn", kZero, ERROR_ACCESS_DENIED},
    {"GetTempPath*", "n", kZero, ERROR_ACCESS_DENIED},
    {"GetVolumeInformation*", "tp-p---n", kZero, ERROR_ACCESS_DENIED},

    // The shell. The allocator that owns the item lists is always there.
    {"SHChangeNotify", "nntw"},
    {"SHGetMalloc", "", kCannotFail, 0, opensAt(Account::kInterface, 0)},
    {"SHGetPathFromIDListA", "", kZero},
    {"SHGetSpecialFolderLocation", "wn", kStatus, kDenied, opensAt(Account::kItemList, 2)},
    {"SHGetSpecialFolderPathA", "--nn", kZero},
    {"CoCreateInstance", "-pn", kStatus, kDenied, opensAt(Account::kInterface, 4)},
    {"IMalloc::Free", "", kCannotFail, 0, closes(Account::kItemList, 1)},
    {"IMalloc::Release", "", kCannotFail, 0, closes(Account::kInterface, 0)},
    {"IPersistFile::Release", "", kCannotFail, 0, closes(Account::kInterface, 0)},
    {"IPersistFile::Save", "-un", kStatus, kDenied},
    {"IShellLinkA::QueryInterface", "", kStatus, kDenied, opensAt(Account::kInterface, 2)},
    {"IShellLinkA::Release", "", kCannotFail, 0, closes(Account::kInterface, 0)},
    {"IShellLinkA::SetArguments", "-t", kStatus, kDenied},
    {"IShellLinkA::SetIconLocation", "-tn", kStatus, kDenied},
    {"IShellLinkA::SetPath", "-t", kStatus, kDenied},
    {"IShellLinkA::SetWorkingDirectory", "-t", kStatus, kDenied},

    // Accounts, tokens and owners.
    {"AdjustTokenPrivileges", "wndnpp", kZero, ERROR_ACCESS_DENIED},
    {"AllocateAndInitializeSid",
     "6ynnnnnnnn",
     kZero,
     ERROR_ACCESS_DENIED,
     opensAt(Account::kSid, 10)},
    {"EqualSid", "ww", kZero},
    {"FreeSid", "w", kCannotFail, 0, closes(Account::kSid, 0)},
    {"GetNamedSecurityInfoW",
     "tnnpppp",
     kStatus,
     ERROR_ACCESS_DENIED,
     opensAt(Account::kLocalBlock, 7)},
    {"GetTokenInformation", "wnpn", kZero, ERROR_ACCESS_DENIED},
    {"InitializeSecurityDescriptor", "", kZero, ERROR_ACCESS_DENIED},
    {"IsValidSecurityDescriptor", "", kZero, ERROR_ACCESS_DENIED},
    {"LookupAccountNameW", "ttpi-i", kZero, ERROR_ACCESS_DENIED},
    {"LookupAccountSidW", "tw-i-i", kZero, ERROR_ACCESS_DENIED},
    {"LookupPrivilegeValueA", "tt", kZero, ERROR_ACCESS_DENIED},
    {"OpenProcessToken", "wn", kZero, ERROR_ACCESS_DENIED, opensAt(Account::kHandle, 2)},
    {"OpenThreadToken", "wnn", kZero, ERROR_ACCESS_DENIED, opensAt(Account::kHandle, 3)},
    {"SetFileSecurityW", "tno", kZero, ERROR_ACCESS_DENIED},
    {"SetNamedSecurityInfoW", "tnnpppp", kStatus, ERROR_ACCESS_DENIED},
    {"SetSecurityDescriptorGroup", "-wn", kZero, ERROR_ACCESS_DENIED},
    {"SetSecurityDescriptorOwner", "-wn", kZero, ERROR_ACCESS_DENIED},

    // The process.
    {"GetCurrentProcess"},
    {"GetCurrentThread"},
    {"GetSystemInfo"},
    {"SetErrorMode", "n"},
    {"SetProcessAffinityMask", "ww", kZero, ERROR_ACCESS_DENIED},
    {"CoInitialize", "", kStatus, 0x8007000EU},
    {"CoUninitialize"},
    {"GetLastError"},
    {"SetLastError"},

    // The C runtime's heap. realloc closes and opens; the heap guard books it.
    {"calloc", "", kZero, 0, opensResult(Account::kHeapBlock)},
    {"free", "", kCannotFail, 0, closes(Account::kHeapBlock, 0)},
    {"malloc", "", kZero, 0, opensResult(Account::kHeapBlock)},
    {"realloc", "", kZero, 0, opensResult(Account::kHeapBlock)},
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

bool isOfPair(std::string_view pair, std::string_view name) {
  return name.size() == pair.size() && name.starts_with(pair.substr(0, pair.size() - 1)) &&
         (name.ends_with('A') || name.ends_with('W'));
}

}  // namespace

const Win32Function* findWin32Function(std::string_view name) {
  static constexpr Win32Function untouched{"", "", kUntouched};
  if (std::find(std::begin(kUntouchedFunctions), std::end(kUntouchedFunctions), name) !=
      std::end(kUntouchedFunctions)) {
    return &untouched;
  }
  const auto* found = std::find_if(
      std::begin(kFunctions),
      std::end(kFunctions),
      [&](const Win32Function& function) {
        return function.name.ends_with('*') ? isOfPair(function.name, name) : function.name == name;
      });
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
