#include <com_corvane_wizard_platform_win32_Win32RegistryServiceImpl.h>

#include "bridge/java/java_values.h"
#include "bridge/java/jni_string.h"
#include "bridge/java/native_frame.h"
#include "bridge/java/native_text.h"
#include "registry/registry_key.h"

using namespace corvane;

// The natives of Win32RegistryServiceImpl. What each does, takes and raises is said at its Java
// declaration; the work is RegistryKey's.

namespace {

// What Java is told when a native fails. Natives share a code where the kind of failure is the
// same, which is what the code tells; the message tells the cause.
constexpr jint kGetValueNamesFailed = -100000;
constexpr jint kKeyExistsFailed = -100001;
constexpr jint kDeleteFailed = -100002;
constexpr jint kQueryInfoFailed = -100003;
constexpr jint kSetStringFailed = -100004;
constexpr jint kSetMultiStringFailed = -100005;
constexpr jint kSet32BitFailed = -100006;
constexpr jint kSetBinaryFailed = -100007;
constexpr jint kGetValueFailed = -100008;
constexpr jint kGetMultiStringFailed = -100009;
constexpr jint kGetBinaryFailed = -100010;
constexpr jint kGetValueTypeFailed = -100011;
constexpr jint kCreateKeyFailed = -100012;
constexpr jint kGetSubKeyNamesFailed = -100013;
constexpr jint kValueExistsFailed = -100014;

using NumberOfKey = DWORD RegistryKeyInfo::*;

/// The five natives that ask for one number of a key's information.
jint queryNumber(JNIEnv* env, jint root, jstring key, NumberOfKey number) {
  return nativeFrame(env, kQueryInfoFailed, [&] {
    const JniString path(env, key);
    return static_cast<jint>(RegistryKey().queryInfo(rootFromJava(root), path.get()).*number);
  });
}

}  // namespace

