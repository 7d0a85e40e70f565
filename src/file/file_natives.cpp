#include <com_corvane_wizard_platform_win32_Win32FileServiceImpl.h>

#include "bridge/java_values.h"
#include "bridge/jni_string.h"
#include "bridge/native_frame.h"
#include "file/copy_file.h"
#include "file/delete_directory.h"
#include "file/delete_entry.h"
#include "file/file_times.h"
#include "file/move_file.h"
#include "file/path_attributes.h"

// The natives of Win32FileServiceImpl. What each does, takes and raises is said at its Java
// declaration.

namespace {

// What Java is told when a native fails.
constexpr jint kGetAttributesFailed = -30000;
constexpr jint kSetAttributesFailed = -30001;
constexpr jint kSetTimesFailed = -30007;
constexpr jint kSetCreatedFailed = -30011;
constexpr jint kSetModifiedFailed = -30016;
constexpr jint kCopyFailed = -30017;
constexpr jint kMoveFailed = -30018;
constexpr jint kDeleteFailed = -30019;
constexpr jint kDeleteDirectoryFailed = -30020;

/// The natives that return a Win32 error fail with it.
void throwUnlessZero(DWORD error) {
  if (error != ERROR_SUCCESS) {
    throw Win32Failure(error);
  }
}

/// The natives whose result tells Java when the work is done give it beside the exception too.
jint reported(JNIEnv* env, jint code, const FileOutcome& outcome) {
  if (outcome.error) {
    throwServiceException(env, code, *outcome.error);
  }
  return outcome.result;
}

void setTimes(JNIEnv* env, jint code, jstring file, const FileTimes& times) {
  nativeFrame(env, code, [&] {
    const JniString path(env, file);
    throwUnlessZero(setFileTimes(path.get(), times));
  });
}

}  // namespace

extern "C" {

JNIEXPORT jobject JNICALL
Java_com_corvane_wizard_platform_win32_Win32FileServiceImpl_getFileAttributes(JNIEnv* env,
                                                                              jobject,
                                                                              jstring path) {
  return nativeFrame(env, kGetAttributesFailed, [&] {
    const JniString file(env, path);
    jobject attributes = nullptr;
    throwUnlessZero(getPathAttributes(env, file.get(), attributes));
    return attributes;
  });
}

JNIEXPORT void JNICALL
Java_com_corvane_wizard_platform_win32_Win32FileServiceImpl_setFileAttributes(JNIEnv* env,
                                                                              jobject,
                                                                              jstring path,
                                                                              jobject attributes) {
  nativeFrame(env, kSetAttributesFailed, [&] {
    const JniString file(env, path);
    throwUnlessZero(setPathAttributes(env, file.get(), attributes));
  });
}

JNIEXPORT jint JNICALL
Java_com_corvane_wizard_platform_win32_Win32FileServiceImpl_win32CopyFile(JNIEnv* env,
                                                                          jobject,
                                                                          jstring source,
                                                                          jstring target,
                                                                          jboolean overwrite) {
  return nativeFrame(env, kCopyFailed, [&] {
    const JniString from(env, source);
    const JniString to(env, target);
    return reported(env, kCopyFailed, copyFile(from.get(), to.get(), fromJavaBoolean(overwrite)));
  });
}

JNIEXPORT jint JNICALL
Java_com_corvane_wizard_platform_win32_Win32FileServiceImpl_win32MoveFile(JNIEnv* env,
                                                                          jobject,
                                                                          jstring source,
                                                                          jstring target,
                                                                          jboolean overwrite) {
  return nativeFrame(env, kMoveFailed, [&] {
    const JniString from(env, source);
    const JniString to(env, target);
    return reported(env, kMoveFailed, moveFile(from.get(), to.get(), fromJavaBoolean(overwrite)));
  });
}

JNIEXPORT jint JNICALL
Java_com_corvane_wizard_platform_win32_Win32FileServiceImpl_win32DeleteFile(JNIEnv* env,
                                                                            jobject,
                                                                            jstring path) {
  return nativeFrame(env, kDeleteFailed, [&] {
    const JniString file(env, path);
    return reported(env, kDeleteFailed, deleteEntry(file.get(), EntryKind::kFile));
  });
}

JNIEXPORT jint JNICALL
Java_com_corvane_wizard_platform_win32_Win32FileServiceImpl_win32DeleteDirectory(
    JNIEnv* env,
    jobject,
    jstring path,
    jboolean directoryOnly,
    jboolean recursive) {
  return nativeFrame(env, kDeleteDirectoryFailed, [&] {
    const JniString directory(env, path);
    const FileOutcome outcome = fromJavaBoolean(directoryOnly)
                                    ? deleteEmptyDirectory(directory.get())
                                    : deleteDirectory(directory.get(), fromJavaBoolean(recursive));
    return reported(env, kDeleteDirectoryFailed, outcome);
  });
}

JNIEXPORT void JNICALL
Java_com_corvane_wizard_platform_win32_Win32FileServiceImpl_win32SetFileCreated(JNIEnv* env,
                                                                                jobject,
                                                                                jstring path,
                                                                                jlong created) {
  setTimes(env, kSetCreatedFailed, path, {.created = created});
}

JNIEXPORT void JNICALL
Java_com_corvane_wizard_platform_win32_Win32FileServiceImpl_win32SetFileModified(JNIEnv* env,
                                                                                 jobject,
                                                                                 jstring path,
                                                                                 jlong modified) {
  setTimes(env, kSetModifiedFailed, path, {.modified = modified});
}

JNIEXPORT void JNICALL
Java_com_corvane_wizard_platform_win32_Win32FileServiceImpl_win32SetFileTimes(JNIEnv* env,
                                                                              jobject,
                                                                              jstring path,
                                                                              jlong created,
                                                                              jlong accessed,
                                                                              jlong modified) {
  setTimes(env,
           kSetTimesFailed,
           path,
           {.created = created, .accessed = accessed, .modified = modified});
}

}  // extern "C"
