#pragma once

#include <jni.h>

#include "bridge/win32/byte_buffer.h"
#include "bridge/win32/optional_text.h"

namespace corvane {

/// A Java string copied for the length of one native call, as NUL-terminated UTF-16. A string with
/// an embedded NUL is cut there in effect.
///
/// Throws PendingJavaException when the JVM could not give the characters and has a Java exception
/// pending for it: an argument that was lost must never pass for one that was absent. Throws
/// std::bad_alloc.
class JniString {
 public:
  JniString(JNIEnv* env, jstring string);
  JniString(JniString&&) noexcept = default;
  JniString& operator=(JniString&&) noexcept = default;
  JniString(const JniString&) = delete;
  JniString& operator=(const JniString&) = delete;
  /// Virtual, as for the other: unwinding may destroy it through a base.
  virtual ~JniString() = default;

  /// Null when the Java string is null (or its characters could not be obtained).
  const wchar_t* get() const noexcept { return text_.get(); }

 private:
  OptionalText text_;
};

/// The same in the ANSI code page; the buffer is empty where the other's pointer is null. The
/// length counts the terminator.
class JniAnsiString {
 public:
  JniAnsiString(JNIEnv* env, jstring string);
  JniAnsiString(const JniAnsiString&) = delete;
  JniAnsiString& operator=(const JniAnsiString&) = delete;
  virtual ~JniAnsiString() = default;

  const char* get() const noexcept { return text_.data<char>(); }
  size_t byteLength() const noexcept { return text_.byteLength(); }

 private:
  ByteBuffer text_;
};

}  // namespace corvane
