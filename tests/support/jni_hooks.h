#pragma once

#include <jni.h>

namespace bed {

/// Puts a table of JNI functions in place that leads every call of the hooked modules past the
/// monitor and holds it to the rules of JNI. Throws std::runtime_error when the JVM does not play
/// along.
void hookJni(JavaVM* vm);

}  // namespace bed
