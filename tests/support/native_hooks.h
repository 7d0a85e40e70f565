#pragma once

#include <jni.h>
#include <jvmti.h>

#include <string>

namespace bed {

/// Leads every native method of the library past this bed, from its first call on: who runs is
/// known, and what it returns beside an exception. `functions` are the JVM's own JNI functions.
void hookNatives(jvmtiEnv* jvmti, const JNINativeInterface_* functions);

/// The name of the library's native that runs on the watched thread; empty when none does.
std::string runningNative();

/// What the last native on the watched thread returned beside its exception; '' is the empty text.
/// For null, 0 and false, and when nothing was thrown, this is empty itself.
const std::wstring& returnedBesideException();

}  // namespace bed
