#include "java_text.h"

namespace bed {

std::wstring wide(JNIEnv* env, jstring text) {
  std::wstring copy(static_cast<size_t>(env->GetStringLength(text)), L'\0');
  env->GetStringRegion(text,
                       0,
                       static_cast<jsize>(copy.size()),
                       reinterpret_cast<jchar*>(copy.data()));
  return copy;
}

std::string narrow(JNIEnv* env, jstring text) {
  std::string copy;
  for (const wchar_t unit : wide(env, text)) {
    copy += static_cast<char>(unit);
  }
  return copy;
}

std::vector<uint8_t> bytes(JNIEnv* env, jbyteArray array) {
  std::vector<uint8_t> copy(static_cast<size_t>(env->GetArrayLength(array)));
  env->GetByteArrayRegion(array,
                          0,
                          static_cast<jsize>(copy.size()),
                          reinterpret_cast<jbyte*>(copy.data()));
  return copy;
}

jstring javaText(JNIEnv* env, const std::wstring& text) {
  return env->NewString(reinterpret_cast<const jchar*>(text.data()),
                        static_cast<jsize>(text.size()));
}

jbyteArray javaBytes(JNIEnv* env, const std::vector<uint8_t>& data) {
  jbyteArray const array = env->NewByteArray(static_cast<jsize>(data.size()));
  env->SetByteArrayRegion(array,
                          0,
                          static_cast<jsize>(data.size()),
                          reinterpret_cast<const jbyte*>(data.data()));
  return array;
}

jobjectArray javaTexts(JNIEnv* env, const std::vector<std::wstring>& texts) {
  jobjectArray const array = env->NewObjectArray(static_cast<jsize>(texts.size()),
                                                 env->FindClass("java/lang/String"),
                                                 nullptr);
  jsize index = 0;
  for (const std::wstring& text : texts) {
    jstring const element = javaText(env, text);
    env->SetObjectArrayElement(array, index++, element);
    env->DeleteLocalRef(element);
  }
  return array;
}

jobjectArray javaTexts(JNIEnv* env, const std::vector<std::string>& texts) {
  std::vector<std::wstring> wide;
  wide.reserve(texts.size());
  for (const std::string& text : texts) {
    wide.emplace_back(text.begin(), text.end());
  }
  return javaTexts(env, wide);
}

}  // namespace bed
