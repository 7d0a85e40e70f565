#pragma once

#include <jni.h>

#include <string>

/// What is passed from Java is copied before the clock runs.
inline std::wstring textOf(JNIEnv* env, jstring text) {
  const auto length = static_cast<size_t>(env->GetStringLength(text));
  const jchar* units = env->GetStringChars(text, nullptr);
  std::wstring copy(units, units + length);
  env->ReleaseStringChars(text, units);
  return copy;
}
