#include <jni.h>
#include <windows.h>

#include <span>
#include <string>
#include <vector>

#include "com_corvane_bench_RequiredServices.h"
#include "java_text.h"
#include "required_calls.h"
#include "service_calls.h"
#include "timed_calls.h"

namespace {

constexpr const char* kStatusFunctions[] = {"QueryServiceStatus", "OpenSCManagerW", "OpenServiceW"};
constexpr const char* kListFunctions[] = {"EnumServicesStatusW", "OpenSCManagerW"};
constexpr const char* kRightsFunctions[] = {"LsaNtStatusToWinError",
                                            "LsaOpenPolicy",
                                            "LsaEnumerateAccountRights"};
/// Of a list that was given; an account without rights has none.
constexpr const char* kRightsEndFunctions[] = {"LsaFreeMemory", "LsaClose"};

/// In the order of the record's fields.
constexpr const char* kStatusSetters[] = {
    "setServiceType",
    "setCurrentState",
    "setControlsAccepted",
    "setWin32ExitCode",
    "setServiceSpecificExitCode",
    "setCheckPoint",
    "setWaitHint",
};
constexpr const char* kVersionSetters[] = {
    "setSignature",
    "setStrucVersion",
    "setFileVersionMS",
    "setFileVersionLS",
    "setProductVersionMS",
    "setProductVersionLS",
    "setFileFlagsMask",
    "setFileFlags",
    "setFileOS",
    "setFileType",
    "setFileSubtype",
    "setFileDateMS",
    "setFileDateLS",
};

void lookUpAll(std::span<const char* const> names) {
  for (const char* name : names) {
    lookUp(GetModuleHandleA("advapi32.dll"), name);
  }
}

/// A new object with a number for each setter, all of which a record has, one after the other.
template <class Record, size_t count>
jobject newObject(JNIEnv* env,
                  const char* className,
                  const char* const (&setters)[count],
                  const Record& record) {
  static_assert(sizeof(Record) == count * sizeof(DWORD));
  const auto* numbers = reinterpret_cast<const DWORD*>(&record);
  jclass type = env->FindClass(className);
  jobject object = env->NewObject(type, env->GetMethodID(type, "<init>", "()V"));
  env->ExceptionCheck();
  for (size_t i = 0; i < count; ++i) {
    jmethodID setter = env->GetMethodID(type, setters[i], "(I)V");
    env->CallVoidMethod(object, setter, static_cast<jint>(numbers[i]));
    env->ExceptionCheck();
  }
  return object;
}

/// An account that has the computer's name is looked up by another one.
void askComputerName() {
  char name[256];
  DWORD size = sizeof(name);
  GetComputerNameA(name, &size);
}

}  // namespace

extern "C" {

JNIEXPORT jobject JNICALL Java_com_corvane_bench_RequiredServices_queryService(JNIEnv* env,
                                                                               jclass,
                                                                               jstring name) {
  SERVICE_STATUS status = {};
  lookUpAll(kStatusFunctions);
  raiseUnlessZero(env, queryService(textOf(env, name), status));
  return newObject(env,
                   "com/corvane/wizard/platform/win32/win32service/NTServiceStatus",
                   kStatusSetters,
                   status);
}

JNIEXPORT jobjectArray JNICALL Java_com_corvane_bench_RequiredServices_listServices(JNIEnv* env,
                                                                                    jclass) {
  std::vector<std::wstring> names;
  lookUpAll(kListFunctions);
  raiseUnlessZero(env, listServices(names));
  return toJava(env, names);
}

JNIEXPORT jobject JNICALL Java_com_corvane_bench_RequiredServices_readVersion(JNIEnv* env,
                                                                              jclass,
                                                                              jstring file) {
  VS_FIXEDFILEINFO info = {};
  askVersion();
  raiseUnlessZero(env, readVersion(textOf(env, file), info));
  return newObject(env,
                   "com/corvane/wizard/platform/win32/WindowsFixedFileInfo",
                   kVersionSetters,
                   info);
}

JNIEXPORT jobjectArray JNICALL Java_com_corvane_bench_RequiredServices_listRights(JNIEnv* env,
                                                                                  jclass,
                                                                                  jstring account,
                                                                                  jstring system) {
  std::vector<std::wstring> rights;
  askVersion();
  const std::wstring name = textOf(env, account);
  textOf(env, system);  // empty: this computer
  lookUpAll(kRightsFunctions);
  askComputerName();
  raiseUnlessZero(env, listRights(ansiOf(name), rights));
  if (!rights.empty()) {
    lookUpAll(kRightsEndFunctions);
  }
  return toJava(env, rights);
}

}  // extern "C"