extern "C" {

NATIVE(jboolean, Win32RegistryServiceImpl, keyExists)
(JNIEnv* env, jobject, jint root, jstring key) {
  return nativeFrame(env, kKeyExistsFailed, [&] {
    const JniString path(env, key);
    return toJavaBoolean(RegistryKey().keyExists(rootFromJava(root), path.get()));
  });
}

NATIVE(jboolean, Win32RegistryServiceImpl, valueExists)
(JNIEnv* env, jobject, jint root, jstring key, jstring name) {
  return nativeFrame(env, kValueExistsFailed, [&] {
    const JniString path(env, key);
    const JniString valueName(env, name);
    return toJavaBoolean(
        RegistryKey().valueExists(rootFromJava(root), path.get(), valueName.get()));
  });
}

NATIVE(void, Win32RegistryServiceImpl, createKey)
(JNIEnv* env, jobject, jint root, jstring key, jstring subKey) {
  return nativeFrame(env, kCreateKeyFailed, [&] {
    const JniString path(env, key);
    const JniString name(env, subKey);
    RegistryKey().createKey(rootFromJava(root), path.get(), name.get());
  });
}

NATIVE(void, Win32RegistryServiceImpl, deleteKey)
(JNIEnv* env, jobject, jint root, jstring key, jstring subKey, jboolean mustExist) {
  return nativeFrame(env, kDeleteFailed, [&] {
    const JniString path(env, key);
    const JniString name(env, subKey);
    RegistryKey().deleteKey(rootFromJava(root), path.get(), name.get(), fromJavaBoolean(mustExist));
  });
}

NATIVE(void, Win32RegistryServiceImpl, deleteValue)
(JNIEnv* env, jobject, jint root, jstring key, jstring name, jboolean mustExist) {
  return nativeFrame(env, kDeleteFailed, [&] {
    const JniString path(env, key);
    const JniString valueName(env, name);
    RegistryKey().deleteValue(rootFromJava(root),
                              path.get(),
                              valueName.get(),
                              fromJavaBoolean(mustExist));
  });
}

NATIVE(jboolean, Win32RegistryServiceImpl, isKeyEmpty)
(JNIEnv* env, jobject, jint root, jstring key) {
  return nativeFrame(env, kQueryInfoFailed, [&] {
    const JniString path(env, key);
    const RegistryKeyInfo info = RegistryKey().queryInfo(rootFromJava(root), path.get());
    return toJavaBoolean(info.subKeyCount == 0 && info.valueCount == 0);
  });
}

NATIVE(jint, Win32RegistryServiceImpl, countSubKeys)(JNIEnv* env, jobject, jint root, jstring key) {
  return queryNumber(env, root, key, &RegistryKeyInfo::subKeyCount);
}

NATIVE(jint, Win32RegistryServiceImpl, countValuesInKey)
(JNIEnv* env, jobject, jint root, jstring key) {
  return queryNumber(env, root, key, &RegistryKeyInfo::valueCount);
}

NATIVE(jint, Win32RegistryServiceImpl, longestSubKeyNameLength)
(JNIEnv* env, jobject, jint root, jstring key) {
  return queryNumber(env, root, key, &RegistryKeyInfo::maxSubKeyNameLength);
}

NATIVE(jint, Win32RegistryServiceImpl, longestValueNameLength)
(JNIEnv* env, jobject, jint root, jstring key) {
  return queryNumber(env, root, key, &RegistryKeyInfo::maxValueNameLength);
}

NATIVE(jint, Win32RegistryServiceImpl, longestValueNameData)
(JNIEnv* env, jobject, jint root, jstring key) {
  return queryNumber(env, root, key, &RegistryKeyInfo::maxValueDataLength);
}

NATIVE(jobjectArray, Win32RegistryServiceImpl, getSubkeyNames)
(JNIEnv* env, jobject, jint root, jstring key) {
  return nativeFrame(env, kGetSubKeyNamesFailed, [&] {
    const JniString path(env, key);
    return newJavaStringArray(env, RegistryKey().getSubKeyNames(rootFromJava(root), path.get()));
  });
}

NATIVE(jobjectArray, Win32RegistryServiceImpl, getKeyValueNames)
(JNIEnv* env, jobject, jint root, jstring key) {
  return nativeFrame(env, kGetValueNamesFailed, [&] {
    const JniString path(env, key);
    return newJavaStringArray(env, RegistryKey().getValueNames(rootFromJava(root), path.get()));
  });
}

NATIVE(jint, Win32RegistryServiceImpl, getValueType)
(JNIEnv* env, jobject, jint root, jstring key, jstring name) {
  return nativeFrame(env, kGetValueTypeFailed, [&] {
    const JniString path(env, key);
    const JniString valueName(env, name);
    return static_cast<jint>(
        RegistryKey().getValueType(rootFromJava(root), path.get(), valueName.get()));
  });
}

NATIVE(jstring, Win32RegistryServiceImpl, getStringValue)
(JNIEnv* env, jobject, jint root, jstring key, jstring name, jboolean expand) {
  return nativeText(env, kGetValueFailed, [&](WString& text) {
    const JniString path(env, key);
    const JniString valueName(env, name);
    text = RegistryKey().getStringValue(rootFromJava(root),
                                        path.get(),
                                        valueName.get(),
                                        fromJavaBoolean(expand));
  });
}

NATIVE(jint, Win32RegistryServiceImpl, get32BitValue)
(JNIEnv* env, jobject, jint root, jstring key, jstring name) {
  return nativeFrame(env, kGetValueFailed, [&] {
    const JniString path(env, key);
    const JniString valueName(env, name);
    return static_cast<jint>(
        RegistryKey().get32BitValue(rootFromJava(root), path.get(), valueName.get()));
  });
}

NATIVE(jobjectArray, Win32RegistryServiceImpl, getMultiStringValue)
(JNIEnv* env, jobject, jint root, jstring key, jstring name) {
  return nativeFrame(env, kGetMultiStringFailed, [&] {
    const JniString path(env, key);
    const JniString valueName(env, name);
    return newJavaStringArray(
        env,
        RegistryKey().getMultiStringValue(rootFromJava(root), path.get(), valueName.get()));
  });
}

NATIVE(jbyteArray, Win32RegistryServiceImpl, getBinaryValue)
(JNIEnv* env, jobject, jint root, jstring key, jstring name) {
  return nativeFrame(env, kGetBinaryFailed, [&] {
    const JniString path(env, key);
    const JniString valueName(env, name);
    return newJavaByteArray(
        env,
        RegistryKey().getBinaryValue(rootFromJava(root), path.get(), valueName.get()));
  });
}

NATIVE(void, Win32RegistryServiceImpl, setStringValue)
(JNIEnv* env, jobject, jint root, jstring key, jstring name, jboolean expandable, jstring value) {
  return nativeFrame(env, kSetStringFailed, [&] {
    const JniString path(env, key);
    const JniString valueName(env, name);
    const JniString text(env, value);
    RegistryKey().setStringValue(rootFromJava(root),
                                 path.get(),
                                 valueName.get(),
                                 fromJavaBoolean(expandable),
                                 text.get());
  });
}

NATIVE(void, Win32RegistryServiceImpl, setMultiStringValue)
(JNIEnv* env, jobject, jint root, jstring key, jstring name, jobjectArray values) {
  return nativeFrame(env, kSetMultiStringFailed, [&] {
    const JniString path(env, key);
    const JniString valueName(env, name);
    RegistryKey().setMultiStringValue(rootFromJava(root),
                                      path.get(),
                                      valueName.get(),
                                      textsFromJava(env, values));
  });
}

NATIVE(void, Win32RegistryServiceImpl, set32BitValue)
(JNIEnv* env, jobject, jint root, jstring key, jstring name, jint value) {
  return nativeFrame(env, kSet32BitFailed, [&] {
    const JniString path(env, key);
    const JniString valueName(env, name);
    RegistryKey().set32BitValue(rootFromJava(root),
                                path.get(),
                                valueName.get(),
                                static_cast<uint32_t>(value));
  });
}

NATIVE(void, Win32RegistryServiceImpl, setBinaryValue)
(JNIEnv* env, jobject, jint root, jstring key, jstring name, jbyteArray data) {
  return nativeFrame(env, kSetBinaryFailed, [&] {
    const JniString path(env, key);
    const JniString valueName(env, name);
    RegistryKey().setBinaryValue(rootFromJava(root),
                                 path.get(),
                                 valueName.get(),
                                 bytesFromJava(env, data));
  });
}

}  // extern "C"
