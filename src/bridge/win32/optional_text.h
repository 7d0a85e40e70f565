#pragma once

#include <cwchar>
#include <memory>
#include <optional>
#include <vector>

#include "bridge/win32/text.h"

namespace corvane {

/// An owned text that may be absent, as most texts that Java gives may: `get()` is null then, and
/// null is what Windows is passed. This is the one form in which such a text is held, in lists too;
/// handed on it is a `const wchar_t*`.
class OptionalText {
 public:
  OptionalText() = default;
  explicit OptionalText(const wchar_t* text)
      : OptionalText(text, text == nullptr ? 0 : std::wcslen(text)) {}

  /// The first `length` units of `text`, and zeros behind the first NUL among them.
  OptionalText(const wchar_t* text, size_t length) {
    if (text != nullptr) {
      units_ = std::make_unique<wchar_t[]>(length + 1);
      std::wcsncpy(units_.get(), text, length);
    }
  }

  const wchar_t* get() const noexcept { return units_.get(); }

 private:
  std::unique_ptr<wchar_t[]> units_;
};

/// A list of such texts, which may be absent itself.
using OptionalTexts = std::optional<std::vector<OptionalText>>;

}  // namespace corvane
