#pragma once

#include <cstdint>
#include <string>

#include "bridge/byte_buffer.h"

/// The library's UTF-16 string. All text that is built for Java or kept between system calls is
/// one.
using WString = std::wstring;
static_assert(sizeof(wchar_t) == 2, "a wide character of Windows is a UTF-16 unit");

/// The four conversions go through the process's ANSI code page (GetACP, flags 0, the system's
/// default character) with WideCharToMultiByte and MultiByteToWideChar: one call for the size, one
/// that converts. What cannot be converted gives an empty buffer, and so does a null text; no error
/// is raised. They throw std::bad_alloc, and std::length_error for a length beyond the system's
/// int.

/// Converts NUL-terminated UTF-16 to ANSI, terminator included.
void wideToAnsi(const wchar_t* text, ByteBuffer& out);

/// Converts exactly `length` units, embedded NULs like any other; adds no terminator.
void wideToAnsiN(const wchar_t* text, uint32_t length, ByteBuffer& out);

/// Converts NUL-terminated ANSI text to UTF-16, terminator included.
void ansiToWide(const char* text, ByteBuffer& out);

/// Converts exactly `byteLength` bytes; returns the number of UTF-16 units written.
uint32_t ansiToWideN(const char* text, uint32_t byteLength, ByteBuffer& out);

/// NUL-terminated ANSI text as a string; empty when it is null or cannot be converted.
WString wideFromAnsi(const char* text);

/// The text that `data` holds: up to its first NUL, and never more than `length` characters. For
/// data that the system returned, which need not be terminated.
WString boundedText(const wchar_t* data, size_t length);
WString boundedTextFromAnsi(const char* data, size_t length);

/// Makes `path` end in a separator: appends a backslash unless it ends in one or in a slash; an
/// empty path becomes one backslash.
void appendPathSeparator(WString& path);
