#include <com_corvane_testing_Reboot.h>
#include <windows.h>

#include <string>
#include <vector>

#include "java_text.h"

// The natives of com.corvane.testing.Reboot; what each does is said there.

namespace {

constexpr const wchar_t* kSessionManager = L"SYSTEM\\CurrentControlSet\\Control\\Session Manager";
constexpr const wchar_t* kPending = L"PendingFileRenameOperations";

}  // namespace

JNIEXPORT jstring JNICALL Java_com_corvane_testing_Reboot_pendingData(JNIEnv* env, jclass) {
  DWORD size = 0;
  RegGetValueW(HKEY_LOCAL_MACHINE,
               kSessionManager,
               kPending,
               RRF_RT_REG_MULTI_SZ,
               nullptr,
               nullptr,
               &size);
  std::wstring data(size / sizeof(wchar_t), L'\0');
  const LSTATUS result = RegGetValueW(HKEY_LOCAL_MACHINE,
                                      kSessionManager,
                                      kPending,
                                      RRF_RT_REG_MULTI_SZ,
                                      nullptr,
                                      data.data(),
                                      &size);
  data.resize(result == ERROR_SUCCESS ? size / sizeof(wchar_t) : 0);
  return bed::javaText(env, data);
}

JNIEXPORT void JNICALL Java_com_corvane_testing_Reboot_dropPending(JNIEnv*, jclass) {
  RegDeleteKeyValueW(HKEY_LOCAL_MACHINE, kSessionManager, kPending);
}
