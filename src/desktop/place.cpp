#include "desktop/place.h"

#include <windows.h>

#include <shlobj.h>

#include <string_view>
#include <utility>

#include "bridge/win32/platform.h"
#include "bridge/win32/win32_failure.h"
#include "environment/special_folder.h"

namespace corvane {

namespace {

struct Token {
  std::wstring_view text;
  int csidl;
  int csidl9x;
  /// One that cannot be replaced stays in the text.
  bool optional = false;
};

/// In the order in which they are replaced.
constexpr Token kTokens[] = {
    {L"$UserPrograms$", CSIDL_PROGRAMS, CSIDL_PROGRAMS},
    {L"$AllUsersPrograms$", CSIDL_COMMON_PROGRAMS, CSIDL_PROGRAMS},
    {L"$UserStartMenu$", CSIDL_STARTMENU, CSIDL_STARTMENU, true},
    {L"$AllUsersStartMenu$", CSIDL_COMMON_STARTMENU, CSIDL_STARTMENU},
    {L"$UserDesktop$", CSIDL_DESKTOPDIRECTORY, CSIDL_DESKTOPDIRECTORY},
    {L"$AllUsersDesktop$", CSIDL_COMMON_DESKTOPDIRECTORY, CSIDL_DESKTOPDIRECTORY},
};

void replaceAll(WString& text, std::wstring_view token, const WString& path) {
  for (size_t at = text.find(token); at != WString::npos; at = text.find(token, at + path.size())) {
    text.replace(at, token.size(), path);
  }
}

uint32_t reasonFor(const SpecialFolder& folder) {
  return folder.lookUp == FolderLookUp::kNoLocation ? static_cast<uint32_t>(folder.reason)
                                                    : ERROR_BAD_ARGUMENTS;
}

void expandToken(const Token& token, WString& text) {
  const SpecialFolder folder = findSpecialFolder(isWindows9x() ? token.csidl9x : token.csidl);
  if (folder.lookUp == FolderLookUp::kFound) {
    replaceAll(text, token.text, folder.path);
  } else if (!token.optional) {
    throw Win32Failure(reasonFor(folder));
  }
}

WString joined(WString path, const WString& name) {
  appendPathSeparator(path);
  return path + name;
}

}  // namespace

WString expandFolderTokens(WString text) {
  for (const Token& token : kTokens) {
    if (text.find(token.text) != WString::npos) {
      expandToken(token, text);
    }
  }
  return text;
}

Place::Place(WString folder, WString subfolder)
    : folder_(std::move(folder)),
      subfolder_(std::move(subfolder)),
      path_(joined(folder_, subfolder_)) {}

WString Place::item(const WString& name, const wchar_t* extension) const {
  return joined(path_, name) + extension;
}

}  // namespace corvane
