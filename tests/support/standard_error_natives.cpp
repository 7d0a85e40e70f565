#include <com_corvane_testing_StandardError.h>

#include <cstdio>
#include <utility>

#include "java_text.h"

// The natives of com.corvane.testing.StandardError. The library and this DLL share one C runtime
// and so its standard error stream. Only the stream is changed: the handle below it is the JVM's
// too.

namespace {

std::FILE* file = nullptr;

}  // namespace

JNIEXPORT void JNICALL Java_com_corvane_testing_StandardError_redirect(JNIEnv* env,
                                                                       jclass,
                                                                       jstring path) {
  file = std::fopen(bed::narrow(env, path).c_str(), "wb");
  std::swap(*stderr, *file);
}

JNIEXPORT void JNICALL Java_com_corvane_testing_StandardError_restore(JNIEnv*, jclass) {
  std::fflush(stderr);
  std::swap(*stderr, *file);
  std::fclose(file);
}
