#include "bridge/win32/expand_environment.h"

#include <windows.h>

#include <cstring>
#include <string>

namespace corvane {

namespace {

/// The size of the buffer that only asks ExpandEnvironmentStrings how much it needs.
constexpr DWORD kScratchSize = 4;

uint32_t expandWide(const wchar_t* text, ByteBuffer& out) {
  wchar_t scratch[kScratchSize];
  const DWORD count = ExpandEnvironmentStringsW(text, scratch, kScratchSize);
  if (count == 0) {
    return 0;
  }
  out.allocate(count, sizeof(wchar_t));
  return ExpandEnvironmentStringsW(text, out.data<wchar_t>(), out.count());
}

uint32_t expandAnsi(const wchar_t* text, ByteBuffer& out) {
  ByteBuffer ansi;
  if (wideToAnsi(text, ansi) == 0) {
    return 0;
  }
  char scratch[kScratchSize];
  DWORD count = ExpandEnvironmentStringsA(ansi.data<char>(), scratch, kScratchSize);
  if (count == 0) {
    return 0;
  }
  ByteBuffer expanded;
  expanded.allocate(count, sizeof(char));
  const auto* bytes = expanded.data<char>();
  count = ExpandEnvironmentStringsA(ansi.data<char>(), expanded.data<char>(), expanded.count());
  // Through a string, because an environment that grew in between leaves no terminator.
  ansiToWide(std::string(bytes, strnlen(bytes, expanded.count())).c_str(), out);
  return count;
}

}  // namespace

uint32_t expandEnvironment(bool ansi, const wchar_t* text, ByteBuffer& out) {
  return ansi ? expandAnsi(text, out) : expandWide(text, out);
}

WString expandedText(bool ansi, const WString& text) {
  ByteBuffer out;
  const uint32_t count = expandEnvironment(ansi, text.c_str(), out);
  return count == 0 ? WString() : boundedText(out.data<wchar_t>(), out.count());
}

}  // namespace corvane
