#include "functions.h"

#include <windows.h>

#include <algorithm>
#include <charconv>

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
/// A failure that gives no reason, such as of a kind of drive or folder that is unknown.
constexpr uint32_t kNoError = 0;

using enum Failure;
using enum Effect::Move;

/// Functions of which the same is known, but for how their arguments are shown.
struct Row {
  /// "Name signature; ...". A star stands for the A and the W that end the names of a pair. Behind
  /// an @ is a method's place in the table of its interface, and that of a JNI function in JNI's.
  std::string_view functions;
  Effect effect;
  Failure failure;
  uint32_t error = kLacks;
  bool (*applies)(const Call&) = nullptr;
};

constexpr std::string_view kBlock = "local block";
constexpr std::string_view kDesktop = "station or desktop";
constexpr std::string_view kService = "service handle";

constexpr Row kRows[] = {
    // The registry.
    {"RegCloseKey k", {kCloses, Account::kKey}, kCannotFail},
    {"RegCreateKeyEx* -tnpnnp-p", {kOpensAt, Account::kKey, 7}, kStatus},
    {"RegOpenKeyEx* ktnn", {kOpensAt, Account::kKey, 4}, kStatus},

    // Memory and modules.
    {"FormatMessage* nwnn-n", {kOpensAt, kBlock, 4}, kZero, kLacks, allocatesText},
    {"GetNamedSecurityInfoW tnnpppp", {kOpensAt, kBlock, 7}, kStatus},
    {"LocalAlloc nn", {kOpensResult, kBlock}, kZero},
    {"LocalFree w", {kCloses, kBlock}, kCannotFail},
    {"AllocateAndInitializeSid 6ynnnnnnnn", {kOpensAt, "SID", 10}, kZero},
    {"FreeSid w", {kCloses, "SID"}, kCannotFail},
    {"LoadLibraryEx* tpn; LoadLibraryW t", {kOpensResult, Account::kModule}, kZero},
    {"FreeLibrary w", {kCloses, Account::kModule}, kCannotFail},

    // Handles. The ends of a pipe stand side by side in the library.
    {"CreateFile* tnnpnnw", {kOpensResult, Account::kHandle}, kMinusOne},
    {"CreateFileMappingA wpnnnp", {kOpensResult, Account::kHandle}, kZero},
    {"GetStdHandle n", {kOpensResult, Account::kHandle}, kCannotFail, kLacks, isOfOutput},
    {"CreatePipe --in", {kOpensAt, Account::kHandle, 0, 2}, kZero},
    {"OpenProcessToken wn", {kOpensAt, Account::kHandle, 2}, kZero},
    {"DuplicateHandle ----nnn; OpenThreadToken wnn", {kOpensAt, Account::kHandle, 3}, kZero},
    {"LogonUserA tttnn", {kOpensAt, Account::kHandle, 5}, kZero},
    {"CreateProcessA ttppnnppl", {kOpensAt, Account::kHandle, 9, 2}, kZero},
    {"CreateProcessAsUserA wttppnnppl; CreateProcessWithLogonW tttnttnppl",
     {kOpensAt, Account::kHandle, 10, 2},
     kZero},
    {"CloseHandle w", {kCloses, Account::kHandle}, kCannotFail},
    {"FindFirstFile* t", {kOpensResult, "search"}, kMinusOne},
    {"FindClose w", {kCloses, "search"}, kCannotFail},
    {"MapViewOfFile -nnnw", {kOpensResult, "view"}, kZero},
    {"UnmapViewOfFile", {kCloses, "view"}, kCannotFail},
    {"OpenDesktopA tnnn; OpenWindowStationA tnn", {kOpensResult, kDesktop}, kZero},
    {"CloseDesktop w; CloseWindowStation w", {kCloses, kDesktop}, kCannotFail},

    // Services.
    {"CreateServiceW -ttnnnnttpttt; OpenSCManagerW ppn; OpenServiceW -tn",
     {kOpensResult, kService},
     kZero},
    {"CloseServiceHandle w", {kCloses, kService}, kCannotFail},
    {"LockServiceDatabase w", {kOpensResult, "database lock"}, kZero},
    {"UnlockServiceDatabase w", {kCloses, "database lock"}, kCannotFail},

    // The security authority and network management.
    {"LsaOpenPolicy {hhu}{nwwnww}n", {kOpensAt, Account::kHandle, 3}, kStatus, kStatusLacks},
    {"LsaClose w", {kCloses, Account::kHandle}, kStatus, kStatusLacks},
    {"LsaEnumerateAccountRights ws", {kOpensAt, Account::kLsaMemory, 2}, kStatus, kStatusLacks},
    {"LsaFreeMemory w", {kCloses, Account::kLsaMemory}, kCannotFail},
    {"NetGetDCName uu", {kOpensAt, "network buffer", 2}, kStatus},
    {"NetApiBufferFree w", {kCloses, "network buffer"}, kCannotFail},

    // The shell and its objects. The allocator that owns the item lists is always there.
    {"SHGetMalloc", {kOpensAt, "interface", 0, 1, "IMalloc::"}, kCannotFail},
    {"CoCreateInstance -pn", {kOpensAt, "interface", 4, 1, "IShellLinkA::"}, kStatus, kComLacks},
    {"IShellLinkA::QueryInterface@0",
     {kOpensAt, "interface", 2, 1, "IPersistFile::"},
     kStatus,
     kComLacks},
    {"IMalloc::Release@2; IPersistFile::Release@2; IShellLinkA::Release@2",
     {kCloses, "interface"},
     kCannotFail},
    {"SHGetSpecialFolderLocation wn", {kOpensAt, "item list", 2}, kStatus, kComLacks},
    {"IMalloc::Free@5", {kCloses, "item list", 1}, kCannotFail},
    {"CoInitialize; IPersistFile::Save@6 -un; IShellLinkA::SetArguments@11 -t; "
     "IShellLinkA::SetIconLocation@17 -tn; IShellLinkA::SetPath@20 -t; "
     "IShellLinkA::SetWorkingDirectory@9 -t",
     {},
     kStatus,
     kComLacks},

    // The C runtime's heap. realloc closes and opens; the heap guard books it.
    {"calloc; malloc; realloc", {kOpensResult, Account::kHeapBlock}, kZero},
    {"free", {kCloses, Account::kHeapBlock}, kCannotFail},

    // JNI. In C++ the variadic calls go through the entries that end in V. Characters are released
    // once for each time that they were asked for, also when the JVM gave none.
    {"CallObjectMethodV@35; FindClass@6 -t; GetObjectArrayElement@173; GetObjectClass@31; "
     "NewByteArray@176; NewObjectArray@172 -n-p; NewObjectV@29; NewString@163 --n",
     {kOpensResult, Account::kLocalReference},
     kThrows},
    {"ExceptionOccurred@15", {kOpensResult, Account::kLocalReference}, kCleansUp},
    {"DeleteLocalRef@23", {kCloses, Account::kLocalReference, 1}, kCleansUp},
    {"NewGlobalRef@21", {kOpensResult, "global reference"}, kThrows},
    {"DeleteGlobalRef@22", {kCloses, "global reference", 1}, kCleansUp},
    {"GetStringChars@165", {kAsksFor, "pinned string", 1}, kThrows},
    {"ReleaseStringChars@166", {kCloses, "pinned string", 1}, kCleansUp},
    {"CallBooleanMethodV@38; CallIntMethodV@50; CallVoidMethodV@62; GetByteArrayRegion@200; "
     "GetMethodID@33 --t; GetStaticFieldID@144 --t; GetStringRegion@220; SetByteArrayRegion@208; "
     "SetObjectArrayElement@174",
     {},
     kThrows},
    {"GetArrayLength@171; GetStaticIntField@150; GetStringLength@164; IsInstanceOf@32; Throw@13",
     {},
     kNeverThrows},
    {"ExceptionCheck@228; ExceptionClear@17", {}, kCleansUp},

    // All others.
    {"CoUninitialize; GetACP; GetCurrentProcess; GetCurrentProcessId; GetCurrentThread; "
     "GetDesktopWindow; GetLastError; GetLengthSid; GetSystemInfo; GetWindow wn; "
     "GetWindowThreadProcessId wp; ImmGetDefaultIMEWnd w; IsWindowVisible w; "
     "LsaNtStatusToWinError n; RevertToSelf; RtlNtStatusToDosError n; SendMessageA wnwm; "
     "SetErrorMode n; SetLastError; SHChangeNotify nntw; ShowWindow wn; Sleep n",
     {},
     kCannotFail},
    {"LsaAddAccountRights ws[hhu]n; LsaRemoveAccountRights wsy[hhu]n; NtDeleteKey; "
     "NtQueryValueKey --n",
     {},
     kStatus,
     kStatusLacks},
    {"NetGroupAdd un{uu}p; NetGroupAddUser uuu; NetGroupDel uu; NetLocalGroupAdd un{uu}p; "
     "NetLocalGroupAddMembers uun[u]n; NetLocalGroupDel uu; "
     "NetUserAdd un{uunnuununuuuunnnnnwnnunn}p; NetUserDel uu; RegDeleteKey* -t; "
     "RegDeleteValue* -t; RegEnumKey* -n-n; RegEnumKeyExW -n-i; RegEnumValue* -n-i-ppp; "
     "RegQueryInfoKey* -ppppppppppp; RegQueryValueEx* -t--pi; RegSetValueEx* -tnndn; "
     "SetNamedSecurityInfoW tnnpppp",
     {},
     kStatus},
    {"AddAccessAllowedAce -nn9; AddAce -nndn; AdjustTokenPrivileges wndnpp; "
     "ChangeServiceConfig2W -nc; ChangeServiceConfigW -nnnttptttt; ControlService -n; "
     "CopyFile* ttn; CopySid n-; CreateDirectory* tp; DeleteFile* t; DeleteService; "
     "EnumServicesStatusW -nnpn--i; ExpandEnvironmentStrings* t-n; FindNextFile*; GetAce -n; "
     "GetAclInformation --nn; GetComputerNameA; GetDiskFreeSpace* t; GetDiskFreeSpaceEx* t; "
     "GetEnvironmentVariable* t-n; GetExitCodeProcess w; GetFileVersionInfo* tnnp; "
     "GetFileVersionInfoSize* tp; GetLogicalDriveStrings* n; GetModuleHandle* t; "
     "GetProcAddress -t; GetProcessWindowStation; GetSecurityDescriptorDacl; "
     "GetServiceDisplayNameW -tpi; GetServiceKeyNameW -tpi; GetShortPathName* tpn; "
     "GetSystemDirectory* -n; GetTempFileNameA ttn; GetTempPath* n; GetTokenInformation wnpn; "
     "GetUserObjectSecurity wipn; GetVersionEx* i; GetVolumeInformation* tp-p---n; "
     "GetWindowsDirectory* -n; ImpersonateLoggedOnUser w; InitializeAcl -nn; "
     "InitializeSecurityDescriptor; IsValidSecurityDescriptor; "
     "LookupAccountName* ttpi-i; LookupAccountSidW tw-i-i; LookupPrivilegeValueA tt; MoveFileA tt; "
     "MoveFileExW ttn; MultiByteToWideChar nn-n-n; PeekNamedPipe wpnp-p; "
     "QueryServiceConfig2W -npn; QueryServiceConfigW -pn; QueryServiceStatus w; "
     "QueryServiceStatusEx -npn; ReadFile w-n-p; RemoveDirectory* t; SendMessageTimeoutA wnntnnp; "
     "SetEndOfFile; SetEnvironmentVariable* tt; SetFileAttributes* tn; "
     "SetFileSecurityW tn{yyhsspp}; SetFileTime -qqq; SetProcessAffinityMask ww; "
     "SetProcessWindowStation w; SetSecurityDescriptorDacl -npn; SetSecurityDescriptorGroup -wn; "
     "SetSecurityDescriptorOwner -wn; SetUserObjectSecurity wi; StartServiceW -nq; "
     "VerQueryValue* -t; WideCharToMultiByte nn-n-npp; WriteFile w-n-p",
     {},
     kZero},
    {"EqualSid ww; GetDriveType* t; SHGetPathFromIDListA; SHGetSpecialFolderPathA --nn",
     {},
     kZero,
     kNoError},
    {"GetFileAttributes* t; GetFileSize; SetFilePointer -npn; WaitForInputIdle wn; "
     "WaitForSingleObject wn",
     {},
     kMinusOne},
    // What the C++ runtime that is linked into the library calls for itself: locks, unwinding, the
    // C library.
    {"CreateSemaphoreW; DeleteCriticalSection; EnterCriticalSection; GetCurrentThreadId; "
     "InitializeCriticalSection; IsDBCSLeadByteEx; LeaveCriticalSection; RaiseException; "
     "ReleaseSemaphore; RtlCaptureContext; RtlLookupFunctionEntry; RtlUnwindEx; "
     "RtlVirtualUnwind; TlsAlloc; TlsFree; TlsGetValue; TlsSetValue; VirtualProtect; "
     "VirtualQuery; ___lc_codepage_func; ___mb_cur_max_func; __iob_func; _amsg_exit; _close; "
     "_errno; _initterm; _lock; _mbsicmp; _read; _unlock; _vsnwprintf; _wcsicmp; _wcsnicmp; "
     "abort; fputc; fputwc; fwprintf; fwrite; localeconv; memchr; memcmp; memcpy; memmove; "
     "memset; strcmp; strerror; strlen; strncmp; vfprintf; wcschr; wcslen; wcsncpy; wcsspn; "
     "wcstol",
     {},
     kUntouched},
};

