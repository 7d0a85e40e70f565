#pragma once

#include <jni.h>

#include <utility>
#include <vector>

#include "bridge/win32/byte_buffer.h"
#include "bridge/win32/text.h"

namespace corvane {

/// Thrown where a JNI call failed: its Java exception is pending and is the one that Java sees. A
/// JVM that failed without one is reported as an unexpected failure.
struct PendingJavaException {};

/// Throws PendingJavaException when a Java exception is pending.
void throwIfJavaExceptionPending(JNIEnv* env);

/// The scoped owner of one local reference, so that a loop never fills the JVM's table.
template <class Reference>
class LocalReference {
 public:
  LocalReference(JNIEnv* env, Reference reference) noexcept : env_(env), reference_(reference) {}
  LocalReference(LocalReference&& other) noexcept
      : env_(other.env_), reference_(std::exchange(other.reference_, nullptr)) {}
  LocalReference(const LocalReference&) = delete;
  LocalReference& operator=(const LocalReference&) = delete;
  LocalReference& operator=(LocalReference&&) = delete;
  ~LocalReference() {
    if (reference_ != nullptr) {
      env_->DeleteLocalRef(reference_);
    }
  }

  explicit operator bool() const noexcept { return reference_ != nullptr; }
  Reference get() const noexcept { return reference_; }
  [[nodiscard]] Reference release() noexcept { return std::exchange(reference_, nullptr); }

 private:
  JNIEnv* env_;
  Reference reference_;
};

// Values for Java. Each returns a new local reference for the native to return, and throws
// PendingJavaException when the JVM has none to give.

jstring newJavaString(JNIEnv* env, const WString& text);
/// `initial`: what the elements hold until they are set; null by default.
jobjectArray newJavaStringArray(JNIEnv* env,
                                const std::vector<WString>& texts,
                                const wchar_t* initial = nullptr);

/// Throws Win32Failure with E_OUTOFMEMORY when the array cannot be made.
jbyteArray newJavaByteArray(JNIEnv* env, const ByteBuffer& bytes);

/// The text of a Java string for what makes no difference between null and empty.
WString textFromJava(JNIEnv* env, jstring string);

// Values from Java. Both throw Win32Failure with ERROR_INVALID_PARAMETER for a null array.

/// A null element counts as an empty text.
std::vector<WString> textsFromJava(JNIEnv* env, jobjectArray strings);
ByteBuffer bytesFromJava(JNIEnv* env, jbyteArray bytes);

constexpr jboolean toJavaBoolean(bool value) noexcept {
  return value ? JNI_TRUE : JNI_FALSE;
}

/// Java's boolean counts as true when it is not zero.
constexpr bool fromJavaBoolean(jboolean value) noexcept {
  return value != JNI_FALSE;
}

}  // namespace corvane
