#include "bridge/text.h"

#include <windows.h>

#include <climits>
#include <cwchar>
#include <stdexcept>

namespace {

/// The length that tells the system's conversions to go up to the terminator and include it.
constexpr int kWholeString = -1;

int systemLength(uint32_t length) {
  if (length > INT_MAX) {
    throw std::length_error("text too long for the system's conversion");
  }
  return static_cast<int>(length);
}

void toAnsi(const wchar_t* text, int length, ByteBuffer& out) {
  const int size = WideCharToMultiByte(GetACP(), 0, text, length, nullptr, 0, nullptr, nullptr);
  out.allocate(static_cast<uint32_t>(size), sizeof(char));
  if (size != 0) {
    WideCharToMultiByte(GetACP(), 0, text, length, out.data<char>(), size, nullptr, nullptr);
  }
}

uint32_t toWide(const char* text, int length, ByteBuffer& out) {
  const int size = MultiByteToWideChar(GetACP(), 0, text, length, nullptr, 0);
  out.allocate(static_cast<uint32_t>(size), sizeof(wchar_t));
  if (size == 0) {
    return 0;
  }
  const int written = MultiByteToWideChar(GetACP(), 0, text, length, out.data<wchar_t>(), size);
  return static_cast<uint32_t>(written);
}

}  // namespace

void wideToAnsi(const wchar_t* text, ByteBuffer& out) {
  out.release();
  if (text != nullptr) {
    toAnsi(text, kWholeString, out);
  }
}

void wideToAnsiN(const wchar_t* text, uint32_t length, ByteBuffer& out) {
  toAnsi(text, systemLength(length), out);
}

void ansiToWide(const char* text, ByteBuffer& out) {
  out.release();
  if (text != nullptr) {
    toWide(text, kWholeString, out);
  }
}

uint32_t ansiToWideN(const char* text, uint32_t byteLength, ByteBuffer& out) {
  return toWide(text, systemLength(byteLength), out);
}

WString wideFromAnsi(const char* text) {
  ByteBuffer wide;
  ansiToWide(text, wide);
  return boundedText(wide.data<wchar_t>(), wide.count());
}

WString boundedText(const wchar_t* data, size_t length) {
  return length == 0 ? WString() : WString(data, wcsnlen(data, length));
}

WString boundedTextFromAnsi(const char* data, size_t length) {
  // A copy, because the conversion needs a terminator and `data` may have none.
  return length == 0 ? WString() : wideFromAnsi(std::string(data, strnlen(data, length)).c_str());
}

void appendPathSeparator(WString& path) {
  if (path.empty() || (path.back() != L'\\' && path.back() != L'/')) {
    path += L'\\';
  }
}
