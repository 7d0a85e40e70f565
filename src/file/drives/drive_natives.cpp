#include <com_corvane_wizard_platform_win32_Win32FileServiceImpl.h>

#include "bridge/java/java_values.h"
#include "bridge/java/jni_string.h"
#include "bridge/java/native_text.h"
#include "bridge/win32/path.h"
#include "file/drives/critical_errors.h"
#include "file/drives/drive.h"
#include "file/drives/standard_directories.h"
#include "file/drives/writable_directory.h"

using namespace corvane;

// The natives of Win32FileServiceImpl for drives and directories. What each does, takes and raises
// is said at its Java declaration.

namespace {

// What Java is told when a native fails.
constexpr jint kFreeSpaceFailed = -30004;
constexpr jint kFormatFailed = -30010;
constexpr jint kLongFileNamesFailed = -30015;
constexpr jint kCommonFilesFailed = -30022;
constexpr jint kProductDataFailed = -30023;
constexpr jint kWindowsDirectoryFailed = -60000;
constexpr jint kProgramFilesFailed = -60001;
constexpr jint kTempDirectoryFailed = -60002;

}  // namespace

extern "C" {

NATIVE(jlong, Win32FileServiceImpl, getPartitionFreeSpace)(JNIEnv* env, jobject, jstring drive) {
  return nativeFrame(env, kFreeSpaceFailed, [&] {
    const JniString path(env, drive);
    return jlong{driveFreeSpace(path.get())};
  });
}

NATIVE(jobjectArray, Win32FileServiceImpl, getPartitionNames)(JNIEnv* env, jobject) {
  return nativeFrame(env, [&] { return newJavaStringArray(env, driveNames(), L""); });
}

NATIVE(jint, Win32FileServiceImpl, getPartitionType)(JNIEnv* env, jobject, jstring drive) {
  return nativeFrame(env, [&] {
    const JniString path(env, drive);
    return jint{driveType(path.get())};
  });
}

NATIVE(jstring, Win32FileServiceImpl, getPartitionFormat)(JNIEnv* env, jobject, jstring drive) {
  return nativeText(env, kFormatFailed, [&](WString& format) {
    const JniString path(env, drive);
    format = driveFormat(path.get());
  });
}

NATIVE(jboolean, Win32FileServiceImpl, supportsLongFileNames)(JNIEnv* env, jobject, jstring drive) {
  return nativeFrame(env, kLongFileNamesFailed, [&] {
    const JniString path(env, drive);
    return toJavaBoolean(supportsLongFileNames(path.get()));
  });
}

NATIVE(jstring, Win32FileServiceImpl, getTempDirectory)(JNIEnv* env, jobject) {
  return nativeText(env, kTempDirectoryFailed, [](WString& directory) {
    directory = temporaryDirectory();
  });
}

NATIVE(jstring, Win32FileServiceImpl, win32GetWindowsDirectory)(JNIEnv* env, jobject) {
  return nativeText(env, kWindowsDirectoryFailed, [](WString& directory) {
    directory = windowsDirectory();
  });
}

NATIVE(jstring, Win32FileServiceImpl, getLibraryDirectory)(JNIEnv* env, jobject) {
  return nativeFrame(env, [&] { return newJavaString(env, systemDirectory()); });
}

NATIVE(jstring, Win32FileServiceImpl, getStandardInstallDirectory)(JNIEnv* env, jobject) {
  return nativeText(env, kProgramFilesFailed, [](WString& directory) {
    directory = programFilesDirectory();
  });
}

NATIVE(jstring, Win32FileServiceImpl, win32GetCommonDirectory)(JNIEnv* env, jobject) {
  return nativeText(env, kCommonFilesFailed, [](WString& directory) {
    directory = commonFilesDirectory();
  });
}

NATIVE(jstring, Win32FileServiceImpl, win32GetVPDDirectory)(JNIEnv* env, jobject) {
  jint code = kCommonFilesFailed;
  return nativeText(env, code, [&](WString& directory) {
    directory = commonFilesDirectory();
    code = kProductDataFailed;
    findProductDataDirectory(directory);
  });
}

NATIVE(jboolean, Win32FileServiceImpl, isDirectoryWritable)
(JNIEnv* env, jobject, jstring directory) {
  return nativeFrame(env, [&] {
    const WString path = textFromJava(env, directory);
    if (path.empty() || isDriveAlone(path.c_str())) {
      throwServiceException(env, E_INVALIDARG);
      return toJavaBoolean(false);
    }
    return toJavaBoolean(isDirectoryWritable(path.c_str()));
  });
}

NATIVE(jboolean, Win32FileServiceImpl, win32EnableAbort)(JNIEnv* env, jobject, jboolean enable) {
  return nativeFrame(env, [&] {
    return toJavaBoolean(enableCriticalErrorBox(fromJavaBoolean(enable)));
  });
}

}  // extern "C"
