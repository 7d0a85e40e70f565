#include <com_corvane_wizard_platform_win32_Win32FileServiceImpl.h>

#include "bridge/java/java_values.h"
#include "bridge/java/jni_string.h"
#include "bridge/java/native_frame.h"
#include "file/in_use/copy_file.h"
#include "file/in_use/delete_directory.h"
#include "file/in_use/delete_entry.h"
#include "file/in_use/move_file.h"

using namespace corvane;

// The natives of Win32FileServiceImpl for files that may be in use. What each does, takes and
// raises is said at its Java declaration.

namespace {

// What Java is told when a native fails.
constexpr jint kCopyFailed = -30017;
constexpr jint kMoveFailed = -30018;
constexpr jint kDeleteFailed = -30019;
constexpr jint kDeleteDirectoryFailed = -30020;

/// The frame of natives whose result tells Java when the work is done, also beside the exception.
template <class Work>
jint outcomeFrame(JNIEnv* env, jint code, const Work& work) {
  return nativeFrame(env, code, [&] {
    const FileOutcome outcome = work();
    if (outcome.error) {
      throwServiceException(env, code, *outcome.error);
    }
    return jint{outcome.result};
  });
}

}  // namespace

extern "C" {

NATIVE(jint, Win32FileServiceImpl, win32CopyFile)
(JNIEnv* env, jobject, jstring source, jstring target, jboolean overwrite) {
  return outcomeFrame(env, kCopyFailed, [&] {
    const JniString from(env, source);
    const JniString to(env, target);
    return copyFile(from.get(), to.get(), fromJavaBoolean(overwrite));
  });
}

NATIVE(jint, Win32FileServiceImpl, win32MoveFile)
(JNIEnv* env, jobject, jstring source, jstring target, jboolean overwrite) {
  return outcomeFrame(env, kMoveFailed, [&] {
    const JniString from(env, source);
    const JniString to(env, target);
    return moveFile(from.get(), to.get(), fromJavaBoolean(overwrite));
  });
}

NATIVE(jint, Win32FileServiceImpl, win32DeleteFile)(JNIEnv* env, jobject, jstring path) {
  return outcomeFrame(env, kDeleteFailed, [&] {
    const JniString file(env, path);
    return deleteEntry(file.get(), EntryKind::kFile);
  });
}

NATIVE(jint, Win32FileServiceImpl, win32DeleteDirectory)
(JNIEnv* env, jobject, jstring path, jboolean directoryOnly, jboolean recursive) {
  return outcomeFrame(env, kDeleteDirectoryFailed, [&] {
    const JniString directory(env, path);
    return fromJavaBoolean(directoryOnly)
               ? deleteEmptyDirectory(directory.get())
               : deleteDirectory(directory.get(), fromJavaBoolean(recursive));
  });
}

}  // extern "C"
