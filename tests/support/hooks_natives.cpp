#include <jni.h>
#include <windows.h>

#include <deque>

#include "accounts.h"
#include "heap_guard.h"
#include "jni_hooks.h"
#include "monitor.h"

// The natives of com.corvane.testing.Hooks; what each does is said there.

using namespace bed;

#define HOOK(result, name) extern "C" JNIEXPORT result JNICALL Java_com_corvane_testing_Hooks_##name

namespace {

/// Names of functions and files: plain ASCII.
std::string text(JNIEnv* env, jstring java) {
  std::string ascii(static_cast<size_t>(env->GetStringLength(java)), '\0');
  env->GetStringUTFRegion(java, 0, env->GetStringLength(java), ascii.data());
  return ascii;
}

std::string data(JNIEnv* env, jbyteArray java) {
  std::string bytes(static_cast<size_t>(env->GetArrayLength(java)), '\0');
  auto* const begin = reinterpret_cast<jbyte*>(bytes.data());
  env->GetByteArrayRegion(java, 0, static_cast<jsize>(bytes.size()), begin);
  return bytes;
}

jstring toJava(JNIEnv* env, const std::wstring& text) {
  return env->NewString(reinterpret_cast<const jchar*>(text.data()),
                        static_cast<jsize>(text.size()));
}

/// `texts`: wide ones, or plain ASCII.
template <class Texts>
jobjectArray toJava(JNIEnv* env, const Texts& texts) {
  jobjectArray const array = env->NewObjectArray(static_cast<jsize>(texts.size()),
                                                 env->FindClass("java/lang/String"),
                                                 nullptr);
  for (jsize index = 0; const auto& text : texts) {
    jstring const element = toJava(env, std::wstring(text.begin(), text.end()));
    env->SetObjectArrayElement(array, index++, element);
    env->DeleteLocalRef(element);
  }
  return array;
}

}  // namespace

HOOK(void, hookJni)(JNIEnv* env, jclass) {
  hookJni(env);
}

HOOK(jobjectArray, hookImports)(JNIEnv* env, jclass, jstring dll) {
  return toJava(env, hookImports(GetModuleHandleA(text(env, dll).c_str())));
}

HOOK(void, reset)(JNIEnv*, jclass) {
  monitor().reset();
  accounts().clear();
  HeapGuard::clear();
}

HOOK(void, arm)(JNIEnv*, jclass) {
  monitor().arm();
}

HOOK(void, disarm)(JNIEnv*, jclass) {
  monitor().disarm();
}

HOOK(void, version)
(JNIEnv*, jclass, jint platform, jint major, jint minor, jboolean longRecord, jboolean tells) {
  const auto number = [](jint value) { return static_cast<uint32_t>(value); };
  monitor().version = {number(platform), number(major), number(minor), longRecord != 0, tells != 0};
}

HOOK(void, fail)
(JNIEnv* env, jclass, jstring function, jint nth, jint error, jboolean andAllLater) {
  monitor().rules.push_back({text(env, function),
                             static_cast<uint32_t>(nth),
                             static_cast<uint32_t>(error),
                             andAllLater != JNI_FALSE});
}

HOOK(void, hide)(JNIEnv* env, jclass, jstring function) {
  monitor().rules.push_back({"GetProcAddress", 1, ERROR_PROC_NOT_FOUND, true, text(env, function)});
}

HOOK(void, answer)
(JNIEnv* env,
 jclass,
 jstring function,
 jlong result,
 jint error,
 jboolean always,
 jintArray places,
 jobjectArray contents) {
  Answer answer{static_cast<uint64_t>(result), static_cast<uint32_t>(error)};
  answer.always = always != JNI_FALSE;
  for (jsize index = 0; index < env->GetArrayLength(places); ++index) {
    jint place = 0;
    env->GetIntArrayRegion(places, index, 1, &place);
    auto* const bytes = static_cast<jbyteArray>(env->GetObjectArrayElement(contents, index));
    answer.writes.emplace_back(place, data(env, bytes));
  }
  monitor().answers[text(env, function)].push_back(answer);
}

HOOK(void, answerValue)
(JNIEnv* env, jclass, jstring function, jint type, jbyteArray content) {
  Answer answer{static_cast<uint64_t>(type)};
  answer.value = data(env, content);
  monitor().answers[text(env, function)].push_back(answer);
}

HOOK(jlong, keep)(JNIEnv* env, jclass, jbyteArray content) {
  static std::deque<decltype(data(env, content))> kept;
  return reinterpret_cast<jlong>(kept.emplace_back(data(env, content)).data());
}

HOOK(void, answerModule)(JNIEnv* env, jclass, jstring name, jstring file) {
  monitor().modules[text(env, name)] = text(env, file);
}

HOOK(jboolean, knows)(JNIEnv* env, jclass, jstring function) {
  return findFunction(text(env, function)) != nullptr ? JNI_TRUE : JNI_FALSE;
}

HOOK(jobjectArray, shownCalls)(JNIEnv* env, jclass) {
  return toJava(env, monitor().calls);
}

HOOK(jobjectArray, unused)(JNIEnv* env, jclass) {
  return toJava(env, monitor().unused());
}

HOOK(jobjectArray, complaints)(JNIEnv* env, jclass) {
  std::vector<std::string> texts = monitor().violations;
  for (const std::string& open : accounts().unbalanced()) {
    texts.push_back("still open: " + open);
  }
  return toJava(env, texts);
}

HOOK(jstring, returned)(JNIEnv* env, jclass) {
  return toJava(env, returnedBesideException());
}

HOOK(jint, failable)(JNIEnv*, jclass, jboolean jni) {
  return static_cast<jint>(monitor().failable[jni != JNI_FALSE ? 1 : 0]);
}

HOOK(jint, failed)(JNIEnv*, jclass) {
  return monitor().failed;
}

HOOK(jint, leftOpen)(JNIEnv*, jclass) {
  return static_cast<jint>(accounts().leftOpen());
}

HOOK(jint, peak)(JNIEnv* env, jclass, jstring account) {
  return static_cast<jint>(accounts().peak(text(env, account)));
}
