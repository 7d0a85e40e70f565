#pragma once

#include <optional>

#include "bridge/java/java_values.h"
#include "bridge/java/native_frame.h"

namespace corvane {

/// The frame of a native that returns a text beside its exception too: what `work(text)` had put
/// into `text` when it failed, empty if nothing. The Java string is made before the exception is
/// raised. `code` is read when the work has failed, for work whose steps have codes of their own.
template <class Work>
jstring nativeText(JNIEnv* env, const jint& code, const Work& work) noexcept {
  return nativeFrame(env, code, [&] {
    WString text;
    std::optional<uint32_t> error;
    try {
      work(text);
    } catch (const Win32Failure& failure) {
      error = failure.code();
    }
    const jstring result = newJavaString(env, text);
    if (error) {
      throwServiceException(env, code, *error);
    }
    return result;
  });
}

}  // namespace corvane
