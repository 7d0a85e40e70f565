#include "bridge/win32/path.h"

#include <windows.h>

#include <algorithm>
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

/// A letter and a colon; Windows cuts blanks behind it off.
bool isDrive(std::wstring_view name) noexcept {
  return name.size() >= 2 && name[1] == L':' && name.find_first_not_of(L' ', 2) == name.npos;
}

bool namesSomething(std::wstring_view component) noexcept {
  return component.find_first_not_of(L". ") != component.npos;
}

}  // namespace

bool pathExists(const WString& path) {
  return ansiOrWide(GetFileAttributesA, GetFileAttributesW, path.c_str()) !=
         INVALID_FILE_ATTRIBUTES;
}

bool isDriveAlone(const wchar_t* path) noexcept {
  std::wstring_view rest(path == nullptr ? L"" : path);
  const bool device = beginsWithDevicePrefix(rest);
  if (device) {
    rest.remove_prefix(std::min(rest.find_first_not_of(kSeparators, 3), rest.size()));
  }
  const size_t separator = rest.find_last_of(kSeparators);
  return isDrive(rest.substr(separator + 1)) || (device && separator == rest.npos);
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
    const bool wanted =
        begin == end ? !named.empty() : namesSomething(path.substr(begin, end - begin));
    if (wanted) {
      named.append(path, at, end - at);
    }
    at = end;
  }
  return named;
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
