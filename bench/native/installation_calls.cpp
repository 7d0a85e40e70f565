#include "installation_calls.h"

#include <windows.h>

#include <aclapi.h>

#include <cwchar>
#include <vector>

#include "timed_calls.h"

namespace {

constexpr wchar_t kCurrentVersion[] = L"SOFTWARE\\Microsoft\\Windows\\CurrentVersion";
constexpr DWORD kTextUnits = 256;

DWORD openToken(HANDLE& token) {
  if (OpenThreadToken(GetCurrentThread(), TOKEN_QUERY, FALSE, &token) != FALSE) {
    return ERROR_SUCCESS;
  }
  const DWORD error = GetLastError();
  return error != ERROR_NO_TOKEN
             ? error
             : errorUnless(OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token));
}

bool contains(const TOKEN_GROUPS& groups, PSID wanted) {
  for (DWORD i = 0; i < groups.GroupCount; ++i) {
    if (EqualSid(groups.Groups[i].Sid, wanted) != FALSE) {
      return true;
    }
  }
  return false;
}

DWORD findAdministrators(const TOKEN_GROUPS& groups) {
  SID_IDENTIFIER_AUTHORITY authority = SECURITY_NT_AUTHORITY;
  PSID administrators = nullptr;
  if (AllocateAndInitializeSid(&authority,
                               2,
                               SECURITY_BUILTIN_DOMAIN_RID,
                               DOMAIN_ALIAS_RID_ADMINS,
                               0,
                               0,
                               0,
                               0,
                               0,
                               0,
                               &administrators) == FALSE) {
    return GetLastError();
  }
  const bool found = contains(groups, administrators);
  FreeSid(administrators);
  return found ? ERROR_SUCCESS : ERROR_NOT_FOUND;
}

DWORD lookUpName(PSID sid, std::wstring& name) {
  DWORD nameLength = 0;
  DWORD domainLength = 0;
  SID_NAME_USE use = SidTypeUnknown;
  LookupAccountSidW(nullptr, sid, nullptr, &nameLength, nullptr, &domainLength, &use);
  name.assign(nameLength, L'\0');
  std::wstring domain(domainLength, L'\0');
  const DWORD error = errorUnless(LookupAccountSidW(nullptr,
                                                    sid,
                                                    name.data(),
                                                    &nameLength,
                                                    domain.data(),
                                                    &domainLength,
                                                    &use));
  name.resize(nameLength);  // without its terminator now
  return error;
}

}  // namespace

DWORD temporaryDirectory(std::wstring& path) {
  path.assign(GetTempPathW(0, nullptr), L'\0');
  path.resize(GetTempPathW(static_cast<DWORD>(path.size()), path.data()));
  return errorUnless(GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES);
}

DWORD programsDirectory(std::wstring& path) {
  HKEY key = nullptr;
  LSTATUS result = RegOpenKeyExW(HKEY_LOCAL_MACHINE, kCurrentVersion, 0, KEY_QUERY_VALUE, &key);
  if (result == ERROR_SUCCESS) {
    wchar_t text[kTextUnits];
    DWORD size = sizeof(text);
    DWORD type = REG_NONE;
    result = RegQueryValueExW(key,
                              L"ProgramFilesDir",
                              nullptr,
                              &type,
                              reinterpret_cast<BYTE*>(text),
                              &size);
    RegCloseKey(key);
    path.assign(text, result == ERROR_SUCCESS ? wcsnlen(text, size / sizeof(wchar_t)) : 0);
  }
  return static_cast<DWORD>(result);
}

DWORD checkAdministrator() {
  HANDLE token = nullptr;
  DWORD size = 0;
  DWORD error = openToken(token);
  if (error != ERROR_SUCCESS) {
    return error;
  }
  GetTokenInformation(token, TokenGroups, nullptr, 0, &size);
  std::vector<BYTE> groups(size);
  error = errorUnless(GetTokenInformation(token, TokenGroups, groups.data(), size, &size));
  return error != ERROR_SUCCESS
             ? error
             : findAdministrators(*reinterpret_cast<const TOKEN_GROUPS*>(groups.data()));
}

DWORD readOwner(std::wstring& file, std::wstring& name) {
  PSID owner = nullptr;
  PSECURITY_DESCRIPTOR descriptor = nullptr;
  DWORD error = GetNamedSecurityInfoW(file.data(),
                                      SE_FILE_OBJECT,
                                      OWNER_SECURITY_INFORMATION,
                                      &owner,
                                      nullptr,
                                      nullptr,
                                      nullptr,
                                      &descriptor);
  if (error == ERROR_SUCCESS) {
    error = lookUpName(owner, name);
    LocalFree(descriptor);
  }
  return error;
}
