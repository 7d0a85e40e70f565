#pragma once

#include <jni.h>

#include <utility>

namespace corvane {

/// The scoped owner of one local reference, so that a loop never fills the JVM's table.
template <class Reference>
class LocalReference {
 public:
  LocalReference(JNIEnv* env, Reference reference) noexcept : env_(env), reference_(reference) {}
  LocalReference(LocalReference&& other) noexcept
      : env_(other.env_), reference_(std::exchange(other.reference_, nullptr)) {}
  LocalReference(const LocalReference&) = delete;
  LocalReference& operator=(const LocalReference&) = delete;
  LocalReference& operator=(LocalReference&&) = delete;
  ~LocalReference() {
    if (reference_ != nullptr) {
      env_->DeleteLocalRef(reference_);
    }
  }

  explicit operator bool() const noexcept { return reference_ != nullptr; }
  Reference get() const noexcept { return reference_; }
  [[nodiscard]] Reference release() noexcept { return std::exchange(reference_, nullptr); }

 private:
  JNIEnv* env_;
  Reference reference_;
};

/// The scoped owner of a global reference of its own to what `reference` names, which keeps that
/// alive whatever becomes of the local ones. False when the JVM gave none, or `reference` is null.
template <class Reference>
class GlobalReference {
 public:
  GlobalReference(JNIEnv* env, Reference reference)
      : env_(env), reference_(static_cast<Reference>(env->NewGlobalRef(reference))) {}
  GlobalReference(const GlobalReference&) = delete;
  GlobalReference& operator=(const GlobalReference&) = delete;
  ~GlobalReference() {
    if (reference_ != nullptr) {
      env_->DeleteGlobalRef(reference_);
    }
  }

  explicit operator bool() const noexcept { return reference_ != nullptr; }
  Reference get() const noexcept { return reference_; }

 private:
  JNIEnv* env_;
  Reference reference_;
};

}  // namespace corvane
