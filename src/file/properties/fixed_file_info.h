#pragma once

#include <jni.h>
#include <windows.h>

namespace corvane {

/// The fixed part of a version as Java's WindowsFixedFileInfo: a new local reference, null when the
/// class or its constructor is missing. A setter that the class lacks is skipped, so that an older
/// class does. Throws PendingJavaException when a method throws: Java sees what it threw.
jobject newFixedFileInfo(JNIEnv* env, const VS_FIXEDFILEINFO& info);

}  // namespace corvane
