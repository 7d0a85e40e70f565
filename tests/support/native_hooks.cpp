#include "native_hooks.h"

#include <memory>
#include <stdexcept>
#include <vector>

#include "accounts.h"
#include "monitor.h"

namespace bed {
namespace {

struct HookedNative : HookedFunction {
  /// The letter of its result in Java's signature.
  char type = 'V';
};

const JNINativeInterface_* jni = nullptr;
const HookedNative* running = nullptr;
std::wstring returned;

/// A text that JVMTI allocated.
class JvmtiText {
 public:
  explicit JvmtiText(jvmtiEnv* jvmti) : jvmti_(jvmti) {}
  JvmtiText(const JvmtiText&) = delete;
  JvmtiText& operator=(const JvmtiText&) = delete;
  ~JvmtiText() { jvmti_->Deallocate(reinterpret_cast<unsigned char*>(text_)); }
  char** receive() { return &text_; }
  std::string get() const { return text_ == nullptr ? "" : text_; }

 private:
  jvmtiEnv* jvmti_;
  char* text_ = nullptr;
};

std::string classOf(jvmtiEnv* jvmti, JNIEnv* env, jmethodID method) {
  jclass type = nullptr;
  JvmtiText signature(jvmti);
  if (jvmti->GetMethodDeclaringClass(method, &type) == JVMTI_ERROR_NONE) {
    jvmti->GetClassSignature(type, signature.receive(), nullptr);
    jni->DeleteLocalRef(env, type);
  }
  return signature.get();
}

std::wstring textOf(JNIEnv* env, jobject object) {
  jclass const type = jni->FindClass(env, "java/lang/String");
  const bool isText = jni->IsInstanceOf(env, object, type) != JNI_FALSE;
  jni->DeleteLocalRef(env, type);
  if (!isText) {
    return L"an object";
  }
  auto* const text = static_cast<jstring>(object);
  std::vector<jchar> units(static_cast<size_t>(jni->GetStringLength(env, text)));
  jni->GetStringRegion(env, text, 0, static_cast<jsize>(units.size()), units.data());
  return units.empty() ? L"''" : std::wstring(units.begin(), units.end());
}

std::wstring describe(JNIEnv* env, char type, uint64_t result) {
  switch (type) {
    case 'V':
      return L"";
    case 'Z':
      return (result & 0xFF) != 0 ? L"true" : L"";
    case 'I':
      return static_cast<jint>(result) != 0 ? std::to_wstring(static_cast<jint>(result)) : L"";
    case 'J':
      return result != 0 ? std::to_wstring(static_cast<jlong>(result)) : L"";
    default:
      return result != 0 ? textOf(env, reinterpret_cast<jobject>(result)) : L"";
  }
}

const void* beforeNative(Call& call) {
  call.note = reinterpret_cast<uint64_t>(running);
  if (monitor().watchesThisThread()) {
    running = static_cast<HookedNative*>(call.function);
    returned.clear();
  }
  return call.function->original;
}

void afterNative(Call& call) {
  if (!monitor().watchesThisThread()) {
    return;
  }
  const LastErrorScope lastError;
  running = reinterpret_cast<const HookedNative*>(call.note);
  accounts().closeAll(Account::kLocalReference);
  returned.clear();
  auto* const env = reinterpret_cast<JNIEnv*>(call.words[0]);
  if (jthrowable const exception = jni->ExceptionOccurred(env); exception != nullptr) {
    jni->ExceptionClear(env);
    returned = describe(env, static_cast<HookedNative*>(call.function)->type, call.result);
    jni->Throw(env, exception);
    jni->DeleteLocalRef(env, exception);
  }
}

void JNICALL
onBind(jvmtiEnv* jvmti, JNIEnv* env, jthread, jmethodID method, void* address, void** newAddress) {
  static std::vector<std::unique_ptr<HookedNative>> natives;
  const std::string type = classOf(jvmti, env, method);
  if (!type.starts_with("Lcom/corvane/wizard/") && type != "Lcom/corvane/testing/Bridge;") {
    return;
  }
  JvmtiText name(jvmti);
  JvmtiText signature(jvmti);
  jvmti->GetMethodName(method, name.receive(), signature.receive(), nullptr);
  const std::string text = signature.get();
  HookedNative native;
  native.name = name.get();
  native.original = address;
  native.before = beforeNative;
  native.after = afterNative;
  native.type = text[text.find(')') + 1];
  natives.push_back(std::make_unique<HookedNative>(native));
  *newAddress = const_cast<void*>(makeStub(*natives.back()));
}

}  // namespace

void hookNatives(jvmtiEnv* jvmti, const JNINativeInterface_* functions) {
  jni = functions;
  jvmtiCapabilities capabilities{};
  capabilities.can_generate_native_method_bind_events = 1;
  jvmtiEventCallbacks callbacks{};
  callbacks.NativeMethodBind = onBind;
  if (jvmti->AddCapabilities(&capabilities) != JVMTI_ERROR_NONE ||
      jvmti->SetEventCallbacks(&callbacks, sizeof callbacks) != JVMTI_ERROR_NONE ||
      jvmti->SetEventNotificationMode(JVMTI_ENABLE, JVMTI_EVENT_NATIVE_METHOD_BIND, nullptr) !=
          JVMTI_ERROR_NONE) {
    throw std::runtime_error("the JVM does not tell of natives");
  }
}

std::string runningNative() {
  return running == nullptr || !monitor().watchesThisThread() ? "" : running->name;
}

const std::wstring& returnedBesideException() {
  return returned;
}

}  // namespace bed
