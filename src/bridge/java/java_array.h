#pragma once

#include <jni.h>

#include <vector>

#include "bridge/java/java_values.h"

namespace corvane {

// Arrays of objects. Each element's reference is freed before the next is asked for, so that a long
// array never fills the JVM's table. Both throw PendingJavaException.

/// What `read(element)` makes of each element, in order; an element may be null.
template <class Read>
auto readJavaArray(JNIEnv* env, jobjectArray array, const Read& read) {
  const jsize length = env->GetArrayLength(array);
  std::vector<decltype(read(jobject()))> elements;
  elements.reserve(static_cast<size_t>(length));
  for (jsize index = 0; index < length; ++index) {
    const LocalReference element(env, env->GetObjectArrayElement(array, index));
    throwIfJavaExceptionPending(env);
    elements.push_back(read(element.get()));
  }
  return elements;
}

/// A new array with a local reference that `make(value)` gives for each of `values`; null where it
/// has none. `initial`: what the elements hold until they are set.
template <class Values, class Make>
jobjectArray newJavaArray(JNIEnv* env,
                          jclass type,
                          const Values& values,
                          jobject initial,
                          const Make& make) {
  auto array = made(env, env->NewObjectArray(javaLength(values.size()), type, initial));
  jsize index = 0;
  for (const auto& value : values) {
    const LocalReference element(env, make(value));
    env->SetObjectArrayElement(array.get(), index++, element.get());
    throwIfJavaExceptionPending(env);
  }
  return array.release();
}

}  // namespace corvane
