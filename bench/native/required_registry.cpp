#include <jni.h>
#include <windows.h>

#include <cwchar>
#include <string>
#include <vector>

#include "com_corvane_bench_RequiredRegistry.h"
#include "java_text.h"
#include "registry_calls.h"
#include "required_calls.h"

namespace {

/// Reads into a buffer that most values fit.
LSTATUS readText(const std::wstring& path, const std::wstring& name, std::wstring& text) {
  return withKey(path.c_str(), KEY_QUERY_VALUE, [&](HKEY key) {
    wchar_t data[kStringUnits];
    DWORD size = sizeof(data);
    const LSTATUS result = query(key, name.c_str(), data, size);
    text.assign(data, result == ERROR_SUCCESS ? wcsnlen(data, size / sizeof(wchar_t)) : 0);
    return result;
  });
}

/// Asks for the size first.
LSTATUS readBytes(const std::wstring& path, const std::wstring& name, std::vector<jbyte>& bytes) {
  return withKey(path.c_str(), KEY_QUERY_VALUE, [&](HKEY key) {
    DWORD size = 0;
    const LSTATUS result = query(key, name.c_str(), nullptr, size);
    bytes.resize(size);
    return result == ERROR_SUCCESS ? query(key, name.c_str(), bytes.data(), size) : result;
  });
}

}  // namespace

extern "C" {

JNIEXPORT jstring JNICALL Java_com_corvane_bench_RequiredRegistry_readString(JNIEnv* env,
                                                                             jclass,
                                                                             jstring key,
                                                                             jstring name) {
  const std::wstring path = textOf(env, key);
  const std::wstring value = textOf(env, name);
  std::wstring text;
  askVersion();
  raiseUnlessZero(env, readText(path, value, text));
  return toJava(env, text);
}

JNIEXPORT jint JNICALL Java_com_corvane_bench_RequiredRegistry_readNumber(JNIEnv* env,
                                                                          jclass,
                                                                          jstring key,
                                                                          jstring name) {
  const std::wstring path = textOf(env, key);
  const std::wstring value = textOf(env, name);
  jint number = 0;
  askVersion();
  raiseUnlessZero(env, withKey(path.c_str(), KEY_QUERY_VALUE, [&](HKEY opened) {
                    DWORD size = sizeof(number);
                    return query(opened, value.c_str(), &number, size);
                  }));
  return number;
}

JNIEXPORT jbyteArray JNICALL Java_com_corvane_bench_RequiredRegistry_readBytes(JNIEnv* env,
                                                                               jclass,
                                                                               jstring key,
                                                                               jstring name) {
  const std::wstring path = textOf(env, key);
  const std::wstring value = textOf(env, name);
  std::vector<jbyte> bytes;
  askVersion();
  raiseUnlessZero(env, readBytes(path, value, bytes));
  const auto length = static_cast<jsize>(bytes.size());
  jbyteArray array = env->NewByteArray(length);
  env->SetByteArrayRegion(array, 0, length, bytes.data());
  env->ExceptionCheck();
  return array;
}

JNIEXPORT jobjectArray JNICALL Java_com_corvane_bench_RequiredRegistry_listNames(JNIEnv* env,
                                                                                 jclass,
                                                                                 jstring key) {
  const std::wstring path = textOf(env, key);
  std::vector<std::wstring> names;
  askVersion();
  raiseUnlessZero(env, eachName(path.c_str(), [&](const wchar_t* name, DWORD length) {
                    names.emplace_back(name, length);
                  }));
  return toJava(env, names);
}

JNIEXPORT void JNICALL Java_com_corvane_bench_RequiredRegistry_writeString(JNIEnv* env,
                                                                           jclass,
                                                                           jstring key,
                                                                           jstring name,
                                                                           jstring text) {
  const std::wstring path = textOf(env, key);
  const std::wstring value = textOf(env, name);
  const std::wstring content = textOf(env, text);
  askVersion();
  raiseUnlessZero(env, withKey(path.c_str(), KEY_SET_VALUE, [&](HKEY opened) {
                    return writeText(opened, value.c_str(), content.c_str(), content.size());
                  }));
}

JNIEXPORT void JNICALL Java_com_corvane_bench_RequiredRegistry_testKey(JNIEnv* env,
                                                                       jclass,
                                                                       jstring key) {
  const std::wstring path = textOf(env, key);
  askVersion();
  raiseUnlessZero(env, withKey(path.c_str(), KEY_QUERY_VALUE, [](HKEY) {
                    return LSTATUS{ERROR_SUCCESS};
                  }));
}

}  // extern "C"
