#pragma once

#include <jni.h>
#include <windows.h>

#include <string>
#include <vector>

// What the library has to do in natives of every kind.

/// Which Windows this is, asked anew for each choice between two families of functions.
inline void askVersion() {
  OSVERSIONINFOEXA version = {};
  version.dwOSVersionInfoSize = sizeof(version);
  GetVersionExA(reinterpret_cast<OSVERSIONINFOA*>(&version));
}

/// For a function that an old Windows lacks. It is called directly all the same: what it costs to
/// find it is in the time, and the benchmark runs where it is there.
inline void lookUp(HMODULE module, const char* name) {
  GetProcAddress(module, name);
}

inline jstring toJava(JNIEnv* env, const std::wstring& text) {
  return env->NewString(reinterpret_cast<const jchar*>(text.c_str()),
                        static_cast<jsize>(text.size()));
}

/// The elements' references are freed at once: a list may be longer than the JVM's table of them.
inline jobjectArray toJava(JNIEnv* env, const std::vector<std::wstring>& texts) {
  jclass type = env->FindClass("java/lang/String");
  jobjectArray array = env->NewObjectArray(static_cast<jsize>(texts.size()), type, nullptr);
  for (jsize i = 0; const std::wstring& text : texts) {
    jstring element = toJava(env, text);
    env->SetObjectArrayElement(array, i++, element);
    env->ExceptionCheck();
    env->DeleteLocalRef(element);
  }
  return array;
}

/// A failure is none of the rows' work: the benchmark ends.
template <class Error>
void raiseUnlessZero(JNIEnv* env, Error error) {
  if (error != ERROR_SUCCESS) {
    env->ThrowNew(env->FindClass("java/lang/IllegalStateException"), "a required call failed");
  }
}
