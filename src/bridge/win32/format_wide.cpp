#include "bridge/win32/format_wide.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <string_view>

namespace corvane {

namespace {

/// Room for the digits of any integer, with sign and prefix, and for what "%e" has beside digits.
constexpr size_t kNumberLength = 32;
/// Room for the largest number in "%f", before its fraction.
constexpr size_t kWholeDigits = 312;
constexpr int kDefaultPrecision = 6;

/// The C runtime's own vswprintf: what stands under that name means something else by "%s" with
/// some compilers. Returns the length of the text, which fits.
size_t write(WString& out, const wchar_t* format, va_list arguments) {
  return static_cast<size_t>(std::max(0, _vsnwprintf(out.data(), out.size(), format, arguments)));
}

size_t writeReal(WString& out, const wchar_t* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const size_t length = write(out, format, arguments);
  va_end(arguments);
  return length;
}

// NOLINTBEGIN(clang-analyzer-valist.Uninitialized): that of the class is set by its constructor.
/// Walks a format beside its arguments and bounds the length of the text.
class LengthBound {
 public:
  /// `arguments` are taken one by one; on x64 each has a place of eight bytes.
  LengthBound(const wchar_t* format, va_list arguments) : at_(format), arguments_(arguments) {}

  size_t get() {
    size_t bound = 0;
    while (*at_ != L'\0') {
      const wchar_t unit = *at_++;
      if (unit == L'%' && *at_ != L'%') {
        bound += conversion();
      } else {
        at_ += unit == L'%' ? 1 : 0;  // "%%" is one
        ++bound;
      }
    }
    return bound;
  }

 private:
  size_t conversion() {
    at_ += std::wcsspn(at_, L"-+ #0");
    const auto width = static_cast<size_t>(std::abs(number()));
    int precision = -1;
    if (*at_ == L'.') {
      ++at_;
      precision = number();
    }
    const size_t sizeLength = std::wcsspn(at_, L"hlwLI") + (*at_ == L'I' ? digits(at_ + 1) : 0);
    const std::wstring_view size(at_, sizeLength);
    at_ += sizeLength;
    return std::max(width, valueLength(size, *at_ == L'\0' ? L'\0' : *at_++, precision));
  }

  static size_t digits(const wchar_t* text) { return std::wcsspn(text, L"0123456789"); }

  /// A width or a precision; "*" takes it from the arguments.
  int number() {
    if (*at_ == L'*') {
      ++at_;
      return va_arg(arguments_, int);
    }
    const int value = static_cast<int>(std::wcstol(at_, nullptr, 10));
    at_ += digits(at_);
    return value;
  }

  size_t valueLength(std::wstring_view size, wchar_t type, int precision) {
    if (type == L's' || type == L'S') {
      const bool narrow = size.empty() ? type == L'S' : size == L"h";
      return textLength(narrow, static_cast<size_t>(precision));
    }
    const auto places = static_cast<size_t>(precision < 0 ? kDefaultPrecision : precision);
    if (std::wcschr(L"aAeEfFgG", type) != nullptr) {
      return realLength(places);
    }
    va_arg(arguments_, long long);
    return kNumberLength + places;
  }

  /// A text is not read beyond its precision: it needs no terminator there.
  size_t textLength(bool narrow, size_t longest) {
    const void* text = va_arg(arguments_, const void*);
    if (text == nullptr) {
      return kNumberLength;  // "(null)"
    }
    return narrow ? strnlen(static_cast<const char*>(text), longest)
                  : wcsnlen(static_cast<const wchar_t*>(text), longest);
  }

  size_t realLength(size_t places) {
    WString digits(kWholeDigits + places, L'\0');
    const double value = va_arg(arguments_, double);
    const size_t length = writeReal(digits, L"%*.*f", 0, static_cast<int>(places), value);
    return std::max(length, kNumberLength + places);
  }

  const wchar_t* at_;
  va_list arguments_;
};
// NOLINTEND(clang-analyzer-valist.Uninitialized)

}  // namespace

WString formatWide(const wchar_t* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  WString text(LengthBound(format, arguments).get(), L'\0');
  text.resize(write(text, format, arguments));
  va_end(arguments);
  return text;
}

}  // namespace corvane
