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

using enum Failure;
using enum Effect::Move;

constexpr std::string_view kBlock = "local block";
constexpr std::string_view kDesktop = "station or desktop";
constexpr std::string_view kService = "service handle";

/// Functions of which the same is known. As their name stands "Name@place signature; ...", of which
/// the place (of a method in the table of its interface, of a JNI function in JNI's) and the
/// signature may be missing. A star stands for the A and the W that end the names of a pair.
constexpr Function kRows[] = {
    // The registry.
    {"RegCloseKey k", kCannotFail, {kCloses, Account::kKey}},
    {"RegCreateKeyEx* -tnpnnp-p", kStatus, {kOpensAt, Account::kKey, 7}},
    {"RegOpenKeyEx* ktnn", kStatus, {kOpensAt, Account::kKey, 4}},

    // Memory and modules.
    {"FormatMessage* nwnn-n", kZero, {kOpensAt, kBlock, 4}, allocatesText},
    {"GetNamedSecurityInfoW tnnpppp", kStatus, {kOpensAt, kBlock, 7}},
    {"LocalAlloc nn", kZero, {kOpensResult, kBlock}},
    {"LocalFree w", kCannotFail, {kCloses, kBlock}},
    {"AllocateAndInitializeSid 6ynnnnnnnn", kZero, {kOpensAt, "SID", 10}},
    {"FreeSid w", kCannotFail, {kCloses, "SID"}},
    {"LoadLibraryEx* tpn; LoadLibraryW t", kZero, {kOpensResult, Account::kModule}},
    {"FreeLibrary w", kCannotFail, {kCloses, Account::kModule}},

    // Handles. The ends of a pipe stand side by side in the library.
    {"CreateFile* tnnpnnw", kMinusOne, {kOpensResult, Account::kHandle}},
    {"CreateFileMappingA wpnnnp", kZero, {kOpensResult, Account::kHandle}},
    {"GetStdHandle n", kCannotFail, {kOpensResult, Account::kHandle}, isOfOutput},
    {"CreatePipe --in", kZero, {kOpensAt, Account::kHandle, 0, 2}},
    {"OpenProcessToken wn", kZero, {kOpensAt, Account::kHandle, 2}},
    {"DuplicateHandle ----nnn; OpenThreadToken wnn", kZero, {kOpensAt, Account::kHandle, 3}},
    {"LogonUserA tttnn", kZero, {kOpensAt, Account::kHandle, 5}},
    {"CreateProcessA ttppnnpp{n-t----.nh-www}", kZero, {kOpensAt, Account::kHandle, 9, 2}},
    {"CreateProcessAsUserA wttppnnpp{n-t----.nh-www}; "
     "CreateProcessWithLogonW tttnttnpp{n-t----.nh-www}",
     kZero,
     {kOpensAt, Account::kHandle, 10, 2}},
    {"CloseHandle w", kCannotFail, {kCloses, Account::kHandle}},
    {"FindFirstFile* t", kMinusOne, {kOpensResult, "search"}},
    {"FindClose w", kCannotFail, {kCloses, "search"}},
    {"MapViewOfFile -nnnw", kZero, {kOpensResult, "view"}},
    {"UnmapViewOfFile", kCannotFail, {kCloses, "view"}},
    {"OpenDesktopA tnnn; OpenWindowStationA tnn", kZero, {kOpensResult, kDesktop}},
    {"CloseDesktop w; CloseWindowStation w", kCannotFail, {kCloses, kDesktop}},

    // Services.
    {"CreateServiceW -ttnnnnttpttt; OpenSCManagerW ppn; OpenServiceW -tn",
     kZero,
     {kOpensResult, kService}},
    {"CloseServiceHandle w", kCannotFail, {kCloses, kService}},
    {"LockServiceDatabase w", kZero, {kOpensResult, "database lock"}},
    {"UnlockServiceDatabase w", kCannotFail, {kCloses, "database lock"}},

    // The security authority and network management.
    {"LsaOpenPolicy {hhu}{nwwnww}n", kNtStatus, {kOpensAt, Account::kHandle, 3}},
    {"LsaClose w", kNtStatus, {kCloses, Account::kHandle}},
    {"LsaEnumerateAccountRights ws", kNtStatus, {kOpensAt, Account::kLsaMemory, 2}},
    {"LsaFreeMemory w", kCannotFail, {kCloses, Account::kLsaMemory}},
    {"NetGetDCName uu", kStatus, {kOpensAt, "network buffer", 2}},
    {"NetApiBufferFree w", kCannotFail, {kCloses, "network buffer"}},

    // The shell and its objects. The allocator that owns the item lists is always there.
    {"SHGetMalloc", kCannotFail, {kOpensAt, "interface", 0, 1, "IMalloc::"}},
    {"CoCreateInstance -pn", kComStatus, {kOpensAt, "interface", 4, 1, "IShellLinkA::"}},
    {"IShellLinkA::QueryInterface@0", kComStatus, {kOpensAt, "interface", 2, 1, "IPersistFile::"}},
    {"IMalloc::Release@2; IPersistFile::Release@2; IShellLinkA::Release@2",
     kCannotFail,
     {kCloses, "interface"}},
    {"SHGetSpecialFolderLocation wn", kComStatus, {kOpensAt, "item list", 2}},
    {"IMalloc::Free@5", kCannotFail, {kCloses, "item list", 1}},
    {"CoInitialize; IPersistFile::Save@6 -un; IShellLinkA::SetArguments@11 -t; "
     "IShellLinkA::SetIconLocation@17 -tn; IShellLinkA::SetPath@20 -t; "
     "IShellLinkA::SetWorkingDirectory@9 -t",
     kComStatus},

    // The C runtime's heap. realloc closes and opens; the heap guard books it.
    {"calloc; malloc; realloc", kZero, {kOpensResult, Account::kHeapBlock}},
    {"free", kCannotFail, {kCloses, Account::kHeapBlock}},

    // JNI. In C++ the variadic calls go through the entries that end in V. Characters are released
    // once for each time that they were asked for, also when the JVM gave none.
    {"CallObjectMethodV@35; FindClass@6 -t; GetObjectArrayElement@173; GetObjectClass@31; "
     "NewByteArray@176; NewObjectArray@172 -n-p; NewObjectV@29; NewString@163 --n",
     kThrows,
     {kOpensResult, Account::kLocalReference}},
    {"ExceptionOccurred@15", kCleansUp, {kOpensResult, Account::kLocalReference}},
    {"DeleteLocalRef@23", kCleansUp, {kCloses, Account::kLocalReference, 1}},
    {"NewGlobalRef@21", kThrows, {kOpensResult, "global reference"}},
    {"DeleteGlobalRef@22", kCleansUp, {kCloses, "global reference", 1}},
    {"GetStringChars@165", kThrows, {kAsksFor, "pinned string", 1}},
    {"ReleaseStringChars@166", kCleansUp, {kCloses, "pinned string", 1}},
    {"CallBooleanMethodV@38; CallIntMethodV@50; CallVoidMethodV@62; GetByteArrayRegion@200; "
     "GetMethodID@33 --t; GetStaticFieldID@144 --t; GetStringRegion@220; SetByteArrayRegion@208; "
     "SetObjectArrayElement@174",
     kThrows},
    {"GetArrayLength@171; GetStaticIntField@150; GetStringLength@164; IsInstanceOf@32; Throw@13",
     kNeverThrows},
    {"ExceptionCheck@228; ExceptionClear@17", kCleansUp},

    // All others.
    {"CoUninitialize; GetACP; GetCurrentProcess; GetCurrentProcessId; GetCurrentThread; "
     "GetDesktopWindow; GetLastError; GetLengthSid; GetSystemInfo; GetWindow wn; "
     "GetWindowThreadProcessId wp; ImmGetDefaultIMEWnd w; IsWindowVisible w; "
     "LsaNtStatusToWinError n; RevertToSelf; RtlNtStatusToDosError n; SendMessageA wnw{wnt}; "
     "SetErrorMode n; SetLastError; SHChangeNotify nntw; ShowWindow wn; Sleep n; fputc nf; "
     "fputwc nf; fwprintf fu; fwrite tnnf; vfprintf ft",
     kCannotFail},
    {"LsaAddAccountRights ws[hhu]n; LsaRemoveAccountRights wsy[hhu]n; NtDeleteKey; "
     "NtQueryValueKey --n",
     kNtStatus},
    {"NetGroupAdd un{uu}p; NetGroupAddUser uuu; NetGroupDel uu; NetLocalGroupAdd un{uu}p; "
     "NetLocalGroupAddMembers uun[u]n; NetLocalGroupDel uu; "
     "NetUserAdd un{uunnuununuuuunnnnnwnnunn}p; NetUserDel uu; RegDeleteKey* -t; "
     "RegDeleteValue* -t; RegEnumKey* -n-n; RegEnumKeyExW -n-i; RegEnumValue* -n-i-ppp; "
     "RegQueryInfoKey* -ppppppppppp; RegQueryValueEx* -t--pi; RegSetValueEx* -tnndn; "
     "SetNamedSecurityInfoW tnnpppp",
     kStatus},
    {"AddAccessAllowedAce -nn9; AddAce -nndn; AdjustTokenPrivileges wndnpp; "
     "ChangeServiceConfig2W -nc; ChangeServiceConfigW -nnnttptttt; ControlService -n; "
     "CopyFile* ttn; CopySid n-w; CreateDirectory* tp; DeleteFile* t; DeleteService; "
     "EnumServicesStatusW -nnpn--i; ExpandEnvironmentStrings* t-n; FindNextFile*; GetAce -n; "
     "GetAclInformation --nn; GetComputerNameA -i; GetDiskFreeSpace* t; GetDiskFreeSpaceEx* t; "
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
     "SetSecurityDescriptorOwner -wn; SetUserObjectSecurity wi{yyh}; StartServiceW -nq; "
     "VerQueryValue* -t; WideCharToMultiByte nn-n-npp; WriteFile w-n-p",
     kZero},
    {"EqualSid ww; GetDriveType* t; SHGetPathFromIDListA; SHGetSpecialFolderPathA --nn", kBareZero},
    {"GetFileAttributes* t; GetFileSize; SetFilePointer -npn; WaitForInputIdle wn; "
     "WaitForSingleObject wn",
     kMinusOne},
    // What the C++ runtime that is linked into the library calls for itself: locks, unwinding, the
    // C library.
    {"CreateSemaphoreW; DeleteCriticalSection; EnterCriticalSection; GetCurrentThreadId; "
     "GetThreadId; InitializeCriticalSection; IsDBCSLeadByteEx; LeaveCriticalSection; "
     "RaiseException; ReleaseSemaphore; RtlCaptureContext; RtlLookupFunctionEntry; RtlUnwindEx; "
     "RtlVirtualUnwind; TlsAlloc; TlsFree; TlsGetValue; TlsSetValue; TryEnterCriticalSection; "
     "VirtualProtect; VirtualQuery; ___lc_codepage_func; ___mb_cur_max_func; __iob_func; "
     "_amsg_exit; _close; _errno; _initterm; _lock; _mbsicmp; _read; _unlock; _vsnwprintf; "
     "_wcsicmp; _wcsnicmp; abort; getenv; localeconv; memchr; memcmp; memcpy; memmove; memset; "
     "strchr; strcmp; strerror; strlen; strncmp; strtoul; wcschr; wcslen; wcsncpy; wcsspn; "
     "wcstol",
     kUntouched},
};

