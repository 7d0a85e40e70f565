#pragma once

#include <jni.h>

#include <typeinfo>

#include "bridge/java/java_class.h"
#include "bridge/java/java_values.h"

namespace corvane {

// Java's collections of old, in which texts come and go. What Java throws stays pending, and
// PendingJavaException is thrown for it. What the JVM did not find without a word is not called.

/// Texts for Java, which gets them as a java.util.Enumeration.
class JavaVector {
 public:
  explicit JavaVector(JNIEnv* env)
      : env_(env),
        type_(env, "java/util/Vector"),
        vector_(newVector(env, type_.get())),
        addElement_(env, type_.get(), "addElement", "(Ljava/lang/Object;)V") {
    throwIfJavaExceptionPending(env);
  }

  /// False when the JVM made none.
  explicit operator bool() const noexcept { return static_cast<bool>(vector_); }

  void add(const WString& text) const {
    if (addElement_) {
      const LocalReference element(env_, newJavaString(env_, text));
      addElement_(vector_.get(), element.get());
    }
  }

  /// A new local reference, or null.
  jobject elements() const {
    const JavaMethod<jobject()> elements(env_,
                                         type_.get(),
                                         "elements",
                                         "()Ljava/util/Enumeration;");
    throwIfJavaExceptionPending(env_);
    return elements ? elements(vector_.get()) : nullptr;
  }

 private:
  static LocalReference<jobject> newVector(JNIEnv* env, jclass type) {
    const JavaConstructor<> construct(env, type, "()V");
    throwIfJavaExceptionPending(env);
    LocalReference<jobject> vector(env, construct ? construct().release() : nullptr);
    throwIfJavaExceptionPending(env);
    return vector;
  }

  JNIEnv* env_;
  JavaClass type_;
  LocalReference<jobject> vector_;
  JavaMethod<void(jobject)> addElement_;
};

/// The methods of java.util.Enumeration.
class JavaEnumerations {
 public:
  explicit JavaEnumerations(JNIEnv* env)
      : env_(env),
        type_(env, "java/util/Enumeration"),
        hasMore_(env, type_.get(), "hasMoreElements", "()Z"),
        next_(env, hasMore_ ? type_.get() : nullptr, "nextElement", "()Ljava/lang/Object;"),
        text_(env, next_ ? "java/lang/String" : nullptr) {
    throwIfJavaExceptionPending(env);
  }

  /// False when the JVM did not find them.
  explicit operator bool() const noexcept { return static_cast<bool>(text_); }

  /// Hands over each text that is left in it, null as an empty one. A null enumeration has none. An
  /// element that is no text, which a raw enumeration may have, is a std::bad_cast.
  template <class Take>
  void forEachText(jobject enumeration, const Take& take) const {
    while (enumeration != nullptr && hasMore_(enumeration) != JNI_FALSE) {
      const LocalReference element(env_, next_(enumeration));
      take(textFromJava(env_, asText(element.get())));
    }
  }

 private:
  jstring asText(jobject element) const {
    if (env_->IsInstanceOf(element, text_.get()) == JNI_FALSE) {
      throw std::bad_cast();
    }
    return static_cast<jstring>(element);
  }

  JNIEnv* env_;
  JavaClass type_;
  JavaMethod<jboolean()> hasMore_;
  JavaMethod<jobject()> next_;
  JavaClass text_;
};

}  // namespace corvane
