#include <com_corvane_wizard_platform_win32_Win32FileServiceImpl.h>

#include "bridge/java_values.h"
#include "bridge/jni_string.h"
#include "bridge/native_text.h"
#include "bridge/platform.h"
#include "file/copy_file.h"
#include "file/critical_errors.h"
#include "file/delete_directory.h"
#include "file/delete_entry.h"
#include "file/file_owner.h"
#include "file/file_times.h"
#include "file/move_file.h"
#include "file/path_attributes.h"
#include "file/standard_directories.h"
#include "file/volume.h"
#include "file/writable_directory.h"

// The natives of Win32FileServiceImpl. What each does, takes and raises is said at its Java
// declaration.

namespace {

// What Java is told when a native fails.
constexpr jint kGetAttributesFailed = -30000;
constexpr jint kSetAttributesFailed = -30001;
constexpr jint kFreeSpaceFailed = -30004;
constexpr jint kSetTimesFailed = -30007;
constexpr jint kGetGroupFailed = -30008;
constexpr jint kSetGroupFailed = -30009;
constexpr jint kFormatFailed = -30010;
constexpr jint kSetCreatedFailed = -30011;
constexpr jint kGetOwnerFailed = -30012;
constexpr jint kSetOwnerFailed = -30013;
constexpr jint kLongFileNamesFailed = -30015;
constexpr jint kSetModifiedFailed = -30016;
constexpr jint kCopyFailed = -30017;
constexpr jint kMoveFailed = -30018;
constexpr jint kDeleteFailed = -30019;
constexpr jint kDeleteDirectoryFailed = -30020;
constexpr jint kCommonFilesFailed = -30022;
constexpr jint kProductDataFailed = -30023;
constexpr jint kWindowsDirectoryFailed = -60000;
constexpr jint kProgramFilesFailed = -60001;
constexpr jint kTempDirectoryFailed = -60002;

/// The natives whose result tells Java when the work is done give it beside the exception too.
jint reported(JNIEnv* env, jint code, const FileOutcome& outcome) {
  if (outcome.error) {
    throwServiceException(env, code, *outcome.error);
  }
  return outcome.result;
}

/// Windows 9x has no owners: "" is the answer there. A group of a domain that is not trusted any
/// more is passed over: it is no reason to stop an installation.
jstring getPrincipal(JNIEnv* env, jint code, jstring path, Principal which) {
  return nativeText(env, code, [&](WString& name) {
    if (isWindows9x()) {
      return;
    }
    const JniString file(env, path);
    AccountName account;
    const DWORD error = readPrincipal(file.get(), which, account);
    if (which != Principal::kGroup || error != ERROR_TRUSTED_RELATIONSHIP_FAILURE) {
      throwUnlessZero(error);
    }
    name = account.name;
  });
}

/// Windows 9x has no owners: nothing happens there.
void setPrincipal(JNIEnv* env, jint code, jstring path, Principal which, jstring account) {
  nativeFrame(env, code, [&] {
    if (isWindows9x()) {
      return;
    }
    const JniString file(env, path);
    const JniString name(env, account);
    throwUnlessZero(writePrincipal(file.get(), which, name.get()));
  });
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

JNIEXPORT jstring JNICALL
Java_com_corvane_wizard_platform_win32_Win32FileServiceImpl_getFileOwner(JNIEnv* env,
                                                                         jobject,
                                                                         jstring path) {
  return getPrincipal(env, kGetOwnerFailed, path, Principal::kOwner);
}

JNIEXPORT jstring JNICALL
Java_com_corvane_wizard_platform_win32_Win32FileServiceImpl_getFileOwnerGroup(JNIEnv* env,
                                                                              jobject,
                                                                              jstring path) {
  return getPrincipal(env, kGetGroupFailed, path, Principal::kGroup);
}

JNIEXPORT void JNICALL
Java_com_corvane_wizard_platform_win32_Win32FileServiceImpl_setFileOwner(JNIEnv* env,
                                                                         jobject,
                                                                         jstring path,
                                                                         jstring owner) {
  setPrincipal(env, kSetOwnerFailed, path, Principal::kOwner, owner);
}

JNIEXPORT void JNICALL
Java_com_corvane_wizard_platform_win32_Win32FileServiceImpl_setFileOwnerGroup(JNIEnv* env,
                                                                              jobject,
                                                                              jstring path,
                                                                              jstring group) {
  setPrincipal(env, kSetGroupFailed, path, Principal::kGroup, group);
}

JNIEXPORT jlong JNICALL
Java_com_corvane_wizard_platform_win32_Win32FileServiceImpl_getPartitionFreeSpace(JNIEnv* env,
                                                                                  jobject,
                                                                                  jstring root) {
  return nativeFrame(env, kFreeSpaceFailed, [&] {
    const JniString path(env, root);
    return jlong{partitionFreeSpace(path.get())};
  });
}

JNIEXPORT jobjectArray JNICALL
Java_com_corvane_wizard_platform_win32_Win32FileServiceImpl_getPartitionNames(JNIEnv* env,
                                                                              jobject) {
  return nativeFrame(env, [&] { return newJavaStringArray(env, partitionNames(), L""); });
}

JNIEXPORT jint JNICALL
Java_com_corvane_wizard_platform_win32_Win32FileServiceImpl_getPartitionType(JNIEnv* env,
                                                                             jobject,
                                                                             jstring root) {
  return nativeFrame(env, [&] {
    const JniString path(env, root);
    return jint{partitionType(path.get())};
  });
}

JNIEXPORT jstring JNICALL
Java_com_corvane_wizard_platform_win32_Win32FileServiceImpl_getPartitionFormat(JNIEnv* env,
                                                                               jobject,
                                                                               jstring root) {
  return nativeText(env, kFormatFailed, [&](WString& format) {
    const JniString path(env, root);
    format = partitionFormat(path.get());
  });
}

JNIEXPORT jboolean JNICALL
Java_com_corvane_wizard_platform_win32_Win32FileServiceImpl_supportsLongFileNames(JNIEnv* env,
                                                                                  jobject,
                                                                                  jstring root) {
  return nativeFrame(env, kLongFileNamesFailed, [&] {
    const JniString path(env, root);
    return toJavaBoolean(supportsLongFileNames(path.get()));
  });
}

JNIEXPORT jstring JNICALL
Java_com_corvane_wizard_platform_win32_Win32FileServiceImpl_getTempDirectory(JNIEnv* env, jobject) {
  return nativeText(env, kTempDirectoryFailed, [](WString& directory) {
    directory = temporaryDirectory();
  });
}

JNIEXPORT jstring JNICALL
Java_com_corvane_wizard_platform_win32_Win32FileServiceImpl_win32GetWindowsDirectory(JNIEnv* env,
                                                                                     jobject) {
  return nativeText(env, kWindowsDirectoryFailed, [](WString& directory) {
    directory = windowsDirectory();
  });
}

JNIEXPORT jstring JNICALL
Java_com_corvane_wizard_platform_win32_Win32FileServiceImpl_getLibraryDirectory(JNIEnv* env,
                                                                                jobject) {
  return nativeFrame(env, [&] { return newJavaString(env, systemDirectory()); });
}

JNIEXPORT jstring JNICALL
Java_com_corvane_wizard_platform_win32_Win32FileServiceImpl_getStandardInstallDirectory(JNIEnv* env,
                                                                                        jobject) {
  return nativeText(env, kProgramFilesFailed, [](WString& directory) {
    directory = programFilesDirectory();
  });
}

JNIEXPORT jstring JNICALL
Java_com_corvane_wizard_platform_win32_Win32FileServiceImpl_win32GetCommonDirectory(JNIEnv* env,
                                                                                    jobject) {
  return nativeText(env, kCommonFilesFailed, [](WString& directory) {
    directory = commonFilesDirectory();
  });
}

JNIEXPORT jstring JNICALL
Java_com_corvane_wizard_platform_win32_Win32FileServiceImpl_win32GetVPDDirectory(JNIEnv* env,
                                                                                 jobject) {
  jint code = kCommonFilesFailed;
  return nativeText(env, code, [&](WString& directory) {
    directory = commonFilesDirectory();
    code = kProductDataFailed;
    findProductDataDirectory(directory);
  });
}

JNIEXPORT jboolean JNICALL
Java_com_corvane_wizard_platform_win32_Win32FileServiceImpl_isDirectoryWritable(JNIEnv* env,
                                                                                jobject,
                                                                                jstring directory) {
  return nativeFrame(env, [&] {
    const WString path = textFromJava(env, directory);
    if (path.empty()) {
      throwServiceException(env, E_INVALIDARG);
      return toJavaBoolean(false);
    }
    return toJavaBoolean(isDirectoryWritable(path.c_str()));
  });
}

JNIEXPORT jboolean JNICALL
Java_com_corvane_wizard_platform_win32_Win32FileServiceImpl_win32EnableAbort(JNIEnv* env,
                                                                             jobject,
                                                                             jboolean enable) {
  return nativeFrame(env, [&] {
    return toJavaBoolean(enableCriticalErrorBox(fromJavaBoolean(enable)));
  });
}

}  // extern "C"
