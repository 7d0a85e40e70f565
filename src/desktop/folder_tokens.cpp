#include "desktop/folder_tokens.h"

#include <shlobj.h>

#include <string_view>

#include "bridge/platform.h"
#include "environment/special_folder.h"

namespace {

struct Token {
  std::wstring_view text;
  int csidl;
  int csidl9x;
  /// Its failure is passed over: the token stays, as the name of a folder that is missing.
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

DWORD expandToken(const Token& token, WString& text) {
  const SpecialFolder folder = findSpecialFolder(isWindows9x() ? token.csidl9x : token.csidl);
  switch (folder.lookUp) {
    case FolderLookUp::kNoLocation:
      return static_cast<DWORD>(folder.reason);
    case FolderLookUp::kNoPath:
      return ERROR_BAD_ARGUMENTS;
    case FolderLookUp::kFound:
      break;
  }
  replaceAll(text, token.text, folder.path);
  return ERROR_SUCCESS;
}

}  // namespace

DWORD expandFolderTokens(WString& text) {
  for (const Token& token : kTokens) {
    if (text.find(token.text) == WString::npos) {
      continue;
    }
    const DWORD error = expandToken(token, text);
    if (error != ERROR_SUCCESS && !token.optional) {
      return error;
    }
  }
  return ERROR_SUCCESS;
}

WString folderPath(const WString& folder, const WString& subfolder) {
  WString path = folder;
  appendPathSeparator(path);
  return path + subfolder;
}

WString itemPath(const WString& folder,
                 const WString& subfolder,
                 const WString& name,
                 const wchar_t* extension) {
  WString path = folderPath(folder, subfolder);
  appendPathSeparator(path);
  return path + name + extension;
}
