#include "jni_hooks.h"

#include <jvmti.h>

#include <array>
#include <stdexcept>
#include <string>

#include "accounts.h"
#include "import_hooks.h"
#include "jni_functions.h"
#include "monitor.h"
#include "native_hooks.h"

namespace bed {
namespace {

struct HookedEntry : HookedFunction {
  const JniFunction* facts = nullptr;
};

std::array<HookedEntry, kJniEntries> entries;
JNINativeInterface_* originals = nullptr;

JNIEnv* environment(const Call& call) {
  return reinterpret_cast<JNIEnv*>(call.words[0]);
}

const JniFunction* factsOf(const Call& call) {
  return static_cast<HookedEntry*>(call.function)->facts;
}

bool isPending(const Call& call) {
  return originals->ExceptionCheck(environment(call)) != JNI_FALSE;
}

void checkPending(const Call& call) {
  const JniFunction& facts = *factsOf(call);
  if (!facts.allowedWhilePending && isPending(call)) {
    monitor().violation(std::string(facts.name) + " is called while a Java exception is pending");
  }
}

/// Fails as the JVM does, with an error pending; one that is pending already stays.
void failWith(const Call& call) {
  if (isPending(call)) {
    return;
  }
  JNIEnv* const env = environment(call);
  jclass const type = originals->FindClass(env, factsOf(call)->error);
  originals->ThrowNew(env, type, call.function->name.c_str());
  originals->DeleteLocalRef(env, type);
}

/// Characters are released once for each time that they were asked for, also when the JVM gave
/// none. The JVM itself must not see that null.
bool isNullRelease(const Call& call) {
  return factsOf(call)->name == "ReleaseStringChars" && call.words[2] == 0;
}

void bookBefore(const Call& call) {
  const JniFunction& facts = *factsOf(call);
  if (facts.name == "ReleaseStringChars") {
    const bool none = call.words[2] == 0;
    accounts().close(none ? Account::kUnobtainedString : Account::kPinnedString,
                     call.words[none ? 1 : 2],
                     call.function->name);
  } else if (facts.effect.move == Effect::Move::kCloses && call.words[facts.effect.argument] != 0) {
    accounts().close(facts.effect.account, call.words[facts.effect.argument], call.function->name);
  }
}

/// Whether the library calls. Where the compiler made a jump of a native's last call, that returns
/// to the native's stub.
bool concerns(const Call& call) {
  return monitor().watchesThisThread() &&
         (isInHookedModule(call.caller) || isReturnToStub(call.caller));
}

const void* beforeEntry(Call& call) {
  const LastErrorScope lastError;
  if (!concerns(call)) {
    return call.function->original;
  }
  const JniFunction* facts = factsOf(call);
  if (facts == nullptr) {
    monitor().violation("the table of JNI functions lacks " + call.function->name);
    return call.function->original;
  }
  checkPending(call);
  const FailRule* rule = monitor().begin(Kind::kJni, call, facts->error != nullptr);
  bookBefore(call);
  if (rule != nullptr) {
    failWith(call);
    return nullptr;
  }
  return isNullRelease(call) ? nullptr : call.function->original;
}

void bookAfter(const Call& call) {
  const JniFunction& facts = *factsOf(call);
  if (facts.name == "GetStringChars") {
    const bool none = call.result == 0;
    accounts().open(none ? Account::kUnobtainedString : Account::kPinnedString,
                    none ? call.words[1] : call.result,
                    call.function->name);
  } else if (facts.effect.move == Effect::Move::kOpensResult && call.result != 0) {
    accounts().open(facts.effect.account, call.result, call.function->name);
  }
}

void afterEntry(Call& call) {
  const LastErrorScope lastError;
  if (!concerns(call) || factsOf(call) == nullptr) {
    return;
  }
  bookAfter(call);
}

void require(bool condition, const char* what) {
  if (!condition) {
    throw std::runtime_error(what);
  }
}

HookedEntry& hookEntry(size_t index, const void* original) {
  HookedEntry& entry = entries[index];
  entry.facts = findJniFunction(index);
  entry.name = entry.facts != nullptr ? std::string(entry.facts->name)
                                      : "JNI function " + std::to_string(index);
  entry.signature = entry.facts != nullptr ? entry.facts->signature : "";
  entry.original = original;
  entry.before = beforeEntry;
  entry.after = afterEntry;
  return entry;
}

}  // namespace

void hookJni(JavaVM* vm) {
  void* environment = nullptr;
  require(vm->GetEnv(&environment, JVMTI_VERSION_1_2) == JNI_OK, "the JVM offers no JVMTI");
  auto* const jvmti = static_cast<jvmtiEnv*>(environment);
  JNINativeInterface_* table = nullptr;
  require(jvmti->GetJNIFunctionTable(&originals) == JVMTI_ERROR_NONE &&
              jvmti->GetJNIFunctionTable(&table) == JVMTI_ERROR_NONE,
          "the JVM does not show its table of JNI functions");
  auto** const slots = reinterpret_cast<const void**>(table);
  for (size_t index = 0; index < kJniEntries; ++index) {
    if (slots[index] != nullptr) {
      slots[index] = makeStub(hookEntry(index, slots[index]));
    }
  }
  require(jvmti->SetJNIFunctionTable(table) == JVMTI_ERROR_NONE,
          "the JVM does not take a table of JNI functions");
  hookNatives(jvmti, originals);
  Accounts::nameNativesBy(runningNative);
}

}  // namespace bed