/// "Name@place signature", of which the place and the signature may be missing.
Function functionOf(const Row& row, std::string_view text) {
  const size_t blank = std::min(text.find(' '), text.size());
  const size_t sign = std::min(text.find('@'), blank);
  Function function{.name = text.substr(0, sign)};
  function.signature = text.substr(std::min(blank + 1, text.size()));
  std::from_chars(text.data() + std::min(sign + 1, blank), text.data() + blank, function.slot);
  function.failure = row.failure;
  function.effect = row.effect;
  function.error = row.error;
  function.applies = row.applies;
  return function;
}

const std::vector<Function>& functions() {
  static const std::vector<Function> all = [] {
    constexpr std::string_view kSeparator = "; ";
    std::vector<Function> found;
    for (const Row& row : kRows) {
      for (std::string_view rest = row.functions; !rest.empty();) {
        const size_t end = std::min(rest.find(kSeparator), rest.size());
        found.push_back(functionOf(row, rest.substr(0, end)));
        rest.remove_prefix(std::min(end + kSeparator.size(), rest.size()));
      }
    }
    return found;
  }();
  return all;
}

/// A row's name may end in a star, for a pair.
bool names(const Function& function, std::string_view name) {
  std::string_view stem = function.name;
  if (stem.ends_with('*') && (name.ends_with('A') || name.ends_with('W'))) {
    stem.remove_suffix(1);
    name.remove_suffix(1);
  }
  return stem == name;
}

/// The first that fits; null when none does.
template <class Fits>
const Function* find(const Fits& fits) {
  const auto found = std::find_if(functions().begin(), functions().end(), fits);
  return found == functions().end() ? nullptr : &*found;
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
  return find([&](const Function& function) { return names(function, name); });
}

const Function* findJniFunction(size_t slot) {
  return find(
      [&](const Function& function) { return function.isOfJni() && function.slot == slot; });
}

std::vector<const Function*> methodsOf(std::string_view prefix) {
  std::vector<const Function*> methods;
  for (const Function& function : functions()) {
    if (function.name.starts_with(prefix)) {
      methods.push_back(&function);
    }
  }
  return methods;
}

}  // namespace bed
