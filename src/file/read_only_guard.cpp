#include "file/read_only_guard.h"

#include "bridge/last_error.h"
#include "bridge/platform.h"

ReadOnlyGuard::ReadOnlyGuard(const wchar_t* path, bool restore)
    : ansi_(isWindows9x()), restore_(restore) {
  if (ansi_) {
    wideToAnsi(path, ansiPath_);
  } else if (path != nullptr) {
    widePath_ = path;
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
  return ansi_ ? GetFileAttributesA(ansiPath_.data<const char>())
               : GetFileAttributesW(widePath_ ? widePath_->c_str() : nullptr);
}

void ReadOnlyGuard::setAttributes(DWORD attributes) const noexcept {
  if (ansi_) {
    SetFileAttributesA(ansiPath_.data<const char>(), attributes);
  } else {
    SetFileAttributesW(widePath_ ? widePath_->c_str() : nullptr, attributes);
  }
}
