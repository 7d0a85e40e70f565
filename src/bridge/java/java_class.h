#pragma once

#include <jni.h>

#include <type_traits>

#include "bridge/java/java_reference.h"
#include "bridge/java/java_values.h"

namespace corvane {

/// A Java class and what is found in it by name and JNI signature:
///   const JavaClass type(env, "java/util/Vector");
///   const JavaConstructor<> construct(env, type.get(), "()V");
///   const JavaMethod<void(jobject)> addElement(env, type.get(), "addElement", ...);
/// What is not found is false, and the Java error of its look-up is pending: see `isFound`. In a
/// class that is null nothing is looked up, and no class without a name.
class JavaClass {
 public:
  JavaClass(JNIEnv* env, const char* name)
      : class_(env, name == nullptr ? nullptr : env->FindClass(name)) {}

  explicit operator bool() const noexcept { return static_cast<bool>(class_); }
  jclass get() const noexcept { return class_.get(); }

 private:
  LocalReference<jclass> class_;
};

/// For what can be done without, or fails in its own way: whether something was found. Clears the
/// Java error of a look-up that found nothing.
template <class Found>
bool isFound(JNIEnv* env, const Found& found) {
  if (!found) {
    env->ExceptionClear();
  }
  return static_cast<bool>(found);
}

/// A constructor that takes `Arguments`.
template <class... Arguments>
class JavaConstructor {
 public:
  JavaConstructor(JNIEnv* env, jclass type, const char* signature)
      : env_(env),
        type_(type),
        id_(type == nullptr ? nullptr : env->GetMethodID(type, "<init>", signature)) {}

  explicit operator bool() const noexcept { return id_ != nullptr; }

  /// A new object; false when there is none, and what was thrown is pending.
  LocalReference<jobject> operator()(Arguments... arguments) const {
    return {env_, env_->NewObject(type_, id_, arguments...)};
  }

 private:
  JNIEnv* env_;
  jclass type_;
  jmethodID id_;
};

template <class Function>
class JavaMethod;

/// A method, such as `JavaMethod<void(jint, jboolean)>` for "(IZ)V". An object that it returns is a
/// local reference for the caller to own.
template <class Result, class... Arguments>
class JavaMethod<Result(Arguments...)> {
 public:
  JavaMethod(JNIEnv* env, jclass type, const char* name, const char* signature)
      : env_(env), id_(type == nullptr ? nullptr : env->GetMethodID(type, name, signature)) {}

  explicit operator bool() const noexcept { return id_ != nullptr; }

  /// Throws PendingJavaException when the method throws.
  Result operator()(jobject object, Arguments... arguments) const {
    if constexpr (std::is_void_v<Result>) {
      invoke(object, arguments...);
      throwIfJavaExceptionPending(env_);
    } else {
      const Result result = invoke(object, arguments...);
      throwIfJavaExceptionPending(env_);
      return result;
    }
  }

  /// Leaves what the method throws to the caller.
  Result invoke(jobject object, Arguments... arguments) const {
    if constexpr (std::is_void_v<Result>) {
      env_->CallVoidMethod(object, id_, arguments...);
    } else if constexpr (std::is_same_v<Result, jboolean>) {
      return env_->CallBooleanMethod(object, id_, arguments...);
    } else if constexpr (std::is_same_v<Result, jint>) {
      return env_->CallIntMethod(object, id_, arguments...);
    } else {
      return static_cast<Result>(env_->CallObjectMethod(object, id_, arguments...));
    }
  }

 private:
  JNIEnv* env_;
  jmethodID id_;
};

/// A static int, such as a constant whose number is the class's own.
class JavaStaticInt {
 public:
  JavaStaticInt(JNIEnv* env, jclass type, const char* name)
      : env_(env),
        type_(type),
        id_(type == nullptr ? nullptr : env->GetStaticFieldID(type, name, "I")) {}

  explicit operator bool() const noexcept { return id_ != nullptr; }
  jint get() const { return env_->GetStaticIntField(type_, id_); }

 private:
  JNIEnv* env_;
  jclass type_;
  jfieldID id_;
};

}  // namespace corvane
