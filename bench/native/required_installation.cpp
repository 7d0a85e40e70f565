#include <jni.h>
#include <windows.h>

#include <objbase.h>
#include <shlobj.h>

#include <string>

#include "com_corvane_bench_RequiredInstallation.h"
#include "installation_calls.h"
#include "java_text.h"
#include "required_calls.h"
#include "timed_calls.h"

namespace {

constexpr const char* kTokenFunctions[] = {
    "OpenProcessToken",
    "OpenThreadToken",
    "GetTokenInformation",
    "AllocateAndInitializeSid",
    "EqualSid",
    "FreeSid",
};

/// The system's box for an empty drive is kept away by the error mode plus 1, which has to be asked
/// for first.
DWORD freeSpace(const std::wstring& root, ULARGE_INTEGER& available) {
  const UINT mode = SetErrorMode(0);
  SetErrorMode(mode + 1);
  askVersion();
  lookUp(GetModuleHandleA("kernel32.dll"), "GetDiskFreeSpaceExW");
  ULARGE_INTEGER total = {};
  ULARGE_INTEGER free = {};
  const DWORD error = errorUnless(GetDiskFreeSpaceExW(root.c_str(), &available, &total, &free));
  SetErrorMode(mode);
  return error;
}

struct Shortcut {
  std::wstring file;
  std::wstring target;
  std::wstring directory;
};

HRESULT saveShortcut(IShellLinkA* link, IPersistFile* persistFile, const Shortcut& shortcut) {
  link->SetPath(ansiOf(shortcut.target).c_str());
  link->SetWorkingDirectory(ansiOf(shortcut.directory).c_str());
  return persistFile->Save(shortcut.file.c_str(), TRUE);
}

HRESULT makeShortcut(const Shortcut& shortcut) {
  void* made = nullptr;
  HRESULT result =
      CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkA, &made);
  if (FAILED(result)) {
    return result;
  }
  auto* link = static_cast<IShellLinkA*>(made);
  result = link->QueryInterface(IID_IPersistFile, &made);
  if (SUCCEEDED(result)) {
    auto* persistFile = static_cast<IPersistFile*>(made);
    result = saveShortcut(link, persistFile, shortcut);
    persistFile->Release();
  }
  link->Release();
  return result;
}

/// Whether the folder is there, and the word to the shell that it is.
DWORD announceFolder(const std::wstring& folder) {
  askVersion();
  if (GetFileAttributesW(folder.c_str()) == INVALID_FILE_ATTRIBUTES) {
    return GetLastError();
  }
  SHChangeNotify(SHCNE_MKDIR, SHCNF_PATHA, ansiOf(folder + L"\\").c_str(), nullptr);
  return ERROR_SUCCESS;
}

}  // namespace

extern "C" {

JNIEXPORT jstring JNICALL
Java_com_corvane_bench_RequiredInstallation_temporaryDirectory(JNIEnv* env, jclass) {
  std::wstring path;
  askVersion();
  askVersion();
  raiseUnlessZero(env, temporaryDirectory(path));
  return toJava(env, path);
}

JNIEXPORT jstring JNICALL Java_com_corvane_bench_RequiredInstallation_programsDirectory(JNIEnv* env,
                                                                                        jclass) {
  std::wstring path;
  askVersion();
  raiseUnlessZero(env, programsDirectory(path));
  return toJava(env, path);
}

JNIEXPORT jlong JNICALL Java_com_corvane_bench_RequiredInstallation_freeSpace(JNIEnv* env,
                                                                              jclass,
                                                                              jstring root) {
  ULARGE_INTEGER available = {};
  raiseUnlessZero(env, freeSpace(textOf(env, root), available));
  return static_cast<jlong>(available.QuadPart);
}

JNIEXPORT void JNICALL Java_com_corvane_bench_RequiredInstallation_checkAdministrator(JNIEnv* env,
                                                                                      jclass) {
  askVersion();
  HMODULE module = GetModuleHandleW(L"advapi32.dll");
  for (const char* name : kTokenFunctions) {
    lookUp(module, name);
  }
  raiseUnlessZero(env, checkAdministrator());
}

JNIEXPORT jstring JNICALL Java_com_corvane_bench_RequiredInstallation_readOwner(JNIEnv* env,
                                                                                jclass,
                                                                                jstring file) {
  askVersion();
  std::wstring path = textOf(env, file);
  std::wstring name;
  lookUp(GetModuleHandleA("advapi32.dll"), "GetNamedSecurityInfoW");
  lookUp(GetModuleHandleA("advapi32.dll"), "LookupAccountSidW");
  raiseUnlessZero(env, readOwner(path, name));
  return toJava(env, name);
}

JNIEXPORT void JNICALL Java_com_corvane_bench_RequiredInstallation_makeShortcut(JNIEnv* env,
                                                                                jclass,
                                                                                jstring folder,
                                                                                jstring subfolder,
                                                                                jstring name,
                                                                                jstring target,
                                                                                jstring arguments,
                                                                                jstring icon,
                                                                                jstring directory) {
  const std::wstring place = textOf(env, folder);
  const std::wstring below = textOf(env, subfolder);
  const std::wstring file = place + L"\\" + below + textOf(env, name) + L".lnk";
  const Shortcut shortcut = {file, textOf(env, target), textOf(env, directory)};
  textOf(env, arguments);  // both are empty, and nothing is done with them
  textOf(env, icon);
  raiseUnlessZero(env, announceFolder(place));
  raiseUnlessZero(env, makeShortcut(shortcut));
}

}  // extern "C"
