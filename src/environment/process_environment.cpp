#include "environment/process_environment.h"

#include <windows.h>

#include <utility>

#include "bridge/win32/ansi_or_wide.h"
#include "bridge/win32/win32_failure.h"

namespace corvane {

namespace {

/// Enough for most values; a longer one is asked for again.
constexpr DWORD kUsualSize = 255;

/// What `get(buffer, size)` puts into a buffer, which holds the terminator too; empty when it
/// answers 0. It answers the size that it needs when that is more: again and again, since another
/// thread may set a longer value in between.
template <class Character, class Get>
std::basic_string<Character> valueOf(const Get& get) {
  std::basic_string<Character> value(kUsualSize, Character());
  DWORD length = get(value.data(), kUsualSize);
  while (length > value.size()) {
    value.resize(length);
    length = get(value.data(), length);
  }
  value.resize(length);
  return value;
}

WString ansiValue(const wchar_t* name) {
  const AnsiText ansi(name);
  const std::string value = valueOf<char>(
      [&](char* buffer, DWORD size) { return GetEnvironmentVariableA(ansi, buffer, size); });
  return boundedTextFromAnsi(value.data(), value.size());
}

WString wideValue(const wchar_t* name) {
  return valueOf<wchar_t>(
      [&](wchar_t* buffer, DWORD size) { return GetEnvironmentVariableW(name, buffer, size); });
}

}  // namespace

std::optional<WString> processVariable(const wchar_t* name) {
  WString value = isWindowsNT() ? wideValue(name) : ansiValue(name);
  return value.empty() ? std::nullopt : std::optional(std::move(value));
}

void setProcessVariable(const wchar_t* name, const wchar_t* value) {
  const bool ansi = !isWindowsNT();
  if (ansiOrWide(ansi, SetEnvironmentVariableA, SetEnvironmentVariableW, name, value) != FALSE) {
    return;
  }
  const DWORD error = GetLastError();
  if (value != nullptr || error != ERROR_ENVVAR_NOT_FOUND) {
    throwUnlessZero(error);
  }
}

}  // namespace corvane
