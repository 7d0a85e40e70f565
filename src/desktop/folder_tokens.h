#pragma once

#include <windows.h>

#include "bridge/text.h"

/// Replaces the tokens for shell folders in `text`, such as "$UserPrograms$", by their paths. On
/// Windows 9x the folders of all users are the current user's. Returns 0, an HRESULT when a folder
/// has no location, or ERROR_BAD_ARGUMENTS when it has no path; the tokens before it are replaced
/// then. A failure of "$UserStartMenu$" is passed over: the token stays, and what comes of
/// a folder that is missing takes the failure's place.
DWORD expandFolderTokens(WString& text);

/// folder\subfolder and folder\subfolder\name.lnk; `folder` is expanded already.
WString folderPath(const WString& folder, const WString& subfolder);
WString itemPath(const WString& folder,
                 const WString& subfolder,
                 const WString& name,
                 const wchar_t* extension = L".lnk");
