#include "file/properties/fixed_file_info.h"

#include "bridge/java/java_bean.h"

namespace corvane {

namespace {

struct Field {
  using Value = DWORD VS_FIXEDFILEINFO::*;
  const char* property;
  Value value;
};

/// In the order in which they are set.
constexpr Field kFields[] = {
    {"Signature", &VS_FIXEDFILEINFO::dwSignature},
    {"StrucVersion", &VS_FIXEDFILEINFO::dwStrucVersion},
    {"FileVersionMS", &VS_FIXEDFILEINFO::dwFileVersionMS},
    {"FileVersionLS", &VS_FIXEDFILEINFO::dwFileVersionLS},
    {"ProductVersionMS", &VS_FIXEDFILEINFO::dwProductVersionMS},
    {"ProductVersionLS", &VS_FIXEDFILEINFO::dwProductVersionLS},
    {"FileFlagsMask", &VS_FIXEDFILEINFO::dwFileFlagsMask},
    {"FileFlags", &VS_FIXEDFILEINFO::dwFileFlags},
    {"FileOS", &VS_FIXEDFILEINFO::dwFileOS},
    {"FileType", &VS_FIXEDFILEINFO::dwFileType},
    {"FileSubtype", &VS_FIXEDFILEINFO::dwFileSubtype},
    {"FileDateMS", &VS_FIXEDFILEINFO::dwFileDateMS},
    {"FileDateLS", &VS_FIXEDFILEINFO::dwFileDateLS},
};

}  // namespace

jobject newFixedFileInfo(JNIEnv* env, const VS_FIXEDFILEINFO& info) {
  constexpr const char* kClass = "com/corvane/wizard/platform/win32/WindowsFixedFileInfo";
  return newBean(env, kClass, [&](const BeanWriter& bean) {
    for (const Field& field : kFields) {
      bean.set(field.property, info.*field.value);
    }
  });
}

}  // namespace corvane
