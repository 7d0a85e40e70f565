#include <com_corvane_wizard_platform_win32_Win32DesktopServiceImpl.h>

#include "bridge/java/java_values.h"
#include "bridge/java/jni_string.h"
#include "bridge/java/native_text.h"
#include "bridge/win32/platform.h"
#include "desktop/folder_tokens.h"
#include "file/file_owner.h"
#include "file/path_attributes.h"

// The natives of Win32DesktopServiceImpl that read and set the owner, the group and the attributes
// of folders and shortcuts. What each does, takes and raises is said at its Java declaration.

namespace {

/// A shortcut as Java names it.
struct Item {
  jstring folder;
  jstring subfolder;
  jstring name;
};

/// A program group as Java names it.
struct Folder {
  jstring folder;
  jstring subfolder;
};

/// The path of the group. That a token cannot be replaced is not reported: the path is empty then,
/// and what that leads to is.
WString pathOf(JNIEnv* env, const Folder& place) {
  WString folder = textFromJava(env, place.folder);
  const WString subfolder = textFromJava(env, place.subfolder);
  return expandFolderTokens(folder) == ERROR_SUCCESS ? folderPath(folder, subfolder) : WString();
}

/// The path of the shortcut; its file name alone when a token cannot be replaced.
WString pathOf(JNIEnv* env, const Item& place) {
  WString folder = textFromJava(env, place.folder);
  const WString subfolder = textFromJava(env, place.subfolder);
  const WString name = textFromJava(env, place.name);
  return expandFolderTokens(folder) == ERROR_SUCCESS ? itemPath(folder, subfolder, name)
                                                     : name + L".lnk";
}

template <class Place>
jstring getPrincipal(JNIEnv* env, jint code, Principal which, const Place& place) {
  return nativeFrame(env, [&]() -> jstring {
    if (isWindows9x()) {
      throwNotSupported(env);
      return nullptr;
    }
    return nativeText(env, code, [&](WString& name) {
      name = readPrincipal(pathOf(env, place).c_str(), which).name;
    });
  });
}

template <class Place>
void setPrincipal(JNIEnv* env, jint code, Principal which, const Place& place, jstring account) {
  nativeFrame(env, code, [&] {
    if (isWindows9x()) {
      throwNotSupported(env);
      return;
    }
    const WString path = pathOf(env, place);
    const JniString name(env, account);
    writePrincipal(path.c_str(), which, name.get());
  });
}

template <class Place>
jobject getAttributes(JNIEnv* env, jint code, const Place& place) {
  return nativeFrame(env, code, [&] {
    return getPathAttributes(env, pathOf(env, place).c_str());
  });
}

template <class Place>
void setAttributes(JNIEnv* env, jint code, const Place& place, jobject attributes) {
  nativeFrame(env, code, [&] {
    setPathAttributes(env, pathOf(env, place).c_str(), attributes);
  });
}

}  // namespace

// The natives differ in the place, the principal and the codes only; hence a table.

#define Item_PARAMETERS jstring folder, jstring subfolder, jstring name
#define Item_PLACE (Item{folder, subfolder, name})
#define Folder_PARAMETERS jstring folder, jstring subfolder
#define Folder_PLACE (Folder{folder, subfolder})

#define DESKTOP_NATIVE(Result, method, ...)                                                \
  JNIEXPORT Result JNICALL                                                                 \
      Java_com_corvane_wizard_platform_win32_Win32DesktopServiceImpl_##method(JNIEnv* env, \
                                                                              jobject,     \
                                                                              __VA_ARGS__)

/// getDesktop<Place><what> and setDesktop<Place><what>, such as getDesktopItemOwnerGroup, with the
/// codes of their failures.
#define PRINCIPAL_NATIVES(Place, what, which, getCode, setCode)                        \
  DESKTOP_NATIVE(jstring, getDesktop##Place##what, Place##_PARAMETERS) {               \
    return getPrincipal(env, getCode, which, Place##_PLACE);                           \
  }                                                                                    \
  DESKTOP_NATIVE(void, setDesktop##Place##what, Place##_PARAMETERS, jstring account) { \
    setPrincipal(env, setCode, which, Place##_PLACE, account);                         \
  }

#define ATTRIBUTE_NATIVES(Place, getCode, setCode)                                              \
  DESKTOP_NATIVE(jobject, getDesktop##Place##Attributes, Place##_PARAMETERS) {                  \
    return getAttributes(env, getCode, Place##_PLACE);                                          \
  }                                                                                             \
  DESKTOP_NATIVE(void, setDesktop##Place##Attributes, Place##_PARAMETERS, jobject attributes) { \
    setAttributes(env, setCode, Place##_PLACE, attributes);                                     \
  }

extern "C" {

PRINCIPAL_NATIVES(Item, OwnerGroup, Principal::kGroup, -80010, -80011)
PRINCIPAL_NATIVES(Item, Owner, Principal::kOwner, -80012, -80013)
PRINCIPAL_NATIVES(Folder, OwnerGroup, Principal::kGroup, -80014, -80015)
PRINCIPAL_NATIVES(Folder, Owner, Principal::kOwner, -80016, -80017)
ATTRIBUTE_NATIVES(Item, -80018, -80019)
ATTRIBUTE_NATIVES(Folder, -80020, -80021)

}  // extern "C"
