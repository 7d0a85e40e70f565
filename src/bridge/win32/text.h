#pragma once

#include <cstdint>
#include <string>

#include "bridge/win32/byte_buffer.h"

namespace corvane {

/// The library's UTF-16 string. All text that is built for Java or kept between system calls is
/// one.
using WString = std::wstring;
static_assert(sizeof(wchar_t) == 2, "a wide character of Windows is a UTF-16 unit");

/// For what makes no difference between an absent text and an empty one.
inline WString textOrEmpty(const wchar_t* text) {
  return text == nullptr ? WString() : WString(text);
}
inline bool hasText(const wchar_t* text) noexcept {
  return text != nullptr && *text != L'\0';
}

/// The four conversions go through the process's ANSI code page (GetACP, flags 0, the system's
/// default character) with WideCharToMultiByte and MultiByteToWideChar: one call for the size, one
/// that converts. Each returns the number of elements written, 0 when the text is null or cannot be
/// converted: no error is raised here. They throw std::bad_alloc, and std::length_error for a
/// length beyond the system's int.

/// Converts NUL-terminated UTF-16 to ANSI, terminator included.
uint32_t wideToAnsi(const wchar_t* text, ByteBuffer& out);

/// Converts exactly `length` units, embedded NULs like any other; adds no terminator.
uint32_t wideToAnsiN(const wchar_t* text, uint32_t length, ByteBuffer& out);

/// Converts NUL-terminated ANSI text to UTF-16, terminator included.
uint32_t ansiToWide(const char* text, ByteBuffer& out);

/// Converts exactly `byteLength` bytes.
uint32_t ansiToWideN(const char* text, uint32_t byteLength, ByteBuffer& out);

/// For what must not go on with a text that was lost in its conversion: a path that came out empty
/// would name something else. Throws Win32Failure with ERROR_NO_UNICODE_TRANSLATION for a count of
/// 0.
void throwUnlessConverted(uint32_t written);

/// The text that `data` holds: up to its first NUL, and never more than `length` characters. For
/// data that the system returned, which need not be terminated.
WString boundedText(const wchar_t* data, size_t length);
WString boundedTextFromAnsi(const char* data, size_t length);

/// Makes `path` end in a separator: appends a backslash unless it ends in one or in a slash; an
/// empty path becomes one backslash.
void appendPathSeparator(WString& path);

}  // namespace corvane
