#pragma once

#include <jni.h>

#include <memory>

namespace corvane {

/// A password that Java gave, as NUL-terminated UTF-16, for the length of one native call. The JVM
/// copies the characters straight into it, so that it is the only copy, and at the end it is
/// overwritten: memory that is given back may turn up in a dump or a page file.
///
/// Throws PendingJavaException when the JVM could not give the characters, and std::bad_alloc.
class JniSecret {
 public:
  JniSecret(JNIEnv* env, jstring string);
  JniSecret(const JniSecret&) = delete;
  JniSecret& operator=(const JniSecret&) = delete;
  ~JniSecret();

  /// Null when the Java string is null. Not const, for functions that take a password so.
  wchar_t* get() noexcept { return units_.get(); }

 private:
  jsize length_;
  std::unique_ptr<wchar_t[]> units_;
};

}  // namespace corvane
