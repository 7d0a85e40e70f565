#include "bridge/java/java_bean.h"

#include <string>

#include "bridge/java/jni_string.h"

namespace corvane {

namespace {

constexpr const char* kGetsText = "()Ljava/lang/String;";
constexpr const char* kSetsText = "(Ljava/lang/String;)V";

std::string methodName(const char* verb, const char* property) {
  return std::string(verb) + property;
}

/// A new object, or none when its class has no constructor without arguments.
LocalReference<jobject> newObject(JNIEnv* env, const JavaClass& type) {
  if (!isFound(env, type)) {
    return {env, nullptr};
  }
  const JavaConstructor<> construct(env, type.get(), "()V");
  if (!isFound(env, construct)) {
    return {env, nullptr};
  }
  LocalReference<jobject> object = construct();
  throwIfJavaExceptionPending(env);
  return object;
}

}  // namespace

BeanReader::BeanReader(JNIEnv* env, const char* className, jobject bean)
    : env_(env), class_(env, className), bean_(bean) {
  isFound(env, class_);
}

template <class Result, class Take>
void BeanReader::read(const char* property, const char* signature, const Take& take) const {
  const auto getter = find<Result()>(methodName("get", property).c_str(), signature);
  if (getter) {
    take(getter(bean_));
  }
}

void BeanReader::get(const char* property, DWORD& value) const {
  read<jint>(property, "()I", [&](jint number) { value = static_cast<DWORD>(number); });
}

void BeanReader::get(const char* property, bool& value) const {
  read<jboolean>(property, "()Z", [&](jboolean state) { value = fromJavaBoolean(state); });
}

void BeanReader::get(const char* property, OptionalText& value) const {
  read<jstring>(property, kGetsText, [&](jstring string) {
    const LocalReference text(env_, string);
    value = OptionalText(JniString(env_, text.get()).get());
  });
}

void BeanReader::get(const char* property, OptionalTexts& value) const {
  read<jobjectArray>(property, "()[Ljava/lang/String;", [&](jobjectArray strings) {
    const LocalReference array(env_, strings);
    value = optionalTextsFromJava(env_, array.get());
  });
}

void BeanReader::get(const char* property, SecretText& value) const {
  read<jstring>(property, kGetsText, [&](jstring string) {
    const LocalReference text(env_, string);
    value = secretFromJava(env_, text.get());
  });
}

BeanWriter::BeanWriter(JNIEnv* env, const char* className)
    : env_(env), class_(env, className), bean_(newObject(env, class_)) {}

template <class Value>
void BeanWriter::write(const char* property, const char* signature, Value value) const {
  const auto setter = find<Value>(methodName("set", property).c_str(), signature);
  if (setter) {
    setter(bean_.get(), value);
  }
}

void BeanWriter::set(const char* property, DWORD value) const {
  write(property, "(I)V", static_cast<jint>(value));
}

void BeanWriter::set(const char* property, bool value) const {
  write(property, "(Z)V", toJavaBoolean(value));
}

void BeanWriter::set(const char* property, const OptionalText& value) const {
  const LocalReference text(env_, newOptionalJavaString(env_, value.get()));
  write(property, kSetsText, text.get());
}

void BeanWriter::set(const char* property, const OptionalTexts& value) const {
  const LocalReference texts(env_, newOptionalJavaStringArray(env_, value));
  write(property, "([Ljava/lang/String;)V", texts.get());
}

void BeanWriter::set(const char* property, const SecretText& /*value*/) const {
  write(property, kSetsText, jstring{nullptr});
}

}  // namespace corvane
