#include "bridge/win32/path.h"

#include <windows.h>

#include <algorithm>
#include <cstring>
#include <cwchar>
#include <string_view>

#include "bridge/win32/ansi_or_wide.h"

namespace corvane {

namespace {

constexpr const wchar_t* kSeparators = L"\\/";

bool isSeparator(wchar_t character) noexcept {
  return character == L'\\' || character == L'/';
}

/// `\\.\`, `\\?\` or `\??\`; Windows takes slashes in it too.
bool beginsWithDevicePrefix(std::wstring_view path) noexcept {
  return path.size() >= 4 && isSeparator(path[0]) && isSeparator(path[3]) &&
         ((isSeparator(path[1]) && (path[2] == L'.' || path[2] == L'?')) ||
          (path[1] == L'?' && path[2] == L'?'));
}

/// A letter and a colon. Windows cuts dots and blanks behind it off, but that `X:.` is the current
/// directory of the drive and `X:..` the one above it.
bool isDrive(std::wstring_view name, bool device) noexcept {
  if (name.size() < 2 || name[1] != L':') {
    return false;
  }
  const std::wstring_view rest = name.substr(2);
  return rest.find_first_not_of(L". ") == rest.npos && (device || (rest != L"." && rest != L".."));
}

bool isVolume(const WString& name) noexcept {
  return _wcsnicmp(name.c_str(), L"Volume{", 7) == 0 ||
         _wcsnicmp(name.c_str(), L"HarddiskVolume", 14) == 0;
}

bool namesSomething(std::wstring_view component) noexcept {
  return component.find_first_not_of(L". ") != component.npos;
}

bool isAscii(const WString& text) noexcept {
  return std::all_of(text.begin(), text.end(), [](wchar_t unit) { return unit < 0x80; });
}

}  // namespace

bool pathExists(const WString& path) {
  return ansiOrWide(GetFileAttributesA, GetFileAttributesW, path.c_str()) !=
         INVALID_FILE_ATTRIBUTES;
}

WString asSystemReads(const WString& text) {
  if (isAscii(text) || !isWindows9x()) {
    return text;
  }
  const AnsiText ansi(text.c_str());
  const char* const bytes = ansi;
  return boundedTextFromAnsi(bytes, std::strlen(bytes));
}

bool isDriveAlone(const wchar_t* path) {
  const WString text = asSystemReads(textOrEmpty(path));
  if (!beginsWithDevicePrefix(text)) {
    return isDrive(text, false);
  }
  // Behind the prefix alone, or where the system's root of all devices stands in between; a folder
  // on a drive may be called like a volume.
  const size_t begin = std::min(text.find_first_not_of(kSeparators, 3), text.size());
  const size_t last = text.find_last_of(kSeparators) + 1;
  const WString name = text.substr(last);
  const bool reached = last == begin || _wcsnicmp(text.c_str() + begin, L"GLOBALROOT", 10) == 0;
  return reached && (isDrive(name, true) || isVolume(name));
}

std::vector<WString> componentsOf(const WString& path) {
  std::vector<WString> components;
  for (size_t at = path.find_first_not_of(kSeparators); at != WString::npos;) {
    const size_t end = path.find_first_of(kSeparators, at);
    components.push_back(path.substr(at, end - at));
    at = path.find_first_not_of(kSeparators, end);
  }
  return components;
}

WString namedPath(const WString& path) {
  WString named;
  for (size_t at = 0; at < path.size();) {
    const size_t begin = std::min(path.find_first_not_of(kSeparators, at), path.size());
    const size_t end = std::min(path.find_first_of(kSeparators, begin), path.size());
    const std::wstring_view component(path.data() + begin, end - begin);
    if (component != L".") {
      if (begin != end && !namesSomething(component)) {
        return {};
      }
      // What stood before a component that is left out is no head of the path.
      const size_t head = named.empty() && at != 0 ? begin : at;
      named.append(path, head, end - head);
    }
    at = end;
  }
  return named.find_first_not_of(kSeparators) == WString::npos ? WString() : named;
}

bool leadsUpwards(const WString& path) {
  const std::vector<WString> components = componentsOf(path);
  return std::any_of(components.begin(), components.end(), [](const WString& component) {
    const size_t dots = component.find_first_not_of(L' ');
    return dots != WString::npos && component.compare(dots, 2, L"..") == 0 &&
           component.find_first_not_of(L' ', dots + 2) == WString::npos;
  });
}

}  // namespace corvane
