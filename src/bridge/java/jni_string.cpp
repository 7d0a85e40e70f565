#include "bridge/java/jni_string.h"

#include "bridge/java/java_values.h"
#include "bridge/win32/text.h"

namespace corvane {

namespace {

/// The characters of a Java string while they are pinned. They are released in every case, also
/// when the JVM gave none.
class PinnedCharacters {
 public:
  PinnedCharacters(JNIEnv* env, jstring string)
      : env_(env), string_(string), characters_(env->GetStringChars(string, nullptr)) {}
  PinnedCharacters(const PinnedCharacters&) = delete;
  PinnedCharacters& operator=(const PinnedCharacters&) = delete;
  ~PinnedCharacters() { env_->ReleaseStringChars(string_, characters_); }

  const wchar_t* get() const noexcept { return reinterpret_cast<const wchar_t*>(characters_); }

 private:
  JNIEnv* env_;
  jstring string_;
  const jchar* characters_;
};

}  // namespace

JniString::JniString(JNIEnv* env, jstring string) {
  if (string == nullptr) {
    return;
  }
  const PinnedCharacters pinned(env, string);
  if (pinned.get() == nullptr) {
    throwIfJavaExceptionPending(env);
    return;
  }
  const auto length = static_cast<size_t>(env->GetStringLength(string));
  text_ = OptionalText(pinned.get(), length);
}

JniAnsiString::JniAnsiString(JNIEnv* env, jstring string) {
  wideToAnsi(JniString(env, string).get(), text_);
}

}  // namespace corvane
