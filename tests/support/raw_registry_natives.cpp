#include <com_corvane_testing_RawRegistry.h>

#include <stdexcept>

#include "java_text.h"
#include "raw_registry.h"

// The natives of com.corvane.testing.RawRegistry; what each does is said there.

using bed::RawRegistry;
using bed::wide;

JNIEXPORT void JNICALL Java_com_corvane_testing_RawRegistry_createKey(JNIEnv* env,
                                                                      jclass,
                                                                      jstring key) {
  bed::orThrow(env, [&] { RawRegistry::createKey(wide(env, key)); });
}

JNIEXPORT void JNICALL Java_com_corvane_testing_RawRegistry_createLink(JNIEnv* env,
                                                                       jclass,
                                                                       jstring key,
                                                                       jstring target) {
  bed::orThrow(env, [&] { RawRegistry::createLink(wide(env, key), wide(env, target)); });
}

JNIEXPORT void JNICALL Java_com_corvane_testing_RawRegistry_deleteTree(JNIEnv* env,
                                                                       jclass,
                                                                       jstring key) {
  bed::orThrow(env, [&] { RawRegistry::deleteTree(wide(env, key)); });
}

JNIEXPORT void JNICALL Java_com_corvane_testing_RawRegistry_set(JNIEnv* env,
                                                                jclass,
                                                                jstring key,
                                                                jstring name,
                                                                jint type,
                                                                jbyteArray data) {
  bed::orThrow(env, [&] {
    RawRegistry::set(wide(env, key),
                     wide(env, name),
                     {static_cast<uint32_t>(type), bed::bytes(env, data)});
  });
}

JNIEXPORT jint JNICALL Java_com_corvane_testing_RawRegistry_type(JNIEnv* env,
                                                                 jclass,
                                                                 jstring key,
                                                                 jstring name) {
  return bed::orThrow(env, [&] {
    const auto value = RawRegistry::get(wide(env, key), wide(env, name));
    return value ? static_cast<jint>(value->type) : -1;
  });
}

JNIEXPORT jbyteArray JNICALL Java_com_corvane_testing_RawRegistry_data(JNIEnv* env,
                                                                       jclass,
                                                                       jstring key,
                                                                       jstring name) {
  return bed::orThrow(env, [&] {
    const auto value = RawRegistry::get(wide(env, key), wide(env, name));
    return value ? bed::javaBytes(env, value->data) : nullptr;
  });
}

JNIEXPORT jstring JNICALL Java_com_corvane_testing_RawRegistry_dump(JNIEnv* env,
                                                                    jclass,
                                                                    jstring key) {
  return bed::orThrow(env, [&] { return bed::javaText(env, RawRegistry::dump(wide(env, key))); });
}
