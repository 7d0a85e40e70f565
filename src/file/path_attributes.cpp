#include "file/path_attributes.h"

#include <string_view>

#include "bridge/win32/ansi_or_wide.h"
#include "file/file_attribute_mapper.h"

namespace {

/// Does the conversion. A failure of it is E_FAIL: Windows has no name for the reason.
template <class Conversion>
DWORD failureOf(const Conversion& conversion) {
  try {
    conversion();
    return ERROR_SUCCESS;
  } catch (const AttributeException&) {
    return static_cast<DWORD>(E_FAIL);
  }
}

}  // namespace

DWORD getPathAttributes(JNIEnv* env, const wchar_t* path, jobject& attributes) {
  const DWORD mask = ansiOrWide(GetFileAttributesA, GetFileAttributesW, path);
  if (mask == INVALID_FILE_ATTRIBUTES) {
    return GetLastError();
  }
  return failureOf([&] { attributes = FileAttributeMapper(env, mask).build(); });
}

DWORD setPathAttributes(JNIEnv* env, const wchar_t* path, jobject attributes) {
  if (path != nullptr && std::wstring_view(path) == L".") {
    return static_cast<DWORD>(E_INVALIDARG);
  }
  if (attributes == nullptr) {
    return ERROR_INVALID_PARAMETER;
  }
  DWORD mask = 0;
  const DWORD failure = failureOf([&] { mask = FileAttributeMapper(env).read(attributes); });
  if (failure != ERROR_SUCCESS) {
    return failure;
  }
  const BOOL set = ansiOrWide(SetFileAttributesA, SetFileAttributesW, path, mask);
  return set != FALSE ? ERROR_SUCCESS : GetLastError();
}
