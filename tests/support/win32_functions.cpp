#include "win32_functions.h"

#include <windows.h>

#include <algorithm>
#include <iterator>

namespace bed {
namespace {

bool allocatesText(const Call& call) {
  return (call.words[0] & FORMAT_MESSAGE_ALLOCATE_BUFFER) != 0;
}

/// The error that no code expects, "insufficient system resources": what is hard-coded shows beside
/// it.
constexpr uint32_t kLacks = ERROR_NO_SYSTEM_RESOURCES;
/// As COM says it.
constexpr uint32_t kComLacks = 0x80070000U | kLacks;
/// And as the system's own functions say it.
constexpr uint32_t kStatusLacks = 0xC000009AU;
/// A failure that gives no reason.
constexpr uint32_t kNoError = 0;

using enum Failure;

// A star stands for the A and the W that end the names of a pair.
constexpr Win32Function kFunctions[] = {
    // The registry.
    {"NtDeleteKey", "", kStatus, {}, kStatusLacks},
    {"NtQueryValueKey", "--n", kStatus, {}, kStatusLacks},
    {"RtlNtStatusToDosError", "n"},
    {"RegCloseKey", "k", kCannotFail, closes(Account::kKey, 0)},
    {"RegCreateKeyEx*", "-tnpnnp-p", kStatus, opensAt(Account::kKey, 7)},
    {"RegDeleteKey*", "-t", kStatus},
    {"RegDeleteValue*", "-t", kStatus},
    {"RegEnumKey*", "-n-n", kStatus},
    {"RegEnumKeyExW", "-n-i", kStatus},
    {"RegEnumValue*", "-n-i-ppp", kStatus},
    {"RegOpenKeyEx*", "ktnn", kStatus, opensAt(Account::kKey, 4)},
    {"RegQueryInfoKey*", "-ppppppppppp", kStatus},
    {"RegQueryValueEx*", "-t--pi", kStatus},
    {"RegSetValueEx*", "-tnndn", kStatus},

    // Text, versions and messages.
    {"ExpandEnvironmentStrings*", "t-n", kZero},
    {"FormatMessage*", "nwnn-n", kZero, opensAt(Account::kLocalBlock, 4), kLacks, allocatesText},
    {"GetACP"},
    {"GetVersionEx*", "i", kZero},
    {"LocalFree", "w", kCannotFail, closes(Account::kLocalBlock, 0)},
    {"MultiByteToWideChar", "nn-n-n", kZero},
    {"WideCharToMultiByte", "nn-n-npp", kZero},

    // Modules and what is looked up in them.
    {"FreeLibrary", "w", kCannotFail, closes(Account::kModule, 0)},
    {"GetModuleHandle*", "t", kZero},
    {"GetProcAddress", "-t", kZero},
    {"LoadLibraryW", "t", kZero},
    {"LoadLibraryEx*", "tpn", kZero, opensResult(Account::kModule)},

    // Files.
    {"CloseHandle", "w", kCannotFail, closes(Account::kHandle, 0)},
    {"CopyFile*", "ttn", kZero},
    {"CreateFile*", "tnnpnnw", kMinusOne, opensResult(Account::kHandle)},
    {"CreateFileMappingA", "wpnnnp", kZero, opensResult(Account::kHandle)},
    {"DuplicateHandle", "", kZero, opensAt(Account::kHandle, 3)},
    {"DeleteFile*", "t", kZero},
    {"FindClose", "w", kCannotFail, closes(Account::kSearch, 0)},
    {"FindFirstFile*", "t", kMinusOne, opensResult(Account::kSearch)},
    {"FindNextFile*", "", kZero},
    {"GetFileAttributes*", "t", kMinusOne},
    {"GetFileSize", "", kMinusOne},
    {"GetShortPathNameA", "tpn", kZero},
    {"GetWindowsDirectory*", "-n", kZero},
    {"MapViewOfFile", "-nnnw", kZero, opensResult(Account::kView)},
    {"MoveFileA", "tt", kZero},
    {"MoveFileExW", "ttn", kZero},
    {"RemoveDirectory*", "t", kZero},
    {"SetEndOfFile", "", kZero},
    {"SetFileAttributes*", "tn", kZero},
    {"SetFilePointer", "-npn", kMinusOne},
    {"SetFileTime", "-qqq", kZero},
    {"UnmapViewOfFile", "", kCannotFail, closes(Account::kView, 0)},

    // Drives and directories. A kind of drive or folder that is unknown is no error.
    {"CreateDirectory*", "tp", kZero},
    {"GetDiskFreeSpace*", "t", kZero},
    {"GetDiskFreeSpaceEx*", "t", kZero},
    {"GetDriveType*", "t", kZero, {}, kNoError},
    {"GetLogicalDriveStrings*", "n", kZero},
    {"GetSystemDirectory*", "-n", kZero},
    {"GetTempFileNameA", "ttn", kZero},
    {"GetTempPath*", "n", kZero},
    {"GetVolumeInformation*", "tp-p---n", kZero},

    // The shell. The allocator that owns the item lists is always there.
    {"SHChangeNotify", "nntw"},
    {"SHGetMalloc", "", kCannotFail, opensAt(Account::kInterface, 0)},
    {"SHGetPathFromIDListA", "", kZero, {}, kNoError},
    {"SHGetSpecialFolderLocation", "wn", kStatus, opensAt(Account::kItemList, 2), kComLacks},
    {"SHGetSpecialFolderPathA", "--nn", kZero, {}, kNoError},
    {"CoCreateInstance", "-pn", kStatus, opensAt(Account::kInterface, 4), kComLacks},
    {"IMalloc::Free", "", kCannotFail, closes(Account::kItemList, 1)},
    {"IMalloc::Release", "", kCannotFail, closes(Account::kInterface, 0)},
    {"IPersistFile::Release", "", kCannotFail, closes(Account::kInterface, 0)},
    {"IPersistFile::Save", "-un", kStatus, {}, kComLacks},
    {"IShellLinkA::QueryInterface", "", kStatus, opensAt(Account::kInterface, 2), kComLacks},
    {"IShellLinkA::Release", "", kCannotFail, closes(Account::kInterface, 0)},
    {"IShellLinkA::SetArguments", "-t", kStatus, {}, kComLacks},
    {"IShellLinkA::SetIconLocation", "-tn", kStatus, {}, kComLacks},
    {"IShellLinkA::SetPath", "-t", kStatus, {}, kComLacks},
    {"IShellLinkA::SetWorkingDirectory", "-t", kStatus, {}, kComLacks},

    // Accounts, tokens and owners.
    {"AdjustTokenPrivileges", "wndnpp", kZero},
    {"AllocateAndInitializeSid", "6ynnnnnnnn", kZero, opensAt(Account::kSid, 10)},
    {"EqualSid", "ww", kZero, {}, kNoError},
    {"FreeSid", "w", kCannotFail, closes(Account::kSid, 0)},
    {"GetNamedSecurityInfoW", "tnnpppp", kStatus, opensAt(Account::kLocalBlock, 7)},
    {"GetTokenInformation", "wnpn", kZero},
    {"InitializeSecurityDescriptor", "", kZero},
    {"IsValidSecurityDescriptor", "", kZero},
    {"LookupAccountNameW", "ttpi-i", kZero},
    {"LookupAccountSidW", "tw-i-i", kZero},
    {"LookupPrivilegeValueA", "tt", kZero},
    {"OpenProcessToken", "wn", kZero, opensAt(Account::kHandle, 2)},
    {"OpenThreadToken", "wnn", kZero, opensAt(Account::kHandle, 3)},
    {"SetFileSecurityW", "tno", kZero},
    {"SetNamedSecurityInfoW", "tnnpppp", kStatus},
    {"SetSecurityDescriptorGroup", "-wn", kZero},
    {"SetSecurityDescriptorOwner", "-wn", kZero},

    // Programs that are run, and their windows.
    {"CreateProcessA", "ttppnnpps", kZero, opensAt(Account::kHandle, 9, 2)},
    {"GetCurrentProcessId"},
    {"GetDesktopWindow"},
    {"GetWindow", "wn"},
    {"GetWindowThreadProcessId", "wp"},
    {"ImmGetDefaultIMEWnd", "w"},
    {"IsWindowVisible", "w"},
    {"SendMessageA", "wnwc"},
    {"SendMessageTimeoutA", "wnntnnp", kZero},
    {"ShowWindow", "wn"},
    {"Sleep", "n"},
    {"WaitForInputIdle", "wn", kMinusOne},

    // The process.
    {"GetEnvironmentVariable*", "t-n", kZero},
    {"SetEnvironmentVariable*", "tt", kZero},
    {"GetCurrentProcess"},
    {"GetCurrentThread"},
    {"GetSystemInfo"},
    {"SetErrorMode", "n"},
    {"SetProcessAffinityMask", "ww", kZero},
    {"CoInitialize", "", kStatus, {}, kComLacks},
    {"CoUninitialize"},
    {"GetLastError"},
    {"SetLastError"},

    // The C runtime's heap. realloc closes and opens; the heap guard books it.
    {"calloc", "", kZero, opensResult(Account::kHeapBlock)},
    {"free", "", kCannotFail, closes(Account::kHeapBlock, 0)},
    {"malloc", "", kZero, opensResult(Account::kHeapBlock)},
    {"realloc", "", kZero, opensResult(Account::kHeapBlock)},
};

/// What the C++ runtime that is linked into the library calls for itself: locks, unwinding, the C
/// library.
// clang-format off
constexpr std::string_view kUntouchedFunctions[] = {
    "CreateSemaphoreW", "DeleteCriticalSection", "EnterCriticalSection",
    "GetCurrentThreadId", "InitializeCriticalSection", "IsDBCSLeadByteEx", "LeaveCriticalSection",
    "RaiseException", "ReleaseSemaphore", "RtlCaptureContext",
    "RtlLookupFunctionEntry", "RtlUnwindEx", "RtlVirtualUnwind", "TlsAlloc", "TlsFree",
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
