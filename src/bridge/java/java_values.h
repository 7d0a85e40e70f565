#pragma once

#include <jni.h>

#include <vector>

#include "bridge/java/java_reference.h"
#include "bridge/win32/byte_buffer.h"
#include "bridge/win32/optional_text.h"
#include "bridge/win32/secret_text.h"
#include "bridge/win32/text.h"

namespace corvane {

/// Thrown where a JNI call failed: its Java exception is pending and is the one that Java sees. A
/// JVM that failed without one is reported as an unexpected failure.
struct PendingJavaException {};

/// Throws PendingJavaException when a Java exception is pending.
void throwIfJavaExceptionPending(JNIEnv* env);

/// Owns what a JNI function made; throws PendingJavaException when it made nothing.
template <class Reference>
LocalReference<Reference> made(JNIEnv* env, Reference reference) {
  if (reference == nullptr) {
    throw PendingJavaException();
  }
  return {env, reference};
}

/// A length that Java can hold. Nothing that the system returns is longer; were it, no exact answer
/// could be given, and Win32Failure is thrown.
jsize javaLength(size_t length);

// Values for Java. Each returns a new local reference for the native to return, and throws
// PendingJavaException when the JVM has none to give.

jstring newJavaString(JNIEnv* env, const WString& text);
/// `initial`: what the elements hold until they are set; null by default.
jobjectArray newJavaStringArray(JNIEnv* env,
                                const std::vector<WString>& texts,
                                const wchar_t* initial = nullptr);

// What is absent is null in Java, elements too.
jstring newOptionalJavaString(JNIEnv* env, const wchar_t* text);
jobjectArray newOptionalJavaStringArray(JNIEnv* env, const OptionalTexts& texts);

/// Throws Win32Failure with E_OUTOFMEMORY when the array cannot be made.
jbyteArray newJavaByteArray(JNIEnv* env, const ByteBuffer& bytes);

/// The text of a Java string for what makes no difference between null and empty.
WString textFromJava(JNIEnv* env, jstring string);

/// A password of Java's. The JVM copies the characters straight into it, so that it is the only
/// copy.
SecretText secretFromJava(JNIEnv* env, jstring string);

/// The texts of an array for what does make one: null is absent, the array and each element.
OptionalTexts optionalTextsFromJava(JNIEnv* env, jobjectArray strings);

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
