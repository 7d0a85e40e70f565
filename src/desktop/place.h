#pragma once

#include "bridge/win32/text.h"

namespace corvane {

/// Replaces the tokens for shell folders in `text`, such as "$UserPrograms$", by their paths. On
/// Windows 9x the folders of all users are the current user's.
///
/// Throws Win32Failure at the first that cannot be replaced: with an HRESULT when the folder has no
/// location, with ERROR_BAD_ARGUMENTS when it has no path. Only "$UserStartMenu$" then stays in the
/// text as it is, for a user without a Start menu may still have all the other folders.
WString expandFolderTokens(WString text);

/// A place in the Start menu or on the desktop: a folder, and a subfolder below it that may be
/// empty. Joined once, and the same for all that is done there.
class Place {
 public:
  /// `folder` is expanded already.
  Place(WString folder, WString subfolder);

  const WString& folder() const noexcept { return folder_; }
  const WString& subfolder() const noexcept { return subfolder_; }

  /// folder\subfolder.
  const WString& path() const noexcept { return path_; }

  /// folder\subfolder\name and the extension.
  WString item(const WString& name, const wchar_t* extension = L".lnk") const;

 private:
  WString folder_;
  WString subfolder_;
  WString path_;
};

}  // namespace corvane
