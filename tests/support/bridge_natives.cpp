#include <com_corvane_testing_Bridge.h>
#include <windows.h>

#include "bridge/java/java_object.h"
#include "bridge/java/java_values.h"
#include "bridge/java/jni_string.h"
#include "bridge/java/native_frame.h"
#include "bridge/java/service_exception.h"
#include "bridge/win32/error_message.h"
#include "bridge/win32/platform.h"
#include "bridge/win32/runtime_function.h"
#include "bridge/win32/text.h"

using namespace corvane;

// The natives of com.corvane.testing.Bridge. They run the library's own code inside its own frame,
// as its exported functions do.

namespace {

constexpr jint kProbeFailed = -1;

/// Null, with a Java error pending, when the JVM has no array to give.
jbyteArray newArray(JNIEnv* env, const void* data, size_t length) {
  jbyteArray const array = env->NewByteArray(static_cast<jsize>(length));
  if (array != nullptr) {
    env->SetByteArrayRegion(array, 0, static_cast<jsize>(length), static_cast<const jbyte*>(data));
  }
  return array;
}

/// The calls of JavaObject, by the number that Java gives. What returns an object answers with that
/// object's text.
WString callMethod(const JavaObject& object, jint call, const WString& name, JNIEnv* env) {
  switch (call) {
    case 0:
      return object.callStringMethod(name);
    case 1:
      return JavaObject(env, object.callObjectMethod(name, "java/lang/Object").get())
          .callStringMethod(L"toString");
    case 2:
      object.callVoidMethodInt(name, -7);
      break;
    case 3:
      object.callVoidMethod(name);
      break;
    default:
      object.callVoidMethodString(name, L"text\u00E9");
  }
  return {};
}

}  // namespace

JNIEXPORT jstring JNICALL Java_com_corvane_testing_Bridge_callMethod(JNIEnv* env,
                                                                     jclass,
                                                                     jobject target,
                                                                     jint call,
                                                                     jstring name) {
  return nativeFrame(env, kProbeFailed, [&] {
    const WString method = textFromJava(env, name);
    WString answer;
    try {
      answer = callMethod(JavaObject(env, target), call, method, env);
    } catch (const JavaException& failure) {
      if (failure.throwable() != nullptr) {
        throw;
      }
      answer = failure.message() + (env->ExceptionCheck() != JNI_FALSE ? L", pending" : L"");
      env->ExceptionClear();
    }
    return newJavaString(env, answer);
  });
}

JNIEXPORT jint JNICALL Java_com_corvane_testing_Bridge_predicates(JNIEnv*, jclass) {
  using Predicate = bool (*)();
  constexpr Predicate predicates[] = {isWindows9x,
                                      isWindowsNT,
                                      isWindowsME,
                                      isWindows2000,
                                      isWindowsXPOrLater};
  jint answers = 0;
  jint bit = 1;
  for (const Predicate predicate : predicates) {
    answers += predicate() ? bit : 0;
    bit *= 2;
  }
  return answers;
}

JNIEXPORT void JNICALL Java_com_corvane_testing_Bridge_raise(JNIEnv* env, jclass, jint code) {
  throwServiceException(env, code);
}

JNIEXPORT void JNICALL Java_com_corvane_testing_Bridge_raiseWithMessage(JNIEnv* env,
                                                                        jclass,
                                                                        jint code,
                                                                        jint message) {
  nativeFrame(env, kProbeFailed, [&] {
    throwServiceException(env, code, static_cast<uint32_t>(message));
  });
}

JNIEXPORT void JNICALL Java_com_corvane_testing_Bridge_raiseSevere(JNIEnv* env,
                                                                   jclass,
                                                                   jint code,
                                                                   jint message) {
  nativeFrame(env, kProbeFailed, [&] {
    throwServiceExceptionWithSeverity(env, code, static_cast<uint32_t>(message));
  });
}

JNIEXPORT void JNICALL Java_com_corvane_testing_Bridge_raiseNotSupported(JNIEnv* env, jclass) {
  throwNotSupported(env);
}

JNIEXPORT void JNICALL Java_com_corvane_testing_Bridge_raiseTwice(JNIEnv* env,
                                                                  jclass,
                                                                  jint first,
                                                                  jint second) {
  throwServiceException(env, first);
  nativeFrame(env, kProbeFailed, [&] {
    throwServiceException(env, second, ERROR_ACCESS_DENIED);
    throwServiceExceptionWithSeverity(env, second, ERROR_ACCESS_DENIED);
  });
  throwServiceException(env, second);
  throwNotSupported(env);
}

JNIEXPORT jstring JNICALL Java_com_corvane_testing_Bridge_errorText(JNIEnv* env,
                                                                    jclass,
                                                                    jint code,
                                                                    jint message) {
  return nativeFrame(env, kProbeFailed, [&] {
    return newJavaString(env, formatErrorText(code, static_cast<uint32_t>(message)));
  });
}

JNIEXPORT jbyteArray JNICALL Java_com_corvane_testing_Bridge_copyWide(JNIEnv* env,
                                                                      jclass,
                                                                      jstring text,
                                                                      jint units) {
  return nativeFrame(env, kProbeFailed, [&]() -> jbyteArray {
    const JniString copy(env, text);
    return copy.get() == nullptr
               ? nullptr
               : newArray(env, copy.get(), static_cast<size_t>(units) * sizeof(wchar_t));
  });
}

JNIEXPORT jbyteArray JNICALL Java_com_corvane_testing_Bridge_copyAnsi(JNIEnv* env,
                                                                      jclass,
                                                                      jstring text) {
  return nativeFrame(env, kProbeFailed, [&]() -> jbyteArray {
    const JniAnsiString copy(env, text);
    return copy.get() == nullptr ? nullptr : newArray(env, copy.get(), copy.byteLength());
  });
}

JNIEXPORT jint JNICALL Java_com_corvane_testing_Bridge_lookedUpCodePage(JNIEnv*, jclass) {
  const auto getAcp = RUNTIME_FUNCTION(kernel32, GetACP);
  return getAcp ? static_cast<jint>(getAcp()) : -static_cast<jint>(GetLastError());
}