/// One function of a row.
Function functionOf(Function row, std::string_view text) {
  const size_t blank = std::min(text.find(' '), text.size());
  const size_t sign = std::min(text.find('@'), blank);
  row.name = text.substr(0, sign);
  row.signature = text.substr(std::min(blank + 1, text.size()));
  std::from_chars(text.data() + std::min(sign + 1, blank), text.data() + blank, row.slot);
  return row;
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

}  // namespace

const std::vector<Function>& allFunctions() {
  static const std::vector<Function> all = [] {
    constexpr std::string_view kSeparator = "; ";
    std::vector<Function> found;
    for (const Function& row : kRows) {
      for (std::string_view rest = row.name; !rest.empty();) {
        const size_t end = std::min(rest.find(kSeparator), rest.size());
        found.push_back(functionOf(row, rest.substr(0, end)));
        rest.remove_prefix(std::min(end + kSeparator.size(), rest.size()));
      }
    }
    return found;
  }();
  return all;
}

bool Function::canFail() const {
  return failure > kCannotFail && failure <= kThrows;
}

bool Function::returnsError() const {
  return failure == kStatus || failure == kComStatus || failure == kNtStatus;
}

uint32_t Function::error() const {
  return failure == kComStatus  ? 0x80070000U | ERROR_NO_SYSTEM_RESOURCES
         : failure == kNtStatus ? 0xC000009AU
         : failure == kBareZero ? 0
                                : ERROR_NO_SYSTEM_RESOURCES;
}

uint64_t Function::failureResult(uint32_t named) const {
  return returnsError() ? named : failure == kMinusOne ? ~uint64_t{0} : 0;
}

bool Function::succeeded(uint64_t result) const {
  return failure == kCannotFail ? true
         : returnsError()       ? static_cast<int32_t>(result) == 0
         : failure == kMinusOne ? static_cast<uint32_t>(result) != ~uint32_t{0}
                                : result != 0;
}

const Function* findFunction(std::string_view name) {
  const auto isMeant = [&](const Function& function) { return names(function, name); };
  const auto found = std::find_if(allFunctions().begin(), allFunctions().end(), isMeant);
  return found == allFunctions().end() ? nullptr : &*found;
}

}  // namespace bed
