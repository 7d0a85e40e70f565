#pragma once

#include <jni.h>

#include <cstdint>
#include <string>
#include <vector>

namespace bed {

// Java values of the test natives' own, to and from C++.

std::wstring wide(JNIEnv* env, jstring text);
/// Names of functions and files: plain ASCII.
std::string narrow(JNIEnv* env, jstring text);
std::vector<uint8_t> bytes(JNIEnv* env, jbyteArray array);

jstring javaText(JNIEnv* env, const std::wstring& text);
jbyteArray javaBytes(JNIEnv* env, const std::vector<uint8_t>& data);
jobjectArray javaTexts(JNIEnv* env, const std::vector<std::wstring>& texts);
/// Of plain ASCII.
jobjectArray javaTexts(JNIEnv* env, const std::vector<std::string>& texts);

/// Runs `work`; what it throws becomes a Java IllegalStateException.
template <class Work>
auto orThrow(JNIEnv* env, const Work& work) -> decltype(work()) {
  try {
    return work();
  } catch (const std::exception& failure) {
    env->ThrowNew(env->FindClass("java/lang/IllegalStateException"), failure.what());
    return decltype(work())();
  }
}

}  // namespace bed
