#include "bridge/win32/text.h"

#include <windows.h>

#include <climits>
#include <cstring>
#include <cwchar>
#include <stdexcept>

#include "bridge/win32/win32_failure.h"

namespace corvane {

namespace {

/// The length that tells the system's conversions to go up to the terminator and include it.
constexpr int kWholeString = -1;

int systemLength(uint32_t length) {
  if (length > INT_MAX) {
    throw std::length_error("text too long for the system's conversion");
  }
  return static_cast<int>(length);
}

uint32_t toAnsi(const wchar_t* text, int length, ByteBuffer& out) {
  const int size = WideCharToMultiByte(GetACP(), 0, text, length, nullptr, 0, nullptr, nullptr);
  out.allocate(static_cast<uint32_t>(size), sizeof(char));
  if (size == 0) {
    return 0;
  }
  return static_cast<uint32_t>(
      WideCharToMultiByte(GetACP(), 0, text, length, out.data<char>(), size, nullptr, nullptr));
}

uint32_t toWide(const char* text, int length, ByteBuffer& out) {
  const int size = MultiByteToWideChar(GetACP(), 0, text, length, nullptr, 0);
  out.allocate(static_cast<uint32_t>(size), sizeof(wchar_t));
  if (size == 0) {
    return 0;
  }
  return static_cast<uint32_t>(
      MultiByteToWideChar(GetACP(), 0, text, length, out.data<wchar_t>(), size));
}

}  // namespace

uint32_t wideToAnsi(const wchar_t* text, ByteBuffer& out) {
  out.release();
  return text == nullptr ? 0 : toAnsi(text, kWholeString, out);
}

uint32_t wideToAnsiN(const wchar_t* text, uint32_t length, ByteBuffer& out) {
  return toAnsi(text, systemLength(length), out);
}

uint32_t ansiToWide(const char* text, ByteBuffer& out) {
  out.release();
  return text == nullptr ? 0 : toWide(text, kWholeString, out);
}

uint32_t ansiToWideN(const char* text, uint32_t byteLength, ByteBuffer& out) {
  return toWide(text, systemLength(byteLength), out);
}

void throwUnlessConverted(uint32_t written) {
  if (written == 0) {
    throw Win32Failure(ERROR_NO_UNICODE_TRANSLATION);
  }
}

WString boundedText(const wchar_t* data, size_t length) {
  return length == 0 ? WString() : WString(data, wcsnlen(data, length));
}

WString boundedTextFromAnsi(const char* data, size_t length) {
  if (length == 0) {
    return {};
  }
  // A copy, because the conversion needs a terminator and `data` may have none.
  const std::string text(data, strnlen(data, length));
  ByteBuffer wide;
  throwUnlessConverted(ansiToWide(text.c_str(), wide));
  return boundedText(wide.data<wchar_t>(), wide.count());
}

void appendPathSeparator(WString& path) {
  if (path.empty() || (path.back() != L'\\' && path.back() != L'/')) {
    path += L'\\';
  }
}

}  // namespace corvane
