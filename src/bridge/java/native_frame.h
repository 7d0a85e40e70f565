#pragma once

#include <jni.h>
#include <windows.h>

#include "bridge/java/service_exception.h"
#include "bridge/win32/win32_failure.h"

/// The head of an exported function, under the name by which Java binds it:
///   NATIVE(jint, Win32FileServiceImpl, win32DeleteFile)(JNIEnv* env, jobject, jstring path)
/// The class (with its package below platform.win32 and an underscore before it, where it has one)
/// and the method stand whole, so that a search for either finds the definition. A name that no
/// Java class declares is an error: the compilers ask for its prototype.
#define NATIVE(Result, Class, method) \
  JNIEXPORT Result JNICALL Java_com_corvane_wizard_platform_win32_##Class##_##method

namespace corvane {

/// What Java is told when something failed that nobody expected, memory included: no message.
constexpr jint kUnexpectedFailure = E_FAIL;

/// Does the work and returns its result. When anything is thrown, `failed()` is called in its place
/// and the result is the default value of the type. The only place that catches them all; `failed`
/// throws nothing.
template <class Work, class Failed>
auto catchAll(const Work& work, const Failed& failed) noexcept -> decltype(work()) {
  try {
    return work();
  } catch (...) {
    failed();
  }
  return decltype(work())();
}

/// The frame around the work of every exported function: does the work and returns its result.
/// What is thrown is reported to Java as an unexpected failure, and Java gets the default value of
/// the type. No C++ exception gets past it.
///
/// This form is for natives that have no code of their own.
template <class Work>
auto nativeFrame(JNIEnv* env, const Work& work) noexcept -> decltype(work()) {
  return catchAll(work, [env] { throwServiceException(env, kUnexpectedFailure); });
}

/// For a native whose unexpected failures have a code of their own: whatever is thrown is reported
/// with it, and without a message.
template <class Work>
auto codeOnlyFrame(JNIEnv* env, jint code, const Work& work) noexcept -> decltype(work()) {
  return catchAll(work, [env, code] { throwServiceException(env, code); });
}

/// The same, but a Win32Failure is reported with the native's own `code` and the error as message.
template <class Work>
auto nativeFrame(JNIEnv* env, jint code, const Work& work) noexcept -> decltype(work()) {
  return nativeFrame(env, [&] {
    try {
      return work();
    } catch (const Win32Failure& failure) {
      throwServiceException(env, code, failure.code());
    }
    return decltype(work())();
  });
}

/// The same, but a failure that nobody expected is reported with the `code` too, and
/// kUnexpectedFailure for its reason.
template <class Work>
auto nativeFrameWithReason(JNIEnv* env, jint code, const Work& work) noexcept -> decltype(work()) {
  return nativeFrame(env, code, [&] {
    try {
      return work();
    } catch (const Win32Failure&) {
      throw;
    } catch (...) {
      throw Win32Failure(static_cast<uint32_t>(kUnexpectedFailure));
    }
  });
}

}  // namespace corvane
