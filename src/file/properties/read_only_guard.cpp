#include "file/properties/read_only_guard.h"

#include "bridge/win32/last_error.h"
#include "bridge/win32/platform.h"

namespace corvane {

ReadOnlyGuard::ReadOnlyGuard(const wchar_t* path, bool restore)
    : ansi_(isWindows9x()), restore_(restore) {
  if (ansi_) {
    wideToAnsi(path, ansiPath_);
  } else {
    widePath_ = OptionalText(path);
  }
  attributes_ = getAttributes();
  // INVALID_FILE_ATTRIBUTES has the bit too, and need not be told apart: for a path that does not
  // exist the write below fails, and nobody minds.
  if ((attributes_ & FILE_ATTRIBUTE_READONLY) != 0) {
    changed_ = true;
    setAttributes(attributes_ - FILE_ATTRIBUTE_READONLY);
  }
}

ReadOnlyGuard::~ReadOnlyGuard() {
  const LastErrorKeeper keeper;
  if (restore_ && changed_) {
    setAttributes(attributes_);
  }
}

DWORD ReadOnlyGuard::getAttributes() const noexcept {
  return ansi_ ? GetFileAttributesA(ansiPath_.data<char>()) : GetFileAttributesW(widePath_.get());
}

void ReadOnlyGuard::setAttributes(DWORD attributes) const noexcept {
  if (ansi_) {
    SetFileAttributesA(ansiPath_.data<char>(), attributes);
  } else {
    SetFileAttributesW(widePath_.get(), attributes);
  }
}

}  // namespace corvane
