#include <jni.h>
#include <windows.h>

#include "bench_key.h"
#include "com_corvane_bench_BareRegistry.h"
#include "timed_calls.h"

namespace {

/// The size of the buffers into which the library reads strings and names, in characters.
constexpr DWORD kStringUnits = 256;
constexpr DWORD kNameUnits = 1024;

template <class Work>
LSTATUS withKey(REGSAM access, const Work& work) {
  HKEY key = nullptr;
  LSTATUS result = RegOpenKeyExW(HKEY_CURRENT_USER, kBenchKey, 0, access, &key);
  if (result == ERROR_SUCCESS) {
    result = work(key);
    RegCloseKey(key);
  }
  return result;
}

LSTATUS query(HKEY key, const wchar_t* name, void* data, DWORD size) {
  DWORD type = REG_NONE;
  return RegQueryValueExW(key, name, nullptr, &type, static_cast<BYTE*>(data), &size);
}

/// The key stays open, as the library leaves it.
LSTATUS listNames() {
  HKEY key = nullptr;
  LSTATUS result = RegOpenKeyExW(HKEY_CURRENT_USER, kBenchList, 0, KEY_QUERY_VALUE, &key);
  for (DWORD index = 0; result == ERROR_SUCCESS; ++index) {
    wchar_t name[kNameUnits];
    DWORD length = kNameUnits;
    DWORD type = REG_NONE;
    result = RegEnumValueW(key, index, name, &length, nullptr, &type, nullptr, nullptr);
    if (result == ERROR_NO_MORE_ITEMS && index == kBenchListLength) {
      return ERROR_SUCCESS;
    }
  }
  return result;
}

}  // namespace

extern "C" {

JNIEXPORT jlong JNICALL Java_com_corvane_bench_BareRegistry_readString(JNIEnv*,
                                                                       jclass,
                                                                       jint calls) {
  return timed(calls, [] {
    return withKey(KEY_QUERY_VALUE, [](HKEY key) {
      wchar_t text[kStringUnits];
      return query(key, L"String", text, sizeof(text));
    });
  });
}

JNIEXPORT jlong JNICALL Java_com_corvane_bench_BareRegistry_readNumber(JNIEnv*,
                                                                       jclass,
                                                                       jint calls) {
  return timed(calls, [] {
    return withKey(KEY_QUERY_VALUE, [](HKEY key) {
      DWORD number = 0;
      return query(key, L"Number", &number, sizeof(number));
    });
  });
}

JNIEXPORT jlong JNICALL Java_com_corvane_bench_BareRegistry_readBytes(JNIEnv*, jclass, jint calls) {
  return timed(calls, [] {
    return withKey(KEY_QUERY_VALUE, [](HKEY key) {
      BYTE bytes[kBenchByteLength];
      const LSTATUS result = query(key, L"Bytes", nullptr, 0);
      return result == ERROR_SUCCESS ? query(key, L"Bytes", bytes, sizeof(bytes)) : result;
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
    return withKey(KEY_SET_VALUE, [](HKEY key) {
      const auto* text = reinterpret_cast<const BYTE*>(kBenchText);
      constexpr DWORD kLength = sizeof(kBenchText) - sizeof(wchar_t);
      return RegSetValueExW(key, L"String", 0, REG_SZ, text, kLength);
    });
  });
}

JNIEXPORT jlong JNICALL Java_com_corvane_bench_BareRegistry_testKey(JNIEnv*, jclass, jint calls) {
  return timed(calls, [] {
    return withKey(KEY_QUERY_VALUE, [](HKEY) { return LSTATUS{ERROR_SUCCESS}; });
  });
}

}  // extern "C"
