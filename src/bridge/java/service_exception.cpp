#include "bridge/java/service_exception.h"

#include "bridge/java/java_values.h"
#include "bridge/win32/error_message.h"
#include "bridge/win32/platform.h"

namespace corvane {

namespace {

constexpr const char* kCodeOnly = "(I)V";
constexpr const char* kCodeAndMessage = "(ILjava/lang/String;)V";
constexpr jint kSevere = 1;

/// The class of the exception and the constructor that is wanted. Without either, the Java error
/// that the look-up left is what Java sees.
class ExceptionClass {
 public:
  ExceptionClass(JNIEnv* env, const char* constructor)
      : class_(env, env->FindClass("com/corvane/wizard/service/ServiceException")),
        constructor_(class_ ? env->GetMethodID(class_.get(), "<init>", constructor) : nullptr) {}

  explicit operator bool() const noexcept { return constructor_ != nullptr; }
  jclass get() const noexcept { return class_.get(); }
  jmethodID constructor() const noexcept { return constructor_; }

 private:
  LocalReference<jclass> class_;
  jmethodID constructor_;
};

bool isPending(JNIEnv* env) {
  return env->ExceptionCheck() != JNI_FALSE;
}

void raise(JNIEnv* env, jobject exception) {
  const LocalReference owner(env, static_cast<jthrowable>(exception));
  if (owner && !isPending(env)) {
    env->Throw(owner.get());
  }
}

/// Tells the exception its severity. A class that has none, or refuses it, is none the worse for
/// it.
void setSeverity(JNIEnv* env, const ExceptionClass& type, jobject exception) {
  const jmethodID setter = env->GetMethodID(type.get(), "setSeverity", "(I)V");
  if (setter != nullptr) {
    env->CallVoidMethod(exception, setter, kSevere);
  }
  if (isPending(env)) {
    env->ExceptionClear();
  }
}

void raiseWithMessage(JNIEnv* env, jint code, uint32_t messageId, bool severe) {
  if (isPending(env)) {
    return;
  }
  const bool windows9x = isWindows9x();
  const ExceptionClass type(env, kCodeAndMessage);
  if (!type) {
    return;
  }
  const WString text = errorMessage(windows9x, messageId);
  const LocalReference message(env,
                               env->NewString(reinterpret_cast<const jchar*>(text.c_str()),
                                              static_cast<jsize>(text.size())));
  if (isPending(env)) {
    return;
  }
  const jobject exception = env->NewObject(type.get(), type.constructor(), code, message.get());
  if (severe && exception != nullptr) {
    setSeverity(env, type, exception);
  }
  raise(env, exception);
}

/// The code of an operation that is not supported; 0 when the class does not name one.
jint notSupportedCode(JNIEnv* env, jclass type) {
  const jfieldID field = env->GetStaticFieldID(type, "OPERATION_NOT_SUPPORTED", "I");
  if (field == nullptr) {
    env->ExceptionClear();
    return 0;
  }
  return env->GetStaticIntField(type, field);
}

}  // namespace

void throwServiceException(JNIEnv* env, jint code) noexcept {
  if (isPending(env)) {
    return;
  }
  if (const ExceptionClass type(env, kCodeOnly); type) {
    raise(env, env->NewObject(type.get(), type.constructor(), code));
  }
}

void throwServiceException(JNIEnv* env, jint code, uint32_t messageId) {
  raiseWithMessage(env, code, messageId, false);
}

void throwServiceExceptionWithSeverity(JNIEnv* env, jint code, uint32_t messageId) {
  raiseWithMessage(env, code, messageId, true);
}

void throwNotSupported(JNIEnv* env) noexcept {
  if (isPending(env)) {
    return;
  }
  if (const ExceptionClass type(env, kCodeOnly); type) {
    raise(env, env->NewObject(type.get(), type.constructor(), notSupportedCode(env, type.get())));
  }
}

}  // namespace corvane
