#pragma once

#include <windows.h>

#include "bridge/win32/text.h"

/// Replaces the tokens for shell folders in `text`, such as "$UserPrograms$", by their paths. On
/// Windows 9x the folders of all users are the current user's. Returns 0, an HRESULT when a folder
/// has no location, or ERROR_BAD_ARGUMENTS when it has no path; the tokens before it are replaced
/// then. A failure of "$UserStartMenu$" is passed over, on purpose.
DWORD expandFolderTokens(WString& text);

/// folder\subfolder and folder\subfolder\name.lnk; `folder` is expanded already. One that is
/// a drive and nothing else (see isDriveAlone) would become its root here: Win32Failure with
/// ERROR_PATH_NOT_FOUND is thrown.
WString folderPath(const WString& folder, const WString& subfolder);
WString itemPath(const WString& folder,
                 const WString& subfolder,
                 const WString& name,
                 const wchar_t* extension = L".lnk");
