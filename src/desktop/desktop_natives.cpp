#include <com_corvane_wizard_platform_win32_Win32DesktopServiceImpl.h>

#include "bridge/java/java_values.h"
#include "bridge/java/jni_string.h"
#include "bridge/java/native_frame.h"
#include "desktop/desktop_item.h"

using namespace corvane;

// The natives of Win32DesktopServiceImpl that make and remove folders and shortcuts. What each
// does, takes and raises is said at its Java declaration.

namespace {

// What Java is told when a native fails.
constexpr jint kCreateFolderFailed = -80000;
constexpr jint kRemoveFolderFailed = -80001;
constexpr jint kCreateItemFailed = -80002;
constexpr jint kRemoveItemFailed = -80003;

}  // namespace

extern "C" {

NATIVE(void, Win32DesktopServiceImpl, createDesktopFolder)
(JNIEnv* env, jobject, jstring folder, jstring subfolder) {
  nativeFrame(env, kCreateFolderFailed, [&] {
    createDesktopFolder(textFromJava(env, folder), textFromJava(env, subfolder));
  });
}

NATIVE(void, Win32DesktopServiceImpl, removeDesktopFolder)
(JNIEnv* env, jobject, jstring folder, jstring subfolder) {
  nativeFrame(env, kRemoveFolderFailed, [&] {
    removeDesktopFolder(textFromJava(env, folder), textFromJava(env, subfolder));
  });
}

NATIVE(void, Win32DesktopServiceImpl, createDesktopItem)
(JNIEnv* env,
 jobject,
 jstring folder,
 jstring subfolder,
 jstring name,
 jstring target,
 jstring arguments,
 jstring iconPath,
 jstring workingDirectory) {
  nativeFrame(env, kCreateItemFailed, [&] {
    const JniString program(env, target);
    const JniString options(env, arguments);
    const JniString icon(env, iconPath);
    const JniString directory(env, workingDirectory);
    const Shortcut link = {program.get(), options.get(), directory.get(), icon.get()};
    createDesktopItem(textFromJava(env, folder),
                      textFromJava(env, subfolder),
                      textFromJava(env, name),
                      link);
  });
}

NATIVE(void, Win32DesktopServiceImpl, removeDesktopItem)
(JNIEnv* env, jobject, jstring folder, jstring subfolder, jstring name) {
  nativeFrame(env, kRemoveItemFailed, [&] {
    removeDesktopItem(textFromJava(env, folder),
                      textFromJava(env, subfolder),
                      textFromJava(env, name));
  });
}

}  // extern "C"
