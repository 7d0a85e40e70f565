#include <jni.h>
#include <windows.h>

#include <objbase.h>
#include <shlobj.h>

#include <string>

#include "com_corvane_bench_BareInstallation.h"
#include "installation_calls.h"
#include "java_text.h"
#include "timed_calls.h"

namespace {

/// Without the system's box for an empty drive.
DWORD freeSpace(const std::wstring& root) {
  const UINT mode = SetErrorMode(SEM_FAILCRITICALERRORS);
  ULARGE_INTEGER available = {};
  const DWORD error = errorUnless(GetDiskFreeSpaceExW(root.c_str(), &available, nullptr, nullptr));
  SetErrorMode(mode);
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
  std::wstring path;
  return timed(calls, [&] { return temporaryDirectory(path); });
}

JNIEXPORT jlong JNICALL Java_com_corvane_bench_BareInstallation_programsDirectory(JNIEnv*,
                                                                                  jclass,
                                                                                  jint calls) {
  std::wstring path;
  return timed(calls, [&] { return programsDirectory(path); });
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
  std::wstring name;
  return timed(calls, [&] { return readOwner(path, name); });
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
