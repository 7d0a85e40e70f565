#include "file/properties/path_attributes.h"

#include <string_view>

#include "bridge/win32/ansi_or_wide.h"
#include "bridge/win32/win32_failure.h"
#include "file/properties/file_attribute_mapper.h"

namespace corvane {

namespace {

/// The result of a conversion; no AttributeException leaves this file.
template <class Conversion>
auto converted(const Conversion& conversion) {
  try {
    return conversion();
  } catch (const AttributeException&) {
    throw Win32Failure(static_cast<uint32_t>(E_FAIL));
  }
}

}  // namespace

jobject getPathAttributes(JNIEnv* env, const wchar_t* path) {
  const DWORD mask = ansiOrWide(GetFileAttributesA, GetFileAttributesW, path);
  if (mask == INVALID_FILE_ATTRIBUTES) {
    throwUnlessZero(GetLastError());
    return nullptr;
  }
  return converted([&] { return FileAttributeMapper(env, mask).build(); });
}

void setPathAttributes(JNIEnv* env, const wchar_t* path, jobject attributes) {
  if (path != nullptr && std::wstring_view(path) == L".") {
    throw Win32Failure(static_cast<uint32_t>(E_INVALIDARG));
  }
  if (attributes == nullptr) {
    throw Win32Failure(ERROR_INVALID_PARAMETER);
  }
  const DWORD mask = converted([&] { return FileAttributeMapper(env).read(attributes); });
  if (ansiOrWide(SetFileAttributesA, SetFileAttributesW, path, mask) == FALSE) {
    throwUnlessZero(GetLastError());
  }
}

}  // namespace corvane
