#include <jni.h>
#include <windows.h>

#include <string>
#include <vector>

#include "com_corvane_bench_BareServices.h"
#include "java_text.h"
#include "service_calls.h"
#include "timed_calls.h"

extern "C" {

JNIEXPORT jlong JNICALL Java_com_corvane_bench_BareServices_queryService(JNIEnv* env,
                                                                         jclass,
                                                                         jstring name,
                                                                         jint calls) {
  const std::wstring service = textOf(env, name);
  SERVICE_STATUS status = {};
  return timed(calls, [&] { return queryService(service, status); });
}

JNIEXPORT jlong JNICALL Java_com_corvane_bench_BareServices_listServices(JNIEnv*,
                                                                         jclass,
                                                                         jint calls) {
  return timed(calls, [] {
    std::vector<std::wstring> names;
    return listServices(names);
  });
}

JNIEXPORT jlong JNICALL Java_com_corvane_bench_BareServices_readVersion(JNIEnv* env,
                                                                        jclass,
                                                                        jstring file,
                                                                        jint calls) {
  const std::wstring path = textOf(env, file);
  VS_FIXEDFILEINFO info = {};
  return timed(calls, [&] { return readVersion(path, info); });
}

JNIEXPORT jlong JNICALL Java_com_corvane_bench_BareServices_listRights(JNIEnv* env,
                                                                       jclass,
                                                                       jstring account,
                                                                       jint calls) {
  const std::string name = ansiOf(textOf(env, account));
  return timed(calls, [&] {
    std::vector<std::wstring> rights;
    return listRights(name, rights);
  });
}

}  // extern "C"
