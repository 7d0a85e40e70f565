#include "service_calls.h"

#include <ntsecapi.h>

#include "timed_calls.h"

namespace {

constexpr DWORD kSidSize = 1024;
constexpr DWORD kDomainSize = 80;
constexpr DWORD kEverything = SERVICE_DRIVER | SERVICE_WIN32;

/// Hands the opened service manager to `work`, or a handle that comes from it.
template <class Work>
DWORD with(SC_HANDLE handle, const Work& work) {
  if (handle == nullptr) {
    return GetLastError();
  }
  const DWORD error = work(handle);
  CloseServiceHandle(handle);
  return error;
}

SC_HANDLE openManager() {
  return OpenSCManagerW(nullptr, nullptr, SC_MANAGER_ALL_ACCESS);
}

/// `services`: null for the size.
BOOL enumerate(SC_HANDLE manager, ENUM_SERVICE_STATUSW* services, DWORD& size, DWORD& count) {
  DWORD resume = 0;
  return EnumServicesStatusW(manager,
                             kEverything,
                             SERVICE_STATE_ALL,
                             services,
                             size,
                             &size,
                             &count,
                             &resume);
}

DWORD findAccount(const std::string& account, BYTE (&sid)[kSidSize]) {
  DWORD sidSize = kSidSize;
  char domain[kDomainSize];
  DWORD domainSize = kDomainSize;
  SID_NAME_USE use = SidTypeUnknown;
  return errorUnless(
      LookupAccountNameA(nullptr, account.c_str(), sid, &sidSize, domain, &domainSize, &use));
}

void take(const LSA_UNICODE_STRING* found, ULONG count, std::vector<std::wstring>& rights) {
  for (ULONG i = 0; i < count; ++i) {
    rights.emplace_back(found[i].Buffer, found[i].Length / sizeof(wchar_t));
  }
}

}  // namespace

DWORD queryService(const std::wstring& name, SERVICE_STATUS& status) {
  return with(openManager(), [&](SC_HANDLE manager) {
    return with(
        OpenServiceW(manager, name.c_str(), READ_CONTROL | SERVICE_QUERY_STATUS),
        [&](SC_HANDLE service) { return errorUnless(QueryServiceStatus(service, &status)); });
  });
}

DWORD listServices(std::vector<std::wstring>& names) {
  return with(openManager(), [&](SC_HANDLE manager) -> DWORD {
    DWORD size = 0;
    DWORD count = 0;
    if (enumerate(manager, nullptr, size, count) != FALSE || GetLastError() != ERROR_MORE_DATA) {
      return ERROR_INVALID_FUNCTION;
    }
    std::vector<BYTE> bytes(size);
    const auto* services = reinterpret_cast<ENUM_SERVICE_STATUSW*>(bytes.data());
    if (enumerate(manager, reinterpret_cast<ENUM_SERVICE_STATUSW*>(bytes.data()), size, count) ==
        FALSE) {
      return GetLastError();
    }
    for (DWORD i = 0; i < count; ++i) {
      names.emplace_back(services[i].lpServiceName);
    }
    return ERROR_SUCCESS;
  });
}

DWORD readVersion(const std::wstring& file, VS_FIXEDFILEINFO& info) {
  DWORD handle = 0;
  std::vector<BYTE> bytes(GetFileVersionInfoSizeW(file.c_str(), &handle));
  const auto size = static_cast<DWORD>(bytes.size());
  void* found = nullptr;
  UINT length = 0;
  if (size == 0 || GetFileVersionInfoW(file.c_str(), handle, size, bytes.data()) == FALSE ||
      VerQueryValueW(bytes.data(), L"\\", &found, &length) == FALSE) {
    return GetLastError();
  }
  info = *static_cast<VS_FIXEDFILEINFO*>(found);
  return ERROR_SUCCESS;
}

DWORD listRights(const std::string& account, std::vector<std::wstring>& rights) {
  LSA_OBJECT_ATTRIBUTES attributes = {};
  LSA_HANDLE policy = nullptr;
  if (const NTSTATUS status = LsaOpenPolicy(nullptr, &attributes, POLICY_LOOKUP_NAMES, &policy);
      status != 0) {
    return LsaNtStatusToWinError(status);
  }
  BYTE sid[kSidSize];
  if (const DWORD error = findAccount(account, sid); error != ERROR_SUCCESS) {
    return error;
  }
  LSA_UNICODE_STRING* found = nullptr;
  ULONG count = 0;
  if (const NTSTATUS status = LsaEnumerateAccountRights(policy, sid, &found, &count); status != 0) {
    const DWORD error = LsaNtStatusToWinError(status);
    return error == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : error;
  }
  take(found, count, rights);
  LsaFreeMemory(found);
  LsaClose(policy);
  return ERROR_SUCCESS;
}
