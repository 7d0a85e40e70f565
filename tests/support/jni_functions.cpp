#include "jni_functions.h"

#include <algorithm>
#include <iterator>

namespace bed {
namespace {

constexpr const char* kNoMemory = "java/lang/OutOfMemoryError";
constexpr const char* kNoClass = "java/lang/NoClassDefFoundError";
constexpr const char* kNoMethod = "java/lang/NoSuchMethodError";
constexpr const char* kNoField = "java/lang/NoSuchFieldError";
constexpr const char* kBounds = "java/lang/ArrayIndexOutOfBoundsException";
constexpr const char* kStore = "java/lang/ArrayStoreException";
constexpr const char* kThrown = "java/lang/RuntimeException";

constexpr Effect kNewLocal = opensResult(Account::kLocalReference);
constexpr bool kAllowed = true;

#define ENTRY(name) #name, offsetof(JNINativeInterface_, name) / sizeof(void*)

// In C++ the variadic calls go through the entries that end in V.
constexpr JniFunction kFunctions[] = {
    {ENTRY(FindClass), kNoClass, kNewLocal, false, "-t"},
    {ENTRY(GetObjectClass), kNoMemory, kNewLocal},
    {ENTRY(GetMethodID), kNoMethod, {}, false, "--t"},
    {ENTRY(GetStaticMethodID), kNoMethod},
    {ENTRY(GetFieldID), kNoField},
    {ENTRY(GetStaticFieldID), kNoField, {}, false, "--t"},
    {ENTRY(GetStaticIntField)},
    {ENTRY(NewObjectV), kNoMemory, kNewLocal},
    {ENTRY(CallObjectMethodV), kThrown, kNewLocal},
    {ENTRY(CallBooleanMethodV), kThrown},
    {ENTRY(CallIntMethodV), kThrown},
    {ENTRY(CallVoidMethodV), kThrown},

    {ENTRY(NewString), kNoMemory, kNewLocal, false, "--n"},
    {ENTRY(GetStringLength)},
    {ENTRY(GetStringChars), kNoMemory},
    {ENTRY(ReleaseStringChars), nullptr, {}, kAllowed},

    {ENTRY(GetArrayLength)},
    {ENTRY(NewObjectArray), kNoMemory, kNewLocal, false, "-n-p"},
    {ENTRY(GetObjectArrayElement), kBounds, kNewLocal},
    {ENTRY(SetObjectArrayElement), kStore},
    {ENTRY(NewByteArray), kNoMemory, kNewLocal},
    {ENTRY(GetByteArrayRegion), kBounds},
    {ENTRY(SetByteArrayRegion), kBounds},

    {ENTRY(NewGlobalRef), kNoMemory, opensResult(Account::kGlobalReference)},
    {ENTRY(DeleteGlobalRef), nullptr, closes(Account::kGlobalReference, 1), kAllowed},
    {ENTRY(DeleteLocalRef), nullptr, closes(Account::kLocalReference, 1), kAllowed},

    {ENTRY(Throw)},
    {ENTRY(ExceptionOccurred), nullptr, kNewLocal, kAllowed},
    {ENTRY(ExceptionCheck), nullptr, {}, kAllowed},
    {ENTRY(ExceptionClear), nullptr, {}, kAllowed},
};

#undef ENTRY

}  // namespace

const JniFunction* findJniFunction(std::string_view name) {
  const auto* found =
      std::find_if(std::begin(kFunctions), std::end(kFunctions), [&](const JniFunction& function) {
        return function.name == name;
      });
  return found == std::end(kFunctions) ? nullptr : found;
}

const JniFunction* findJniFunction(size_t index) {
  const auto* found =
      std::find_if(std::begin(kFunctions), std::end(kFunctions), [&](const JniFunction& function) {
        return function.index == index;
      });
  return found == std::end(kFunctions) ? nullptr : found;
}

}  // namespace bed
