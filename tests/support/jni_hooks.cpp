#include "jni_hooks.h"

#include <jvmti.h>

#include <cstdio>
#include <cstdlib>

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
  if (type == HookedFunction::kText && result != 0) {
    return textOf(env, reinterpret_cast<jstring>(result));
  }
  const int64_t value = type == 'V'   ? 0
                        : type == 'Z' ? static_cast<jboolean>(result)
                        : type == 'I' ? static_cast<jint>(result)
                                      : static_cast<jlong>(result);
  const bool isObject = type == 'L' || type == '[';
  return value == 0 ? L"" : isObject ? L"an object" : std::to_wstring(value);
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

void JNICALL
onBind(jvmtiEnv* jvmti, JNIEnv*, jthread, jmethodID method, void* address, void** newAddress) {
  if (isOfLibrary(address)) {
    char* name = nullptr;
    char* signature = nullptr;
    jvmti->GetMethodName(method, &name, &signature, nullptr);
    HookedFunction native = {taken(jvmti, name), address, beforeNative, afterNative};
    const std::string types = taken(jvmti, signature);
    native.type =
        types.ends_with(")Ljava/lang/String;") ? HookedFunction::kText : types[types.find(')') + 1];
    *newAddress = const_cast<void*>(makeStub(native));
  }
}

void require(int error) {
  if (error != JNI_OK) {
    std::fputs("the JVM does not let its calls be watched", stderr);
    std::abort();
  }
}

/// Gives the JVM a table that leads its functions past the monitor.
void hookTable(jvmtiEnv* jvmti) {
  JNINativeInterface_* table = nullptr;
  require(jvmti->GetJNIFunctionTable(&jni));
  require(jvmti->GetJNIFunctionTable(&table));
  auto** const slots = reinterpret_cast<const void**>(table);
  for (size_t slot = 0; slot < sizeof *table / sizeof *slots; ++slot) {
    if (slots[slot] != nullptr) {
      const std::string name = "JNI function " + std::to_string(slot);
      slots[slot] = stubFor(name, {.failure = Failure::kUnlisted}, slots[slot]);
    }
  }
  auto** const originals = reinterpret_cast<const void**>(jni);
  for (const Function& function : allFunctions()) {
    if (function.isOfJni()) {
      const std::string name(function.name);
      slots[function.slot] = stubFor(name, function, originals[function.slot]);
    }
  }
  require(jvmti->SetJNIFunctionTable(table));
}

/// Has the JVM tell of natives before their first call.
void hookNatives(jvmtiEnv* jvmti) {
  jvmtiCapabilities capabilities{};
  capabilities.can_generate_native_method_bind_events = 1;
  jvmtiEventCallbacks callbacks{};
  callbacks.NativeMethodBind = onBind;
  require(jvmti->AddCapabilities(&capabilities));
  require(jvmti->SetEventCallbacks(&callbacks, sizeof callbacks));
  require(jvmti->SetEventNotificationMode(JVMTI_ENABLE, JVMTI_EVENT_NATIVE_METHOD_BIND, nullptr));
}

}  // namespace

void hookJni(JNIEnv* env) {
  JavaVM* vm = nullptr;
  jvmtiEnv* jvmti = nullptr;
  require(env->GetJavaVM(&vm));
  require(vm->GetEnv(reinterpret_cast<void**>(&jvmti), JVMTI_VERSION_1_2));
  hookTable(jvmti);
  hookNatives(jvmti);
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
    jclass const type = jni->FindClass(env, "java/lang/RuntimeException");
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
