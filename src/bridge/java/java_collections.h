#pragma once

#include <jni.h>

#include "bridge/java/java_class.h"
#include "bridge/java/java_values.h"

namespace corvane {

// Java's collections of old, in which texts come and go. What Java throws stays pending, and
// PendingJavaException is thrown for it.

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

  void add(const WString& text) const {
    const LocalReference element(env_, newJavaString(env_, text));
    addElement_(vector_.get(), element.get());
  }

  /// A new local reference.
  jobject elements() const {
    const JavaMethod<jobject()> elements(env_,
                                         type_.get(),
                                         "elements",
                                         "()Ljava/util/Enumeration;");
    throwIfJavaExceptionPending(env_);
    return elements(vector_.get());
  }

 private:
  static LocalReference<jobject> newVector(JNIEnv* env, jclass type) {
    const JavaConstructor<> construct(env, type, "()V");
    throwIfJavaExceptionPending(env);
    return made(env, construct().release());
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
        next_(env, hasMore_ ? type_.get() : nullptr, "nextElement", "()Ljava/lang/Object;") {
    throwIfJavaExceptionPending(env);
  }

  /// Hands over each text that is left in it, null as an empty one. A null enumeration has none.
  template <class Take>
  void forEachText(jobject enumeration, const Take& take) const {
    while (enumeration != nullptr && hasMore_(enumeration) != JNI_FALSE) {
      const LocalReference element(env_, next_(enumeration));
      take(textFromJava(env_, static_cast<jstring>(element.get())));
    }
  }

 private:
  JNIEnv* env_;
  JavaClass type_;
  JavaMethod<jboolean()> hasMore_;
  JavaMethod<jobject()> next_;
};

}  // namespace corvane
