#include "functions.h"

#include <jni.h>
#include <windows.h>

#include <algorithm>
#include <iterator>

#include "thunk.h"

namespace bed {
namespace {

/// The library takes over what stands in for a pipe.
bool isOfOutput(const Call& call) {
  const auto which = static_cast<DWORD>(call.words[0]);
  return which == STD_OUTPUT_HANDLE || which == STD_ERROR_HANDLE;
}

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

/// A method: its row, and its place in the table of its interface.
constexpr Function at(uint32_t slot, Function row) {
  row.slot = slot;
  return row;
}

constexpr Effect kOpensLink = opensAt(Account::kInterface, 4, "IShellLinkA::");
constexpr Effect kOpensFile = opensAt(Account::kInterface, 2, "IPersistFile::");

// A star stands for the A and the W that end the names of a pair.
constexpr Function kWin32Functions[] = {
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
    {"FormatMessage*", "nwnn-n", kZero, opensAt(Account::kLocalBlock, 4), kLacks, 0, allocatesText},
    {"GetACP"},
    {"GetVersionEx*", "i", kZero},
    {"LocalFree", "w", kCannotFail, closes(Account::kLocalBlock, 0)},
    {"MultiByteToWideChar", "nn-n-n", kZero},
    {"WideCharToMultiByte", "nn-n-npp", kZero},

    // Modules and what is looked up in them.
    {"FreeLibrary", "w", kCannotFail, closes(Account::kModule, 0)},
    {"GetModuleHandle*", "t", kZero},
    {"GetProcAddress", "-t", kZero},
    {"LoadLibraryW", "t", kZero, opensResult(Account::kModule)},
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
    {"GetFileVersionInfo*", "tnnp", kZero},
    {"GetFileVersionInfoSize*", "tp", kZero},
    {"GetShortPathName*", "tpn", kZero},
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
    {"VerQueryValue*", "-t", kZero},

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
    {"SHGetMalloc", "", kCannotFail, opensAt(Account::kInterface, 0, "IMalloc::")},
    {"SHGetPathFromIDListA", "", kZero, {}, kNoError},
    {"SHGetSpecialFolderLocation", "wn", kStatus, opensAt(Account::kItemList, 2), kComLacks},
    {"SHGetSpecialFolderPathA", "--nn", kZero, {}, kNoError},
    {"CoCreateInstance", "-pn", kStatus, kOpensLink, kComLacks},
    at(5, {"IMalloc::Free", "", kCannotFail, closes(Account::kItemList, 1)}),
    at(2, {"IMalloc::Release", "", kCannotFail, closes(Account::kInterface, 0)}),
    at(2, {"IPersistFile::Release", "", kCannotFail, closes(Account::kInterface, 0)}),
    at(6, {"IPersistFile::Save", "-un", kStatus, {}, kComLacks}),
    at(0, {"IShellLinkA::QueryInterface", "", kStatus, kOpensFile, kComLacks}),
    at(2, {"IShellLinkA::Release", "", kCannotFail, closes(Account::kInterface, 0)}),
    at(11, {"IShellLinkA::SetArguments", "-t", kStatus, {}, kComLacks}),
    at(17, {"IShellLinkA::SetIconLocation", "-tn", kStatus, {}, kComLacks}),
    at(20, {"IShellLinkA::SetPath", "-t", kStatus, {}, kComLacks}),
    at(9, {"IShellLinkA::SetWorkingDirectory", "-t", kStatus, {}, kComLacks}),

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

    // Programs that are run. The ends of a pipe stand side by side in the library.
    {"AddAccessAllowedAce", "-nn9", kZero},
    {"AddAce", "-nndn", kZero},
    {"CloseDesktop", "w", kCannotFail, closes(Account::kDesktop, 0)},
    {"CloseWindowStation", "w", kCannotFail, closes(Account::kDesktop, 0)},
    {"CopySid", "n-", kZero},
    {"CreatePipe", "--in", kZero, opensAt(Account::kHandle, 0, 2)},
    {"CreateProcessA", "ttppnnppl", kZero, opensAt(Account::kHandle, 9, 2)},
    {"CreateProcessAsUserA", "wttppnnppl", kZero, opensAt(Account::kHandle, 10, 2)},
    {"CreateProcessWithLogonW", "tttnttnppl", kZero, opensAt(Account::kHandle, 10, 2)},
    {"GetAce", "-n", kZero},
    {"GetAclInformation", "--nn", kZero},
    {"GetExitCodeProcess", "w", kZero},
    {"GetLengthSid"},
    {"GetProcessWindowStation", "", kZero},
    {"GetSecurityDescriptorDacl", "", kZero},
    {"GetStdHandle", "n", kCannotFail, opensResult(Account::kHandle), 0, 0, isOfOutput},
    {"GetUserObjectSecurity", "wipn", kZero},
    {"ImpersonateLoggedOnUser", "w", kZero},
    {"InitializeAcl", "-nn", kZero},
    {"LogonUserA", "tttnn", kZero, opensAt(Account::kHandle, 5)},
    {"OpenDesktopA", "tnnn", kZero, opensResult(Account::kDesktop)},
    {"OpenWindowStationA", "tnn", kZero, opensResult(Account::kDesktop)},
    {"PeekNamedPipe", "wpnp-p", kZero},
    {"ReadFile", "w-n-p", kZero},
    {"RevertToSelf"},
    {"SetProcessWindowStation", "w", kZero},
    {"SetSecurityDescriptorDacl", "-npn", kZero},
    {"SetUserObjectSecurity", "wi", kZero},
    {"Sleep", "n"},
    {"WaitForInputIdle", "wn", kMinusOne},
    {"WaitForSingleObject", "wn", kMinusOne},
    {"WriteFile", "w-n-p", kZero},

    // Windows, and what is said to them.
    {"GetCurrentProcessId"},
    {"GetDesktopWindow"},
    {"GetWindow", "wn"},
    {"GetWindowThreadProcessId", "wp"},
    {"ImmGetDefaultIMEWnd", "w"},
    {"IsWindowVisible", "w"},
    {"SendMessageA", "wnwm"},
    {"SendMessageTimeoutA", "wnntnnp", kZero},
    {"ShowWindow", "wn"},

    // Services.
    {"ChangeServiceConfig2W", "-nc", kZero},
    {"ChangeServiceConfigW", "-nnnttptttt", kZero},
    {"CloseServiceHandle", "w", kCannotFail, closes(Account::kServiceHandle, 0)},
    {"ControlService", "-n", kZero},
    {"CreateServiceW", "-ttnnnnttpttt", kZero, opensResult(Account::kServiceHandle)},
    {"DeleteService", "", kZero},
    {"EnumServicesStatusW", "-nnpn--i", kZero},
    {"GetServiceDisplayNameW", "-tpi", kZero},
    {"GetServiceKeyNameW", "-tpi", kZero},
    {"LockServiceDatabase", "w", kZero, opensResult(Account::kDatabaseLock)},
    {"OpenSCManagerW", "ppn", kZero, opensResult(Account::kServiceHandle)},
    {"OpenServiceW", "-tn", kZero, opensResult(Account::kServiceHandle)},
    {"QueryServiceConfig2W", "-npn", kZero},
    {"QueryServiceConfigW", "-pn", kZero},
    {"QueryServiceStatus", "w", kZero},
    {"QueryServiceStatusEx", "-npn", kZero},
    {"StartServiceW", "-nq", kZero},
    {"UnlockServiceDatabase", "w", kCannotFail, closes(Account::kDatabaseLock, 0)},

    // Account rights, users and groups.
    {"GetComputerNameA", "", kZero},
    {"LocalAlloc", "nn", kZero, opensResult(Account::kLocalBlock)},
    {"LookupAccountNameA", "ttpi-i", kZero},
    {"LsaAddAccountRights", "ws[hhu]n", kStatus, {}, kStatusLacks},
    {"LsaClose", "w", kStatus, closes(Account::kHandle, 0), kStatusLacks},
    {"LsaEnumerateAccountRights", "ws", kStatus, opensAt(Account::kLsaMemory, 2), kStatusLacks},
    {"LsaFreeMemory", "w", kCannotFail, closes(Account::kLsaMemory, 0)},
    {"LsaNtStatusToWinError", "n"},
    {"LsaOpenPolicy", "{hhu}{nwwnww}n", kStatus, opensAt(Account::kHandle, 3), kStatusLacks},
    {"LsaRemoveAccountRights", "wsy[hhu]n", kStatus, {}, kStatusLacks},
    {"NetApiBufferFree", "w", kCannotFail, closes(Account::kNetBuffer, 0)},
    {"NetGetDCName", "uu", kStatus, opensAt(Account::kNetBuffer, 2)},
    {"NetGroupAdd", "un{uu}p", kStatus},
    {"NetGroupAddUser", "uuu", kStatus},
    {"NetGroupDel", "uu", kStatus},
    {"NetLocalGroupAdd", "un{uu}p", kStatus},
    {"NetLocalGroupAddMembers", "uun[u]n", kStatus},
    {"NetLocalGroupDel", "uu", kStatus},
    {"NetUserAdd", "un{uunnuununuuuunnnnnwnnunn}p", kStatus},
    {"NetUserDel", "uu", kStatus},

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

#define JNI(name, ...) \
  at(offsetof(JNINativeInterface_, name) / sizeof(void*), {#name __VA_OPT__(, ) __VA_ARGS__})

constexpr Effect kNewLocal = opensResult(Account::kLocalReference);

// JNI. In C++ the variadic calls go through the entries that end in V. Characters are released once
// for each time that they were asked for, also when the JVM gave none.
constexpr Function kJniFunctions[] = {
    JNI(FindClass, "-t", kThrows, kNewLocal),
    JNI(GetObjectClass, "", kThrows, kNewLocal),
    JNI(IsInstanceOf, "", kNeverThrows),
    JNI(GetMethodID, "--t", kThrows),
    JNI(GetStaticFieldID, "--t", kThrows),
    JNI(GetStaticIntField, "", kNeverThrows),
    JNI(NewObjectV, "", kThrows, kNewLocal),
    JNI(CallObjectMethodV, "", kThrows, kNewLocal),
    JNI(CallBooleanMethodV, "", kThrows),
    JNI(CallIntMethodV, "", kThrows),
    JNI(CallVoidMethodV, "", kThrows),

    JNI(NewString, "--n", kThrows, kNewLocal),
    JNI(GetStringLength, "", kNeverThrows),
    JNI(GetStringRegion, "", kThrows),
    JNI(GetStringChars, "", kThrows, asksFor(Account::kPinnedString, 1)),
    JNI(ReleaseStringChars, "", kCleansUp, closes(Account::kPinnedString, 1)),

    JNI(GetArrayLength, "", kNeverThrows),
    JNI(NewObjectArray, "-n-p", kThrows, kNewLocal),
    JNI(GetObjectArrayElement, "", kThrows, kNewLocal),
    JNI(SetObjectArrayElement, "", kThrows),
    JNI(NewByteArray, "", kThrows, kNewLocal),
    JNI(GetByteArrayRegion, "", kThrows),
    JNI(SetByteArrayRegion, "", kThrows),

    JNI(NewGlobalRef, "", kThrows, opensResult(Account::kGlobalReference)),
    JNI(DeleteGlobalRef, "", kCleansUp, closes(Account::kGlobalReference, 1)),
    JNI(DeleteLocalRef, "", kCleansUp, closes(Account::kLocalReference, 1)),

    JNI(Throw, "", kNeverThrows),
    JNI(ExceptionOccurred, "", kCleansUp, kNewLocal),
    JNI(ExceptionCheck, "", kCleansUp),
    JNI(ExceptionClear, "", kCleansUp),
};

#undef JNI

/// What the C++ runtime that is linked into the library calls for itself: locks, unwinding, the C
/// library.
// clang-format off
constexpr std::string_view kUntouchedFunctions[] = {
    "CreateSemaphoreW", "DeleteCriticalSection", "EnterCriticalSection",
    "GetCurrentThreadId", "InitializeCriticalSection", "IsDBCSLeadByteEx", "LeaveCriticalSection",
    "RaiseException", "ReleaseSemaphore", "RtlCaptureContext",
    "RtlLookupFunctionEntry", "RtlUnwindEx", "RtlVirtualUnwind", "TlsAlloc", "TlsFree",
    "TlsGetValue", "TlsSetValue", "VirtualProtect", "VirtualQuery",
    "___lc_codepage_func", "___mb_cur_max_func", "__iob_func", "_amsg_exit", "_close", "_errno",
    "_initterm", "_lock", "_mbsicmp", "_read", "_unlock", "_vsnwprintf", "_wcsicmp", "_wcsnicmp", "abort", "fputc", "fputwc", "fwprintf", "fwrite",
    "localeconv", "memchr", "memcmp", "memcpy", "memmove", "memset", "strcmp", "strerror",
    "strlen", "strncmp", "vfprintf", "wcschr", "wcslen", "wcsncpy", "wcsspn", "wcstol",
};
// clang-format on

/// A row's name may end in a star, for a pair.
bool names(const Function& row, std::string_view name) {
  const std::string_view stem = row.name.substr(0, row.name.size() - 1);
  return row.name == name || (row.name.ends_with('*') && name.size() == row.name.size() &&
                              name.starts_with(stem) && (name.back() == 'A' || name.back() == 'W'));
}

/// The first row of a table that fits; null when none does.
template <class Rows, class Fits>
const Function* find(const Rows& rows, const Fits& fits) {
  const auto* found = std::find_if(std::begin(rows), std::end(rows), fits);
  return found == std::end(rows) ? nullptr : found;
}

}  // namespace

bool Function::canFail() const {
  return failure == kStatus || failure == kZero || failure == kMinusOne || failure == kThrows;
}

uint64_t Function::failureResult(uint32_t named) const {
  return failure == kStatus ? named : failure == kMinusOne ? ~uint64_t{0} : 0;
}

bool Function::succeeded(uint64_t result) const {
  switch (failure) {
    case kCannotFail:
      return true;
    case kStatus:
      return static_cast<int32_t>(result) == 0;
    case kMinusOne:
      return static_cast<uint32_t>(result) != ~uint32_t{0};
    default:
      return result != 0;
  }
}

const Function* findFunction(std::string_view name) {
  static constexpr Function untouched{"", "", kUntouched};
  if (std::find(std::begin(kUntouchedFunctions), std::end(kUntouchedFunctions), name) !=
      std::end(kUntouchedFunctions)) {
    return &untouched;
  }
  const auto fits = [&](const Function& row) { return names(row, name); };
  const Function* const found = find(kWin32Functions, fits);
  return found != nullptr ? found : find(kJniFunctions, fits);
}

const Function* findJniFunction(size_t slot) {
  return find(kJniFunctions, [&](const Function& row) { return row.slot == slot; });
}

std::vector<const Function*> methodsOf(std::string_view prefix) {
  std::vector<const Function*> methods;
  for (const Function& row : kWin32Functions) {
    if (row.name.starts_with(prefix)) {
      methods.push_back(&row);
    }
  }
  return methods;
}

}  // namespace bed
