#include "jni_hooks.h"

#include <jvmti.h>

#include <deque>

#include "accounts.h"
#include "monitor.h"

namespace bed {
namespace {

/// The JVM's own functions.
JNINativeInterface_* jni = nullptr;

JNIEnv* environment(const Call& call) {
  return reinterpret_cast<JNIEnv*>(call.words[0]);
}

bool isPending(const Call& call) {
  return jni->ExceptionCheck(environment(call)) != JNI_FALSE;
}

std::deque<HookedFunction> natives;
const HookedFunction* running = nullptr;
std::wstring returned;

std::wstring textOf(JNIEnv* env, jstring text) {
  std::wstring units(static_cast<size_t>(jni->GetStringLength(env, text)), L'\0');
  auto* const begin = reinterpret_cast<jchar*>(units.data());
  jni->GetStringRegion(env, text, 0, static_cast<jsize>(units.size()), begin);
  return units.empty() ? L"''" : units;
}

/// Empty for null, 0 and false.
std::wstring describe(JNIEnv* env, char type, uint64_t result) {
  const auto number = [](int64_t value) { return value == 0 ? L"" : std::to_wstring(value); };
  switch (type) {
    case 'V':
      return L"";
    case 'Z':
      return (result & 0xFF) != 0 ? L"true" : L"";
    case 'I':
      return number(static_cast<jint>(result));
    case 'J':
      return number(static_cast<jlong>(result));
    case HookedFunction::kText:
      return result == 0 ? L"" : textOf(env, reinterpret_cast<jstring>(result));
    default:
      return result == 0 ? L"" : L"an object";
  }
}

const void* beforeNative(Call& call) {
  call.note = reinterpret_cast<uint64_t>(running);
  if (monitor().watchesThisThread()) {
    running = call.function;
  }
  return call.function->original;
}

void afterNative(Call& call) {
  if (!monitor().watchesThisThread()) {
    return;
  }
  const LastErrorScope lastError;
  running = reinterpret_cast<const HookedFunction*>(call.note);
  accounts().closeAll(Account::kLocalReference);
  returned.clear();
  JNIEnv* const env = environment(call);
  if (jthrowable const exception = jni->ExceptionOccurred(env); exception != nullptr) {
    jni->ExceptionClear(env);
    returned = describe(env, call.function->type, call.result);
    jni->Throw(env, exception);
    jni->DeleteLocalRef(env, exception);
  }
}

/// A text that JVMTI allocated.
std::string taken(jvmtiEnv* jvmti, char* text) {
  std::string copy = text;
  jvmti->Deallocate(reinterpret_cast<unsigned char*>(text));
  return copy;
}

bool isOfLibrary(jvmtiEnv* jvmti, JNIEnv* env, jmethodID method) {
  jclass type = nullptr;
  char* signature = nullptr;
  jvmti->GetMethodDeclaringClass(method, &type);
  jvmti->GetClassSignature(type, &signature, nullptr);
  jni->DeleteLocalRef(env, type);
  return taken(jvmti, signature).starts_with("Lcom/corvane/wizard/");
}

void JNICALL
onBind(jvmtiEnv* jvmti, JNIEnv* env, jthread, jmethodID method, void* address, void** newAddress) {
  if (isOfLibrary(jvmti, env, method)) {
    char* name = nullptr;
    char* signature = nullptr;
    jvmti->GetMethodName(method, &name, &signature, nullptr);
    const std::string types = taken(jvmti, signature);
    natives.push_back({taken(jvmti, name), address, beforeNative, afterNative});
    natives.back().type =
        types.ends_with(")Ljava/lang/String;") ? HookedFunction::kText : types[types.find(')') + 1];
    *newAddress = const_cast<void*>(makeStub(natives.back()));
  }
}

/// Whether the JVM takes a table that leads its functions past the monitor.
bool hookTable(jvmtiEnv* jvmti) {
  JNINativeInterface_* table = nullptr;
  if (jvmti->GetJNIFunctionTable(&jni) != JVMTI_ERROR_NONE ||
      jvmti->GetJNIFunctionTable(&table) != JVMTI_ERROR_NONE) {
    return false;
  }
  auto** const slots = reinterpret_cast<const void**>(table);
  for (size_t slot = 0; slot < sizeof *table / sizeof *slots; ++slot) {
    const Function* const facts = findJniFunction(slot);
    const std::string name =
        facts == nullptr ? "JNI function " + std::to_string(slot) : std::string(facts->name);
    if (slots[slot] != nullptr) {
      const Function unlisted{.failure = Failure::kUnlisted};
      slots[slot] = stubFor(name, facts == nullptr ? unlisted : *facts, slots[slot]);
    }
  }
  return jvmti->SetJNIFunctionTable(table) == JVMTI_ERROR_NONE;
}

/// Whether the JVM tells of natives before their first call.
bool hookNatives(jvmtiEnv* jvmti) {
  jvmtiCapabilities capabilities{};
  capabilities.can_generate_native_method_bind_events = 1;
  jvmtiEventCallbacks callbacks{};
  callbacks.NativeMethodBind = onBind;
  return jvmti->AddCapabilities(&capabilities) == JVMTI_ERROR_NONE &&
         jvmti->SetEventCallbacks(&callbacks, sizeof callbacks) == JVMTI_ERROR_NONE &&
         jvmti->SetEventNotificationMode(JVMTI_ENABLE, JVMTI_EVENT_NATIVE_METHOD_BIND, nullptr) ==
             JVMTI_ERROR_NONE;
}

}  // namespace

void hookJni(JNIEnv* env) {
  JavaVM* vm = nullptr;
  env->GetJavaVM(&vm);
  jvmtiEnv* jvmti = nullptr;
  if (vm->GetEnv(reinterpret_cast<void**>(&jvmti), JVMTI_VERSION_1_2) != JNI_OK ||
      !hookTable(jvmti) || !hookNatives(jvmti)) {
    env->FatalError("the JVM does not let its calls be watched");
  }
}

void checkRulesOfJni(const Call& call) {
  const Failure failure = call.function->facts.failure;
  if (failure == Failure::kUnlisted) {
    violation("the table of JNI functions lacks " + call.function->name);
  } else if ((failure == Failure::kThrows || failure == Failure::kNeverThrows) && isPending(call)) {
    violation(call.function->name + " is called while a Java exception is pending");
  }
}

void throwInJava(const Call& call) {
  if (!isPending(call)) {
    JNIEnv* const env = environment(call);
    const bool isMethod = call.function->name.starts_with("Call");
    jclass const type =
        jni->FindClass(env, isMethod ? "java/lang/RuntimeException" : "java/lang/OutOfMemoryError");
    jni->ThrowNew(env, type, call.function->name.c_str());
    jni->DeleteLocalRef(env, type);
  }
}

bool isNullRelease(const Call& call) {
  return call.function->name == "ReleaseStringChars" && call.words[2] == 0;
}

std::string runningNative() {
  return running == nullptr ? "" : running->name;
}

const std::wstring& returnedBesideException() {
  return returned;
}

}  // namespace bed
