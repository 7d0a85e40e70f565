#include <com_corvane_testing_Hooks.h>

#include <stdexcept>

#include "accounts.h"
#include "fakes.h"
#include "heap_guard.h"
#include "import_hooks.h"
#include "java_text.h"
#include "jni_functions.h"
#include "jni_hooks.h"
#include "monitor.h"
#include "native_hooks.h"
#include "win32_functions.h"

// The natives of com.corvane.testing.Hooks; what each does is said there.

using bed::accounts;
using bed::monitor;
using bed::narrow;

namespace {

bed::Kind kindOf(jboolean jni) {
  return jni != JNI_FALSE ? bed::Kind::kJni : bed::Kind::kWin32;
}

const bed::RecordedCall& recorded(jint index) {
  return monitor().calls().at(static_cast<size_t>(index));
}

bed::Answer toAnswer(JNIEnv* env, jlong result, jint error, jintArray places, jobjectArray data) {
  bed::Answer answer{static_cast<uint64_t>(result), static_cast<uint32_t>(error), {}, false};
  for (jsize index = 0; index < env->GetArrayLength(places); ++index) {
    jint argument = 0;
    env->GetIntArrayRegion(places, index, 1, &argument);
    auto* const bytes = static_cast<jbyteArray>(env->GetObjectArrayElement(data, index));
    answer.writes.emplace_back(argument, bed::bytes(env, bytes));
  }
  return answer;
}

}  // namespace

JNIEXPORT void JNICALL Java_com_corvane_testing_Hooks_hookJni(JNIEnv* env, jclass) {
  bed::orThrow(env, [&] {
    JavaVM* vm = nullptr;
    env->GetJavaVM(&vm);
    bed::hookJni(vm);
  });
}

JNIEXPORT jobjectArray JNICALL Java_com_corvane_testing_Hooks_hookImports(JNIEnv* env,
                                                                          jclass,
                                                                          jstring module) {
  return bed::orThrow(env, [&] {
    HMODULE const loaded = GetModuleHandleW(bed::wide(env, module).c_str());
    if (loaded == nullptr) {
      throw std::runtime_error("not loaded: " + narrow(env, module));
    }
    return bed::javaTexts(env, bed::hookImports(loaded));
  });
}

JNIEXPORT void JNICALL Java_com_corvane_testing_Hooks_reset(JNIEnv*, jclass) {
  monitor().reset();
  accounts().clear();
  bed::HeapGuard::clear();
  bed::clearFakedContents();
}

JNIEXPORT void JNICALL Java_com_corvane_testing_Hooks_arm(JNIEnv*, jclass) {
  monitor().arm();
}

JNIEXPORT void JNICALL Java_com_corvane_testing_Hooks_disarm(JNIEnv*, jclass) {
  monitor().disarm();
}

JNIEXPORT void JNICALL Java_com_corvane_testing_Hooks_version(JNIEnv*,
                                                              jclass,
                                                              jint platform,
                                                              jint major,
                                                              jint minor,
                                                              jboolean knowsLongRecord,
                                                              jboolean tells) {
  bed::fakeVersion({static_cast<uint32_t>(platform),
                    static_cast<uint32_t>(major),
                    static_cast<uint32_t>(minor),
                    knowsLongRecord != JNI_FALSE,
                    tells != JNI_FALSE});
}

JNIEXPORT void JNICALL Java_com_corvane_testing_Hooks_failNth(JNIEnv*,
                                                              jclass,
                                                              jboolean jni,
                                                              jint nth,
                                                              jboolean andAllLater) {
  monitor().fail({kindOf(jni), {}, static_cast<uint32_t>(nth), 0, andAllLater != JNI_FALSE});
}

JNIEXPORT void JNICALL Java_com_corvane_testing_Hooks_fail(JNIEnv* env,
                                                           jclass,
                                                           jboolean jni,
                                                           jstring function,
                                                           jint nth,
                                                           jint error) {
  monitor().fail({kindOf(jni),
                  narrow(env, function),
                  static_cast<uint32_t>(nth),
                  static_cast<uint32_t>(error)});
}

JNIEXPORT void JNICALL Java_com_corvane_testing_Hooks_answer(JNIEnv* env,
                                                             jclass,
                                                             jstring function,
                                                             jlong result,
                                                             jint error,
                                                             jintArray places,
                                                             jobjectArray data) {
  monitor().answer(narrow(env, function), toAnswer(env, result, error, places, data));
}

JNIEXPORT void JNICALL Java_com_corvane_testing_Hooks_answerAlways(JNIEnv* env,
                                                                   jclass,
                                                                   jstring function,
                                                                   jlong result) {
  monitor().answer(narrow(env, function), {static_cast<uint64_t>(result), 0, {}, true});
}

JNIEXPORT void JNICALL Java_com_corvane_testing_Hooks_failAlways(JNIEnv* env,
                                                                 jclass,
                                                                 jstring function,
                                                                 jint error) {
  monitor().fail({bed::Kind::kWin32, narrow(env, function), 1, static_cast<uint32_t>(error), true});
}

