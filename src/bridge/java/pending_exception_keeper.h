#pragma once

#include <jni.h>

#include "bridge/java/java_reference.h"

namespace corvane {

/// Keeps the Java exception that is pending aside, so that methods may be called meanwhile, and
/// throws it again at the end of the scope: it came first, and gives way to nothing thrown since.
class PendingExceptionKeeper {
 public:
  explicit PendingExceptionKeeper(JNIEnv* env)
      : env_(env), exception_(env, env->ExceptionOccurred()) {
    if (exception_) {
      env_->ExceptionClear();
    }
  }
  PendingExceptionKeeper(const PendingExceptionKeeper&) = delete;
  PendingExceptionKeeper& operator=(const PendingExceptionKeeper&) = delete;
  ~PendingExceptionKeeper() {
    if (exception_) {
      env_->ExceptionClear();
      env_->Throw(exception_.get());
    }
  }

 private:
  JNIEnv* env_;
  LocalReference<jthrowable> exception_;
};

}  // namespace corvane
