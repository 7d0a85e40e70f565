#include <com_corvane_testing_Direct.h>
#include <windows.h>

#include <stdexcept>
#include <string>

#include "java_text.h"

// The natives of com.corvane.testing.Direct; what each does is said there.

namespace {

using Export = jlong (*)(JNIEnv*, jobject, jint, jstring, jstring, jboolean);
using FileExport = jint (*)(JNIEnv*, jobject, jstring, jstring, jboolean);
using FileTextExport = jstring (*)(JNIEnv*, jobject, jstring);

template <class Function = Export>
Function exported(const std::string& method, const std::string& type = "Win32RegistryServiceImpl") {
  const std::string name = "Java_com_corvane_wizard_platform_win32_" + type + "_" + method;
  const FARPROC function = GetProcAddress(GetModuleHandleA("corvane_win32.dll"), name.c_str());
  if (function == nullptr) {
    throw std::runtime_error("not exported: " + name);
  }
  return reinterpret_cast<Function>(reinterpret_cast<void*>(function));
}

void dropException(JNIEnv* env) {
  if (env->ExceptionCheck() == JNI_FALSE) {
    throw std::runtime_error("no exception is pending");
  }
  env->ExceptionClear();
}

}  // namespace

JNIEXPORT jstring JNICALL Java_com_corvane_testing_Direct_getStringValue(JNIEnv* env,
                                                                         jclass type,
                                                                         jint root,
                                                                         jstring key,
                                                                         jstring name,
                                                                         jboolean expand) {
  return bed::orThrow(env, [&] {
    const jlong result = exported("getStringValue")(env, type, root, key, name, expand);
    dropException(env);
    return reinterpret_cast<jstring>(result);
  });
}

JNIEXPORT jlong JNICALL Java_com_corvane_testing_Direct_result(JNIEnv* env,
                                                               jclass type,
                                                               jstring method,
                                                               jint root,
                                                               jstring key,
                                                               jstring name) {
  return bed::orThrow(env, [&] {
    const std::string wanted = bed::narrow(env, method);
    const jlong result = exported(wanted)(env, type, root, key, name, JNI_FALSE);
    dropException(env);
    return result;
  });
}

JNIEXPORT jint JNICALL Java_com_corvane_testing_Direct_fileResult(JNIEnv* env,
                                                                  jclass type,
                                                                  jstring method,
                                                                  jstring first,
                                                                  jstring second,
                                                                  jboolean last) {
  return bed::orThrow(env, [&] {
    const auto call = exported<FileExport>(bed::narrow(env, method), "Win32FileServiceImpl");
    const jint result = call(env, type, first, second, last);
    dropException(env);
    return result;
  });
}

JNIEXPORT jstring JNICALL Java_com_corvane_testing_Direct_fileText(JNIEnv* env,
                                                                   jclass type,
                                                                   jstring method,
                                                                   jstring parameter) {
  return bed::orThrow(env, [&] {
    const auto call = exported<FileTextExport>(bed::narrow(env, method), "Win32FileServiceImpl");
    jstring const result = call(env, type, parameter);
    dropException(env);
    return result;
  });
}
