#pragma once

#include <concepts>

#include "bridge/win32/platform.h"
#include "bridge/win32/text.h"

namespace corvane {

/// A buffer that the system fills with text of either family: bytes or UTF-16 units.
class TextBuffer {
 public:
  explicit TextBuffer(void* data) noexcept : data_(data) {}
  operator char*() const noexcept { return static_cast<char*>(data_); }
  operator wchar_t*() const noexcept { return static_cast<wchar_t*>(data_); }

 private:
  void* data_;
};

/// A text converted for one call of an ANSI function; null stays null. Throws Win32Failure when it
/// cannot be converted.
class AnsiText {
 public:
  explicit AnsiText(const wchar_t* text) {
    if (text != nullptr) {
      throwUnlessConverted(wideToAnsi(text, text_));
    }
  }
  operator const char*() const noexcept { return text_.data<char>(); }

 private:
  ByteBuffer text_;
};

/// An argument as the ANSI function takes it: a text converted, anything else as it is.
inline AnsiText ansiArgument(const wchar_t* text) {
  return AnsiText(text);
}
template <class Argument>
Argument ansiArgument(Argument argument) {
  return argument;
}

/// Calls the function of the family that `ansi` says. Arguments are those of the wide function;
/// each text (`const wchar_t*`) is converted for the ANSI one. The thread's last error is the
/// function's own when this returns.
template <class AnsiFunction, class WideFunction, class... Arguments>
auto ansiOrWide(std::same_as<bool> auto ansi,
                AnsiFunction* a,
                WideFunction* w,
                Arguments... arguments) {
  return ansi ? a(ansiArgument(arguments)...) : w(arguments...);
}

/// The same for the Windows that this is.
template <class AnsiFunction, class WideFunction, class... Arguments>
auto ansiOrWide(AnsiFunction* a, WideFunction* w, Arguments... arguments) {
  return ansiOrWide(isWindows9x(), a, w, arguments...);
}

}  // namespace corvane
