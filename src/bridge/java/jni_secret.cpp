#include "bridge/java/jni_secret.h"

#include <windows.h>

#include "bridge/java/java_values.h"

namespace corvane {

JniSecret::JniSecret(JNIEnv* env, jstring string)
    : length_(string == nullptr ? 0 : env->GetStringLength(string)) {
  if (string == nullptr) {
    return;
  }
  units_ = std::make_unique<wchar_t[]>(static_cast<size_t>(length_) + 1);
  env->GetStringRegion(string, 0, length_, reinterpret_cast<jchar*>(units_.get()));
  throwIfJavaExceptionPending(env);
}

JniSecret::~JniSecret() {
  SecureZeroMemory(units_.get(), static_cast<size_t>(length_) * sizeof(wchar_t));
}

}  // namespace corvane
