#include "bridge/java/service_exception.h"

#include "bridge/java/java_class.h"
#include "bridge/win32/error_message.h"
#include "bridge/win32/platform.h"

namespace corvane {

namespace {

constexpr const char* kServiceException = "com/corvane/wizard/service/ServiceException";
constexpr jint kSevere = 1;

// Without the class or the constructor that is wanted, the Java error that the look-up left is what
// Java sees.

bool isPending(JNIEnv* env) {
  return env->ExceptionCheck() != JNI_FALSE;
}

void raise(JNIEnv* env, const LocalReference<jobject>& exception) {
  if (exception && !isPending(env)) {
    env->Throw(static_cast<jthrowable>(exception.get()));
  }
}

/// Tells the exception its severity. A class that has none, or refuses it, is none the worse for
/// it.
void setSeverity(JNIEnv* env, jclass type, jobject exception) {
  const JavaMethod<void(jint)> setter(env, type, "setSeverity", "(I)V");
  if (setter) {
    setter.invoke(exception, kSevere);
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
  const JavaClass type(env, kServiceException);
  const JavaConstructor<jint, jstring> construct(env, type.get(), "(ILjava/lang/String;)V");
  if (!construct) {
    return;
  }
  const WString text = errorMessage(windows9x, messageId);
  const LocalReference message(env,
                               env->NewString(reinterpret_cast<const jchar*>(text.c_str()),
                                              static_cast<jsize>(text.size())));
  if (isPending(env)) {
    return;
  }
  const LocalReference<jobject> exception = construct(code, message.get());
  if (severe && exception) {
    setSeverity(env, type.get(), exception.get());
  }
  raise(env, exception);
}

/// Raises with the code alone, which `codeIn(type)` gives.
template <class Code>
void raiseCode(JNIEnv* env, const Code& codeIn) {
  if (isPending(env)) {
    return;
  }
  const JavaClass type(env, kServiceException);
  const JavaConstructor<jint> construct(env, type.get(), "(I)V");
  if (construct) {
    raise(env, construct(codeIn(type.get())));
  }
}

/// The code of an operation that is not supported; 0 when the class does not name one.
jint notSupportedCode(JNIEnv* env, jclass type) {
  const JavaStaticInt code(env, type, "OPERATION_NOT_SUPPORTED");
  return isFound(env, code) ? code.get() : 0;
}

}  // namespace

void throwServiceException(JNIEnv* env, jint code) noexcept {
  raiseCode(env, [&](jclass) { return code; });
}

void throwServiceException(JNIEnv* env, jint code, uint32_t messageId) {
  raiseWithMessage(env, code, messageId, false);
}

void throwServiceExceptionWithSeverity(JNIEnv* env, jint code, uint32_t messageId) {
  raiseWithMessage(env, code, messageId, true);
}

void throwNotSupported(JNIEnv* env) noexcept {
  raiseCode(env, [&](jclass type) { return notSupportedCode(env, type); });
}

}  // namespace corvane