JNIEXPORT void JNICALL Java_com_corvane_testing_Hooks_answerValue(JNIEnv* env,
                                                                  jclass,
                                                                  jint type,
                                                                  jbyteArray data) {
  bed::fakeValue({static_cast<uint32_t>(type), bed::bytes(env, data)});
}

JNIEXPORT void JNICALL Java_com_corvane_testing_Hooks_answerModule(JNIEnv* env,
                                                                   jclass,
                                                                   jstring name,
                                                                   jstring file) {
  bed::fakeModule(narrow(env, name), narrow(env, file));
}

JNIEXPORT void JNICALL Java_com_corvane_testing_Hooks_hide(JNIEnv* env, jclass, jstring function) {
  bed::hideFunction(narrow(env, function));
}

JNIEXPORT void JNICALL Java_com_corvane_testing_Hooks_capture(JNIEnv* env,
                                                              jclass,
                                                              jstring function,
                                                              jint argument,
                                                              jint size) {
  monitor().capture(narrow(env, function), argument, static_cast<uint32_t>(size));
}

JNIEXPORT jint JNICALL Java_com_corvane_testing_Hooks_kind(JNIEnv* env, jclass, jstring function) {
  const std::string name = narrow(env, function);
  if (bed::findJniFunction(name) != nullptr) {
    return 2;
  }
  return bed::findWin32Function(name) != nullptr ? 1 : 0;
}

JNIEXPORT jobjectArray JNICALL Java_com_corvane_testing_Hooks_shownCalls(JNIEnv* env, jclass) {
  std::vector<std::wstring> texts;
  for (const bed::RecordedCall& call : monitor().calls()) {
    texts.push_back(call.shown);
  }
  return bed::javaTexts(env, texts);
}

JNIEXPORT jobjectArray JNICALL Java_com_corvane_testing_Hooks_unused(JNIEnv* env, jclass) {
  std::vector<std::string> texts = monitor().unused();
  for (const std::string& name : bed::hiddenInVain()) {
    texts.push_back("hidden " + name + ", which was not looked up");
  }
  if (const size_t values = bed::valuesInVain(); values != 0) {
    texts.push_back(std::to_string(values) + " registry values");
  }
  return bed::javaTexts(env, texts);
}

JNIEXPORT jstring JNICALL Java_com_corvane_testing_Hooks_returned(JNIEnv* env, jclass) {
  return bed::javaText(env, bed::returnedBesideException());
}

JNIEXPORT jint JNICALL Java_com_corvane_testing_Hooks_failable(JNIEnv*, jclass, jboolean jni) {
  return static_cast<jint>(monitor().failable(kindOf(jni)));
}

JNIEXPORT jint JNICALL Java_com_corvane_testing_Hooks_failed(JNIEnv*, jclass) {
  return monitor().failed();
}

JNIEXPORT jobjectArray JNICALL Java_com_corvane_testing_Hooks_callNames(JNIEnv* env, jclass) {
  std::vector<std::string> names;
  for (const bed::RecordedCall& call : monitor().calls()) {
    names.push_back(call.name);
  }
  return bed::javaTexts(env, names);
}

JNIEXPORT jlongArray JNICALL Java_com_corvane_testing_Hooks_callWords(JNIEnv* env,
                                                                      jclass,
                                                                      jint index) {
  const auto& words = recorded(index).words;
  const auto count = static_cast<jsize>(words.size());
  jlongArray const array = env->NewLongArray(count);
  env->SetLongArrayRegion(array, 0, count, reinterpret_cast<const jlong*>(words.data()));
  return array;
}

JNIEXPORT jbyteArray JNICALL Java_com_corvane_testing_Hooks_captured(JNIEnv* env,
                                                                     jclass,
                                                                     jint index,
                                                                     jint argument) {
  const auto& captured = recorded(index).captured;
  const auto found = captured.find(argument);
  return found == captured.end() ? nullptr : bed::javaBytes(env, found->second);
}

JNIEXPORT jobjectArray JNICALL Java_com_corvane_testing_Hooks_unbalanced(JNIEnv* env, jclass) {
  return bed::javaTexts(env, accounts().unbalanced());
}

JNIEXPORT jobjectArray JNICALL Java_com_corvane_testing_Hooks_violations(JNIEnv* env, jclass) {
  return bed::javaTexts(env, monitor().violations());
}

JNIEXPORT jint JNICALL Java_com_corvane_testing_Hooks_leftOpen(JNIEnv*, jclass) {
  return static_cast<jint>(accounts().leftOpen());
}

JNIEXPORT jint JNICALL Java_com_corvane_testing_Hooks_peakLocalReferences(JNIEnv*, jclass) {
  return static_cast<jint>(accounts().peak(bed::Account::kLocalReference));
}

JNIEXPORT jint JNICALL Java_com_corvane_testing_Hooks_peakSearches(JNIEnv*, jclass) {
  return static_cast<jint>(accounts().peak(bed::Account::kSearch));
}
