#include <jni.h>
#include <windows.h>

#include <aclapi.h>
#include <objbase.h>
#include <shlobj.h>

#include <string>
#include <vector>

#include "com_corvane_bench_BareInstallation.h"
#include "java_text.h"
#include "timed_calls.h"

namespace {

constexpr wchar_t kCurrentVersion[] = L"SOFTWARE\\Microsoft\\Windows\\CurrentVersion";
constexpr DWORD kTextUnits = 256;

DWORD errorUnless(BOOL done) {
  return done != FALSE ? ERROR_SUCCESS : GetLastError();
}

/// The system is asked for the size first, as the library does.
DWORD temporaryDirectory() {
  std::wstring path(GetTempPathW(0, nullptr), L'\0');
  GetTempPathW(static_cast<DWORD>(path.size()), path.data());
  return errorUnless(GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES);
}

DWORD programsDirectory() {
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
  }
  return static_cast<DWORD>(result);
}

/// Without the system's box for an empty drive.
DWORD freeSpace(const std::wstring& root) {
  const UINT mode = SetErrorMode(SEM_FAILCRITICALERRORS);
  ULARGE_INTEGER available = {};
  const DWORD error = errorUnless(GetDiskFreeSpaceExW(root.c_str(), &available, nullptr, nullptr));
  SetErrorMode(mode);
  return error;
}

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

/// The token stays open, as the library leaves it. The benchmark's user is an administrator.
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

DWORD lookUpName(PSID sid) {
  DWORD nameLength = 0;
  DWORD domainLength = 0;
  SID_NAME_USE use = SidTypeUnknown;
  LookupAccountSidW(nullptr, sid, nullptr, &nameLength, nullptr, &domainLength, &use);
  std::wstring name(nameLength, L'\0');
  std::wstring domain(domainLength, L'\0');
  return errorUnless(LookupAccountSidW(nullptr,
                                       sid,
                                       name.data(),
                                       &nameLength,
                                       domain.data(),
                                       &domainLength,
                                       &use));
}

DWORD readOwner(std::wstring& file) {
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
    error = lookUpName(owner);
    LocalFree(descriptor);
  }
  return error;
}

HRESULT save(IShellLinkW* link, const std::wstring& file) {
  void* made = nullptr;
  HRESULT result = link->QueryInterface(IID_IPersistFile, &made);
  if (SUCCEEDED(result)) {
    auto* persistFile = static_cast<IPersistFile*>(made);
    result = persistFile->Save(file.c_str(), TRUE);
    persistFile->Release();
  }
  return result;
}

HRESULT makeShortcut(const std::wstring& file,
                     const std::wstring& target,
                     const std::wstring& directory) {
  void* made = nullptr;
  HRESULT result =
      CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkW, &made);
  if (FAILED(result)) {
    return result;
  }
  auto* link = static_cast<IShellLinkW*>(made);
  link->SetPath(target.c_str());
  link->SetWorkingDirectory(directory.c_str());
  result = save(link, file);
  link->Release();
  return result;
}

}  // namespace

extern "C" {

JNIEXPORT jlong JNICALL Java_com_corvane_bench_BareInstallation_temporaryDirectory(JNIEnv*,
                                                                                   jclass,
                                                                                   jint calls) {
  return timed(calls, temporaryDirectory);
}

JNIEXPORT jlong JNICALL Java_com_corvane_bench_BareInstallation_programsDirectory(JNIEnv*,
                                                                                  jclass,
                                                                                  jint calls) {
  return timed(calls, programsDirectory);
}

JNIEXPORT jlong JNICALL Java_com_corvane_bench_BareInstallation_freeSpace(JNIEnv* env,
                                                                          jclass,
                                                                          jstring root,
                                                                          jint calls) {
  const std::wstring path = textOf(env, root);
  return timed(calls, [&] { return freeSpace(path); });
}

JNIEXPORT jlong JNICALL Java_com_corvane_bench_BareInstallation_checkAdministrator(JNIEnv*,
                                                                                   jclass,
                                                                                   jint calls) {
  return timed(calls, checkAdministrator);
}

JNIEXPORT jlong JNICALL Java_com_corvane_bench_BareInstallation_readOwner(JNIEnv* env,
                                                                          jclass,
                                                                          jstring file,
                                                                          jint calls) {
  std::wstring path = textOf(env, file);
  return timed(calls, [&] { return readOwner(path); });
}

JNIEXPORT jlong JNICALL Java_com_corvane_bench_BareInstallation_makeShortcut(JNIEnv* env,
                                                                             jclass,
                                                                             jstring file,
                                                                             jstring target,
                                                                             jstring directory,
                                                                             jint calls) {
  const std::wstring path = textOf(env, file);
  const std::wstring program = textOf(env, target);
  const std::wstring start = textOf(env, directory);
  return timed(calls, [&] { return makeShortcut(path, program, start); });
}

}  // extern "C"
