#pragma once

#include <jni.h>
#include <windows.h>

#include <string>

/// What is passed from Java is copied before the clock runs.
inline std::wstring textOf(JNIEnv* env, jstring text) {
  const auto length = static_cast<size_t>(env->GetStringLength(text));
  const jchar* units = env->GetStringChars(text, nullptr);
  std::wstring copy(units, units + length);
  env->ReleaseStringChars(text, units);
  return copy;
}

/// The size is asked for first, the code page each time.
inline std::string ansiOf(const std::wstring& text) {
  const auto convert = [&](char* out, int size) {
    return WideCharToMultiByte(GetACP(), 0, text.c_str(), -1, out, size, nullptr, nullptr);
  };
  std::string converted(static_cast<size_t>(convert(nullptr, 0)), '\0');
  convert(converted.data(), static_cast<int>(converted.size()));
  return converted;
}
