#include <com_corvane_testing_Hooks.h>

#include <deque>
#include <stdexcept>

#include "accounts.h"
#include "fakes.h"
#include "heap_guard.h"
#include "hooks.h"
#include "jni_hooks.h"
#include "monitor.h"

// The natives of com.corvane.testing.Hooks; what each does is said there.

using namespace bed;

#define HOOK(result, name) JNIEXPORT result JNICALL Java_com_corvane_testing_Hooks_##name

namespace {

/// Names of functions and files: plain ASCII.
std::string text(JNIEnv* env, jstring java) {
  std::u16string units(static_cast<size_t>(env->GetStringLength(java)), u'\0');
  env->GetStringRegion(java,
                       0,
                       static_cast<jsize>(units.size()),
                       reinterpret_cast<jchar*>(units.data()));
  std::string copy;
  for (const char16_t unit : units) {
    copy += static_cast<char>(unit);
  }
  return copy;
}

std::string data(JNIEnv* env, jbyteArray java) {
  std::string bytes(static_cast<size_t>(env->GetArrayLength(java)), '\0');
  env->GetByteArrayRegion(java,
                          0,
                          static_cast<jsize>(bytes.size()),
                          reinterpret_cast<jbyte*>(bytes.data()));
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

/// Runs `work`; what it throws becomes a Java IllegalStateException.
template <class Work>
auto orThrow(JNIEnv* env, const Work& work) -> decltype(work()) {
  try {
    return work();
  } catch (const std::exception& failure) {
    env->ThrowNew(env->FindClass("java/lang/IllegalStateException"), failure.what());
    return decltype(work())();
  }
}

}  // namespace

HOOK(void, hookJni)(JNIEnv* env, jclass) {
  orThrow(env, [&] { hookJni(env); });
}

HOOK(jobjectArray, hookImports)(JNIEnv* env, jclass, jstring dll) {
  return orThrow(env, [&] {
    HMODULE const module = GetModuleHandleA(text(env, dll).c_str());
    if (module == nullptr) {
      throw std::runtime_error("not loaded: " + text(env, dll));
    }
    return toJava(env, hookImports(module));
  });
}

HOOK(void, reset)(JNIEnv*, jclass) {
  monitor().reset();
  accounts().clear();
  HeapGuard::clear();
  clearFakes();
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
  fakeVersion({number(platform), number(major), number(minor), longRecord != 0, tells != 0});
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

HOOK(void, answerValue)(JNIEnv* env, jclass, jint type, jbyteArray content) {
  fakeValue(static_cast<uint32_t>(type), data(env, content));
}

HOOK(jlong, keep)(JNIEnv* env, jclass, jbyteArray content) {
  static std::deque<decltype(data(env, content))> kept;
  return reinterpret_cast<jlong>(kept.emplace_back(data(env, content)).data());
}

HOOK(void, answerModule)(JNIEnv* env, jclass, jstring name, jstring file) {
  fakeModule(text(env, name), text(env, file));
}

HOOK(jint, kind)(JNIEnv* env, jclass, jstring function) {
  const Function* const found = findFunction(text(env, function));
  return found == nullptr ? 0 : found->isOfJni() ? 2 : 1;
}

HOOK(jobjectArray, shownCalls)(JNIEnv* env, jclass) {
  std::vector<std::wstring> texts;
  for (const RecordedCall& call : monitor().calls) {
    texts.push_back(call.shown);
  }
  return toJava(env, texts);
}

HOOK(jobjectArray, unused)(JNIEnv* env, jclass) {
  std::vector<std::string> texts = monitor().unused();
  if (const size_t values = valuesInVain(); values != 0) {
    texts.push_back(std::to_string(values) + " registry values");
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

HOOK(jobjectArray, unbalanced)(JNIEnv* env, jclass) {
  return toJava(env, accounts().unbalanced());
}

HOOK(jobjectArray, violations)(JNIEnv* env, jclass) {
  return toJava(env, monitor().violations);
}

HOOK(jint, leftOpen)(JNIEnv*, jclass) {
  return static_cast<jint>(accounts().leftOpen());
}

HOOK(jint, peakLocalReferences)(JNIEnv*, jclass) {
  return static_cast<jint>(accounts().peak(Account::kLocalReference));
}

HOOK(jint, peakSearches)(JNIEnv*, jclass) {
  return static_cast<jint>(accounts().peak(Account::kSearch));
}
