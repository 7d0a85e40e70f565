#include <jni.h>
#include <windows.h>

#include <iterator>

#include "bench_key.h"
#include "com_corvane_bench_BareRegistry.h"
#include "registry_calls.h"
#include "timed_calls.h"

namespace {

LSTATUS listNames() {
  unsigned count = 0;
  const LSTATUS result = eachName(kBenchList, [&](const wchar_t*, DWORD) { ++count; });
  return result == ERROR_SUCCESS && count != kBenchListLength ? ERROR_INVALID_DATA : result;
}

}  // namespace

extern "C" {

JNIEXPORT jlong JNICALL Java_com_corvane_bench_BareRegistry_readString(JNIEnv*,
                                                                       jclass,
                                                                       jint calls) {
  return timed(calls, [] {
    return withKey(kBenchKey, KEY_QUERY_VALUE, [](HKEY key) {
      wchar_t text[kStringUnits];
      DWORD size = sizeof(text);
      return query(key, L"String", text, size);
    });
  });
}

JNIEXPORT jlong JNICALL Java_com_corvane_bench_BareRegistry_readNumber(JNIEnv*,
                                                                       jclass,
                                                                       jint calls) {
  return timed(calls, [] {
    return withKey(kBenchKey, KEY_QUERY_VALUE, [](HKEY key) {
      DWORD number = 0;
      DWORD size = sizeof(number);
      return query(key, L"Number", &number, size);
    });
  });
}

JNIEXPORT jlong JNICALL Java_com_corvane_bench_BareRegistry_readBytes(JNIEnv*, jclass, jint calls) {
  return timed(calls, [] {
    return withKey(kBenchKey, KEY_QUERY_VALUE, [](HKEY key) {
      BYTE bytes[kBenchByteLength];
      DWORD size = 0;
      const LSTATUS result = query(key, L"Bytes", nullptr, size);
      return result == ERROR_SUCCESS ? query(key, L"Bytes", bytes, size) : result;
    });
  });
}

JNIEXPORT jlong JNICALL Java_com_corvane_bench_BareRegistry_listNames(JNIEnv*, jclass, jint calls) {
  return timed(calls, listNames);
}

JNIEXPORT jlong JNICALL Java_com_corvane_bench_BareRegistry_writeString(JNIEnv*,
                                                                        jclass,
                                                                        jint calls) {
  return timed(calls, [] {
    return withKey(kBenchKey, KEY_SET_VALUE, [](HKEY key) {
      return writeText(key, L"String", kBenchText, std::size(kBenchText) - 1);
    });
  });
}

JNIEXPORT jlong JNICALL Java_com_corvane_bench_BareRegistry_testKey(JNIEnv*, jclass, jint calls) {
  return timed(calls, [] {
    return withKey(kBenchKey, KEY_QUERY_VALUE, [](HKEY) { return LSTATUS{ERROR_SUCCESS}; });
  });
}

}  // extern "C"
