#pragma once

#include <jni.h>

#include <string>

#include "thunk.h"

namespace bed {

/// Puts a table of JNI functions in place that leads every call of the hooked modules past the
/// monitor, and leads every native of the library past this bed, from its first call on. Ends
/// the JVM when that does not play along.
void hookJni(JNIEnv* env);

/// A call that JNI forbids while a Java exception is pending, or that has no row, is a violation.
void checkRulesOfJni(const Call& call);
/// Fails as the JVM does, with an exception pending; one that is pending already stays.
void throwInJava(const Call& call);
/// Whether characters are released that the JVM did not give; the JVM itself must not see that.
bool isNullRelease(const Call& call);

/// The name of the library's native that runs on the watched thread; empty when none does.
std::string runningNative();
/// What the last native on the watched thread returned beside its exception; '' is the empty text.
/// For null, 0 and false, and when nothing was thrown, this is empty itself.
const std::wstring& returnedBesideException();

}  // namespace bed
