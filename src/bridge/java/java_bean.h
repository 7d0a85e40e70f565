#pragma once

#include <jni.h>
#include <windows.h>

#include "bridge/java/java_class.h"
#include "bridge/win32/optional_text.h"
#include "bridge/win32/secret_text.h"

namespace corvane {

// Java objects that are records: a property "StartType" is read by `getStartType()` and written by
// `setStartType(value)`, found by that name and the signature of the value's type: I for a DWORD, Z
// for a bool, String and String[] for texts, whose null is an absent one. A password is a String
// that is only read: written it is null.
//
// What a class does not have is done without, so that older and newer classes than this library
// knows can be used with it: a getter that is missing leaves the value as it was, a setter that is
// missing is skipped. What a method throws is PendingJavaException, and Java sees it.

/// Reads the properties of an object that Java handed in.
class BeanReader {
 public:
  /// The getters are looked up in `className`, in slash form. When there is no such class the
  /// reader is false, and everything is missing.
  BeanReader(JNIEnv* env, const char* className, jobject bean);

  explicit operator bool() const noexcept { return static_cast<bool>(class_); }

  void get(const char* property, DWORD& value) const;
  void get(const char* property, bool& value) const;
  void get(const char* property, OptionalText& value) const;
  void get(const char* property, OptionalTexts& value) const;
  void get(const char* property, SecretText& value) const;

  /// A method that takes arguments, as those of lists do. False when it is missing.
  template <class Function>
  JavaMethod<Function> find(const char* method, const char* signature) const {
    const JavaMethod<Function> found(env_, class_.get(), method, signature);
    isFound(env_, found);
    return found;
  }

 private:
  template <class Result, class Take>
  void read(const char* property, const char* signature, const Take& take) const;

  JNIEnv* env_;
  JavaClass class_;
  jobject bean_;
};

/// Makes a new object, with the constructor without arguments, and writes its properties. See
/// `newBean`.
class BeanWriter {
 public:
  /// False when the class or the constructor is missing; there is nothing to be written then.
  BeanWriter(JNIEnv* env, const char* className);

  explicit operator bool() const noexcept { return static_cast<bool>(bean_); }

  void set(const char* property, DWORD value) const;
  void set(const char* property, bool value) const;
  void set(const char* property, const OptionalText& value) const;
  void set(const char* property, const OptionalTexts& value) const;
  void set(const char* property, const SecretText& value) const;

  /// A method that takes a value, such as the one that adds to a list. False when it is missing.
  template <class Value>
  JavaMethod<void(Value)> find(const char* method, const char* signature) const {
    const JavaMethod<void(Value)> found(env_, class_.get(), method, signature);
    isFound(env_, found);
    return found;
  }

  jobject get() const noexcept { return bean_.get(); }
  [[nodiscard]] jobject release() noexcept { return bean_.release(); }

 private:
  template <class Value>
  void write(const char* property, const char* signature, Value value) const;

  JNIEnv* env_;
  JavaClass class_;
  LocalReference<jobject> bean_;
};

/// A new object into which `write(bean)` has written; null when the class or its constructor is
/// missing.
template <class Write>
jobject newBean(JNIEnv* env, const char* className, const Write& write) {
  BeanWriter bean(env, className);
  if (bean) {
    write(bean);
  }
  return bean.release();
}

}  // namespace corvane
