#include "cleaner/removable_path.h"

#include <algorithm>
#include <vector>

#include "bridge/win32/path.h"

namespace corvane {

namespace {

/// Behind it the system takes a path as it stands, and none is too long.
constexpr const wchar_t* kLiteral = L"\\\\?\\";

bool isSeparator(wchar_t character) noexcept {
  return character == L'\\' || character == L'/';
}

bool isLetter(wchar_t character) noexcept {
  return (character >= L'A' && character <= L'Z') || (character >= L'a' && character <= L'z');
}

bool beginsAtDrive(const WString& path) noexcept {
  return path.size() >= 3 && isLetter(path[0]) && path[1] == L':' && isSeparator(path[2]);
}

bool beginsAtComputer(const WString& path) noexcept {
  return path.size() >= 3 && isSeparator(path[0]) && isSeparator(path[1]) && !isSeparator(path[2]);
}

/// Behind the head of a path, where no name can be empty: it was another character that the code
/// page lacks.
bool hasEmptyName(const WString& path) noexcept {
  const auto bothSeparators = [](wchar_t one, wchar_t next) {
    return isSeparator(one) && isSeparator(next);
  };
  return std::adjacent_find(path.begin() + 2, path.end(), bothSeparators) != path.end();
}

/// What no name of a file holds; a colon only where it ends the drive.
bool hasForeignCharacter(const WString& path) {
  return path.find_first_of(L"<>\"|?*") != WString::npos ||
         path.find(L':', beginsAtDrive(path) ? 2 : 0) != WString::npos ||
         std::any_of(path.begin(), path.end(), [](wchar_t unit) { return unit < L' '; });
}

WString joined(const std::vector<WString>& components) {
  WString path;
  for (const WString& component : components) {
    path += (path.empty() ? L"" : L"\\") + component;
  }
  return path;
}

}  // namespace

bool isAbsolute(const WString& path) {
  return beginsAtDrive(path) || beginsAtComputer(path);
}

WString removablePath(const WString& path) {
  const bool onDrive = beginsAtDrive(path);
  const std::vector<WString> components = componentsOf(path);
  // The drive, or the computer and the share, and a name at least.
  const size_t fewest = onDrive ? 2 : 3;
  if (!isAbsolute(path) || components.size() < fewest || hasEmptyName(path) ||
      hasForeignCharacter(path) || leadsUpwards(path) || namedPath(path) != path) {
    return {};
  }
  return kLiteral + WString(onDrive ? L"" : L"UNC\\") + joined(components);
}

}  // namespace corvane
