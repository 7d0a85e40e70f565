#pragma once

#include <jni.h>
#include <windows.h>

/// The attributes of a path as Java's FileAttributes. Both return 0 or the reason of the failure: a
/// Win32 error, E_FAIL when the Java object could not be read or built. They throw
/// PendingJavaException when a method of the object threw.

/// Puts a new local reference into `attributes`. Win32: GetFileAttributesA/W.
DWORD getPathAttributes(JNIEnv* env, const wchar_t* path, jobject& attributes);

/// Win32: SetFileAttributesA/W. The path "." is refused with E_INVALIDARG: it is whatever
/// directory is current. Getting its attributes does no harm and is not refused. No attributes at
/// all are refused with ERROR_INVALID_PARAMETER.
DWORD setPathAttributes(JNIEnv* env, const wchar_t* path, jobject attributes);
