#include <com_corvane_wizard_platform_win32_Win32DesktopServiceImpl.h>

#include <optional>
#include <utility>

#include "bridge/java/java_values.h"
#include "bridge/java/jni_string.h"
#include "bridge/java/native_text.h"
#include "bridge/java/nt_only.h"
#include "desktop/place.h"
#include "file/properties/file_owner.h"
#include "file/properties/path_attributes.h"

using namespace corvane;

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

/// Nothing when a token cannot be replaced. That is not reported: the path is empty then, or the
/// shortcut's file name alone, and what that leads to is.
std::optional<Place> findPlace(const WString& folder, const WString& subfolder) {
  WString expanded;
  try {
    expanded = expandFolderTokens(folder);
  } catch (const Win32Failure&) {
    return std::nullopt;
  }
  return Place(std::move(expanded), subfolder);
}

WString pathOf(JNIEnv* env, const Folder& group) {
  const WString folder = textFromJava(env, group.folder);
  const std::optional<Place> place = findPlace(folder, textFromJava(env, group.subfolder));
  return place ? place->path() : WString();
}

WString pathOf(JNIEnv* env, const Item& item) {
  const WString folder = textFromJava(env, item.folder);
  const WString subfolder = textFromJava(env, item.subfolder);
  const WString name = textFromJava(env, item.name);
  const std::optional<Place> place = findPlace(folder, subfolder);
  return place ? place->item(name) : name + L".lnk";
}

template <class Named>
jstring getPrincipal(JNIEnv* env, jint code, Principal which, const Named& place) {
  return nativeFrame(env, [&] {
    return onNTFamily(env, [&] {
      return nativeText(env, code, [&](WString& name) {
        name = readPrincipal(pathOf(env, place).c_str(), which).name;
      });
    });
  });
}

template <class Named>
void setPrincipal(JNIEnv* env, jint code, Principal which, const Named& place, jstring account) {
  nativeFrame(env, code, [&] {
    onNTFamily(env, [&] {
      const WString path = pathOf(env, place);
      const JniString name(env, account);
      writePrincipal(path.c_str(), which, name.get());
    });
  });
}

template <class Named>
jobject getAttributes(JNIEnv* env, jint code, const Named& place) {
  return nativeFrame(env, code, [&] { return getPathAttributes(env, pathOf(env, place).c_str()); });
}

template <class Named>
void setAttributes(JNIEnv* env, jint code, const Named& place, jobject attributes) {
  nativeFrame(env, code, [&] { setPathAttributes(env, pathOf(env, place).c_str(), attributes); });
}

}  // namespace

// The natives differ in the place, the principal and the codes of their failures only.

extern "C" {

NATIVE(jstring, Win32DesktopServiceImpl, getDesktopItemOwnerGroup)
(JNIEnv* env, jobject, jstring folder, jstring subfolder, jstring name) {
  return getPrincipal(env, -80010, Principal::kGroup, Item{folder, subfolder, name});
}

NATIVE(void, Win32DesktopServiceImpl, setDesktopItemOwnerGroup)
(JNIEnv* env, jobject, jstring folder, jstring subfolder, jstring name, jstring group) {
  setPrincipal(env, -80011, Principal::kGroup, Item{folder, subfolder, name}, group);
}

NATIVE(jstring, Win32DesktopServiceImpl, getDesktopItemOwner)
(JNIEnv* env, jobject, jstring folder, jstring subfolder, jstring name) {
  return getPrincipal(env, -80012, Principal::kOwner, Item{folder, subfolder, name});
}

NATIVE(void, Win32DesktopServiceImpl, setDesktopItemOwner)
(JNIEnv* env, jobject, jstring folder, jstring subfolder, jstring name, jstring owner) {
  setPrincipal(env, -80013, Principal::kOwner, Item{folder, subfolder, name}, owner);
}

NATIVE(jstring, Win32DesktopServiceImpl, getDesktopFolderOwnerGroup)
(JNIEnv* env, jobject, jstring folder, jstring subfolder) {
  return getPrincipal(env, -80014, Principal::kGroup, Folder{folder, subfolder});
}

NATIVE(void, Win32DesktopServiceImpl, setDesktopFolderOwnerGroup)
(JNIEnv* env, jobject, jstring folder, jstring subfolder, jstring group) {
  setPrincipal(env, -80015, Principal::kGroup, Folder{folder, subfolder}, group);
}

NATIVE(jstring, Win32DesktopServiceImpl, getDesktopFolderOwner)
(JNIEnv* env, jobject, jstring folder, jstring subfolder) {
  return getPrincipal(env, -80016, Principal::kOwner, Folder{folder, subfolder});
}

NATIVE(void, Win32DesktopServiceImpl, setDesktopFolderOwner)
(JNIEnv* env, jobject, jstring folder, jstring subfolder, jstring owner) {
  setPrincipal(env, -80017, Principal::kOwner, Folder{folder, subfolder}, owner);
}

NATIVE(jobject, Win32DesktopServiceImpl, getDesktopItemAttributes)
(JNIEnv* env, jobject, jstring folder, jstring subfolder, jstring name) {
  return getAttributes(env, -80018, Item{folder, subfolder, name});
}

NATIVE(void, Win32DesktopServiceImpl, setDesktopItemAttributes)
(JNIEnv* env, jobject, jstring folder, jstring subfolder, jstring name, jobject attributes) {
  setAttributes(env, -80019, Item{folder, subfolder, name}, attributes);
}

NATIVE(jobject, Win32DesktopServiceImpl, getDesktopFolderAttributes)
(JNIEnv* env, jobject, jstring folder, jstring subfolder) {
  return getAttributes(env, -80020, Folder{folder, subfolder});
}

NATIVE(void, Win32DesktopServiceImpl, setDesktopFolderAttributes)
(JNIEnv* env, jobject, jstring folder, jstring subfolder, jobject attributes) {
  setAttributes(env, -80021, Folder{folder, subfolder}, attributes);
}

}  // extern "C"
