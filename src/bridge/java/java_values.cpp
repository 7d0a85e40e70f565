#include "bridge/java/java_values.h"

#include <windows.h>

#include <climits>

#include "bridge/java/java_array.h"
#include "bridge/java/jni_string.h"
#include "bridge/win32/win32_failure.h"

namespace corvane {

namespace {

void requireArray(jarray array) {
  if (array == nullptr) {
    throw Win32Failure(ERROR_INVALID_PARAMETER);
  }
}

}  // namespace

jsize javaLength(size_t length) {
  if (length > INT_MAX) {
    throw Win32Failure(ERROR_ARITHMETIC_OVERFLOW);
  }
  return static_cast<jsize>(length);
}

void throwIfJavaExceptionPending(JNIEnv* env) {
  if (env->ExceptionCheck() != JNI_FALSE) {
    throw PendingJavaException();
  }
}

jstring newJavaString(JNIEnv* env, const WString& text) {
  const auto* units = reinterpret_cast<const jchar*>(text.c_str());
  return made(env, env->NewString(units, javaLength(text.size()))).release();
}

jobjectArray newJavaStringArray(JNIEnv* env,
                                const std::vector<WString>& texts,
                                const wchar_t* initial) {
  const auto type = made(env, env->FindClass("java/lang/String"));
  const LocalReference first(env, initial == nullptr ? nullptr : newJavaString(env, initial));
  return newJavaArray(env, type.get(), texts, first.get(), [env](const WString& text) {
    return newJavaString(env, text);
  });
}

jstring newOptionalJavaString(JNIEnv* env, const wchar_t* text) {
  return text == nullptr ? nullptr : newJavaString(env, text);
}

jobjectArray newOptionalJavaStringArray(JNIEnv* env, const OptionalTexts& texts) {
  if (!texts) {
    return nullptr;
  }
  const auto type = made(env, env->FindClass("java/lang/String"));
  return newJavaArray(env, type.get(), *texts, nullptr, [env](const OptionalText& text) {
    return newOptionalJavaString(env, text.get());
  });
}

jbyteArray newJavaByteArray(JNIEnv* env, const ByteBuffer& bytes) {
  const jsize length = javaLength(bytes.byteLength());
  LocalReference array(env, env->NewByteArray(length));
  if (!array) {
    throw Win32Failure(static_cast<uint32_t>(E_OUTOFMEMORY));
  }
  env->SetByteArrayRegion(array.get(), 0, length, bytes.data<jbyte>());
  throwIfJavaExceptionPending(env);
  return array.release();
}

WString textFromJava(JNIEnv* env, jstring string) {
  return textOrEmpty(JniString(env, string).get());
}

SecretText secretFromJava(JNIEnv* env, jstring string) {
  if (string == nullptr) {
    return {};
  }
  const jsize length = env->GetStringLength(string);
  SecretText secret(static_cast<size_t>(length));
  env->GetStringRegion(string, 0, length, reinterpret_cast<jchar*>(secret.get()));
  throwIfJavaExceptionPending(env);
  return secret;
}

OptionalTexts optionalTextsFromJava(JNIEnv* env, jobjectArray strings) {
  if (strings == nullptr) {
    return std::nullopt;
  }
  return readJavaArray(env, strings, [env](jobject string) {
    return OptionalText(JniString(env, static_cast<jstring>(string)).get());
  });
}

std::vector<WString> textsFromJava(JNIEnv* env, jobjectArray strings) {
  requireArray(strings);
  return readJavaArray(env, strings, [env](jobject string) {
    return textFromJava(env, static_cast<jstring>(string));
  });
}

ByteBuffer bytesFromJava(JNIEnv* env, jbyteArray bytes) {
  requireArray(bytes);
  const jsize length = env->GetArrayLength(bytes);
  ByteBuffer buffer;
  buffer.allocate(static_cast<uint32_t>(length), 1);
  env->GetByteArrayRegion(bytes, 0, length, buffer.data<jbyte>());
  throwIfJavaExceptionPending(env);
  return buffer;
}

}  // namespace corvane
