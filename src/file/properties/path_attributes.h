#pragma once

#include <jni.h>
#include <windows.h>

namespace corvane {

/// The attributes of a path as Java's FileAttributes. Both throw Win32Failure: with the Win32
/// error, or with E_FAIL when the Java object could not be read or built, for which Windows has no
/// name. They throw PendingJavaException when a method of the object threw.

/// A new local reference; null when there are none and the system names no reason. Win32:
/// GetFileAttributesA/W.
jobject getPathAttributes(JNIEnv* env, const wchar_t* path);

/// Win32: SetFileAttributesA/W. The path "." is refused with E_INVALIDARG: it is whatever directory
/// is current. Getting its attributes does no harm and is not refused. No attributes at all are
/// refused with ERROR_INVALID_PARAMETER.
void setPathAttributes(JNIEnv* env, const wchar_t* path, jobject attributes);

}  // namespace corvane
