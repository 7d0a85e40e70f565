#include "bridge/java/java_object.h"

#include <string>

#include "bridge/java/java_class.h"
#include "bridge/win32/ansi_or_wide.h"
#include "bridge/win32/format_wide.h"

namespace corvane {

namespace {

/// The lines that internal errors name. They are what reports are read by, and stay what they are
/// wherever the code moves.
enum Line {
  kNoObject = 16,
  kNoClass = 21,
  kNoClassReference = 25,
  kObjectMethod = 72,
  kStringMethod = 85,
  kVoidMethodInt = 112,
  kVoidMethod = 154,
  kVoidMethodString = 168,
};

[[noreturn]] void fail(Line line) {
  throw JavaException(formatWide(L"Internal error at line %d of file '%s'", line, L"JavaObject"));
}

/// The class of what `object` has pinned, unless it has pinned nothing.
LocalReference<jclass> classOf(JNIEnv* env, const GlobalReference<jobject>& object) {
  if (!object) {
    fail(kNoObject);
  }
  LocalReference type(env, env->GetObjectClass(object.get()));
  if (!type) {
    fail(kNoClass);
  }
  return type;
}

template <class Function>
JavaMethod<Function> findMethod(JNIEnv* env,
                                jclass type,
                                Line line,
                                const WString& name,
                                const char* signature) {
  ByteBuffer ansiName;
  if (wideToAnsi(name.c_str(), ansiName) == 0) {
    fail(line);
  }
  const JavaMethod<Function> method(env, type, ansiName.data<char>(), signature);
  if (!isFound(env, method)) {
    fail(line);
  }
  return method;
}

/// What a method threw stays pending: Java is to see it.
void throwIfThrown(JNIEnv* env) {
  // Asked first, for it makes no reference: this comes after each byte of a program's output.
  if (env->ExceptionCheck() != JNI_FALSE) {
    throw JavaException(env->ExceptionOccurred());
  }
}

}  // namespace

JavaObject::JavaObject(JNIEnv* env, jobject object)
    : env_(env), object_(env, object), class_(env, classOf(env, object_).get()) {
  if (!class_) {
    fail(kNoClassReference);
  }
}

LocalReference<jstring> JavaObject::callForText(const WString& name) const {
  const auto method =
      findMethod<jstring()>(env_, class_.get(), kStringMethod, name, "()Ljava/lang/String;");
  LocalReference text(env_, method.invoke(object_.get()));
  throwIfThrown(env_);
  return text;
}

WString JavaObject::callStringMethod(const WString& name) const {
  return textFromJava(env_, callForText(name).get());
}

SecretText JavaObject::callSecretMethod(const WString& name) const {
  const LocalReference<jstring> text = callForText(name);
  return text ? secretFromJava(env_, text.get()) : SecretText(0);
}

LocalReference<jobject> JavaObject::callObjectMethod(const WString& name,
                                                     const char* className) const {
  const std::string signature = std::string("()L") + className + ";";
  const auto method =
      findMethod<jobject()>(env_, class_.get(), kObjectMethod, name, signature.c_str());
  LocalReference object(env_, method.invoke(object_.get()));
  throwIfThrown(env_);
  return object;
}

void JavaObject::callVoidMethodInt(const WString& name, jint value) const {
  findMethod<void(jint)>(env_, class_.get(), kVoidMethodInt, name, "(I)V")
      .invoke(object_.get(), value);
  throwIfThrown(env_);
}

void JavaObject::callVoidMethodIntEach(const WString& name,
                                       std::span<const signed char> values) const {
  const auto method = findMethod<void(jint)>(env_, class_.get(), kVoidMethodInt, name, "(I)V");
  for (const signed char value : values) {
    method.invoke(object_.get(), static_cast<jint>(value));
    throwIfThrown(env_);
  }
}

void JavaObject::callVoidMethod(const WString& name) const {
  findMethod<void()>(env_, class_.get(), kVoidMethod, name, "()V").invoke(object_.get());
  throwIfThrown(env_);
}

void JavaObject::callVoidMethodString(const WString& name, const WString& text) const {
  const LocalReference argument(env_, newJavaString(env_, text));
  findMethod<void(jstring)>(env_, class_.get(), kVoidMethodString, name, "(Ljava/lang/String;)V")
      .invoke(object_.get(), argument.get());
  throwIfThrown(env_);
}

}  // namespace corvane
