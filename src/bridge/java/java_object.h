#pragma once

#include <jni.h>

#include <cstdint>
#include <span>
#include <utility>

#include "bridge/java/java_reference.h"
#include "bridge/win32/secret_text.h"
#include "bridge/win32/text.h"

namespace corvane {

/// A method of a Java object could not be called, or it threw. In the latter case the Java
/// exception stays pending and is what Java sees; the message is empty then. Otherwise nothing is
/// pending and the message names the line of the internal error, by which a report from afar tells
/// which call it was.
class JavaException {
 public:
  explicit JavaException(WString message) noexcept : message_(std::move(message)) {}
  explicit JavaException(jthrowable throwable) noexcept : throwable_(throwable) {}

  uint32_t code() const noexcept { return code_; }
  const WString& message() const noexcept { return message_; }
  /// The local reference of the pending exception; null for an internal error.
  jthrowable throwable() const noexcept { return throwable_; }

 private:
  uint32_t code_ = 0;
  WString message_;
  jthrowable throwable_ = nullptr;
};

/// A Java object that was handed to a native, for the length of that call and on its thread: it and
/// its class are pinned, and its methods are found by name each time they are called.
///
/// All throw JavaException; a text that the JVM can neither give nor take is PendingJavaException,
/// as everywhere.
class JavaObject {
 public:
  JavaObject(JNIEnv* env, jobject object);
  JavaObject(const JavaObject&) = delete;
  JavaObject& operator=(const JavaObject&) = delete;
  /// Virtual: what is made of a Java object, such as a request, is one.
  virtual ~JavaObject() = default;

  /// Calls "()Ljava/lang/String;". Null is the empty text.
  WString callStringMethod(const WString& name) const;

  /// The same for a password.
  SecretText callSecretMethod(const WString& name) const;

  /// Calls "()" for an object of the class `className`, in slash form ("java/io/OutputStream").
  LocalReference<jobject> callObjectMethod(const WString& name, const char* className) const;

  /// Calls "(I)V".
  void callVoidMethodInt(const WString& name, jint value) const;

  /// Calls "(I)V" for each of the values, in order, up to one that throws. The method is found once
  /// for all of them: what is called for every byte of a long output must not ask each time.
  void callVoidMethodIntEach(const WString& name, std::span<const signed char> values) const;

  /// Calls "()V".
  void callVoidMethod(const WString& name) const;

  /// Calls "(Ljava/lang/String;)V".
  void callVoidMethodString(const WString& name, const WString& text) const;

 private:
  LocalReference<jstring> callForText(const WString& name) const;

  JNIEnv* env_;
  GlobalReference<jobject> object_;
  GlobalReference<jclass> class_;
};

}  // namespace corvane
