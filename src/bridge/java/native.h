#pragma once

#include <jni.h>

/// The head of an exported function, under the name by which Java binds it:
///   NATIVE(jint, Win32FileServiceImpl, win32DeleteFile)(JNIEnv* env, jobject, jstring path) { ...
///   }
/// The class (with its package below platform.win32 and an underscore before it, where it has one)
/// and the method stand whole, so that a search for either finds the definition. A name that no
/// Java class declares is an error: the compilers ask for its prototype.
#define NATIVE(Result, Class, method) \
  JNIEXPORT Result JNICALL Java_com_corvane_wizard_platform_win32_##Class##_##method
