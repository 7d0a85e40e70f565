#pragma once

#include <windows.h>

#include <cstddef>
#include <memory>

namespace corvane {

/// Overwrites the `length` units of a text before it is freed.
struct OverwritingDelete {
  size_t length = 0;
  void operator()(wchar_t* units) const noexcept {
    SecureZeroMemory(units, length * sizeof(wchar_t));
    delete[] units;
  }
};

/// A password, as NUL-terminated UTF-16; null when it is absent. It is moved and never copied, and
/// at the end it is overwritten: memory that is given back may turn up in a dump or a page file.
class SecretText {
 public:
  SecretText() = default;
  /// `length` NULs, for the password to be written there. Throws std::bad_alloc.
  explicit SecretText(size_t length)
      : units_(new wchar_t[length + 1](), OverwritingDelete{length}) {}

  wchar_t* get() noexcept { return units_.get(); }
  const wchar_t* get() const noexcept { return units_.get(); }

 private:
  std::unique_ptr<wchar_t[], OverwritingDelete> units_;
};

}  // namespace corvane
