#pragma once

#include "bridge/win32/text.h"
#include "desktop/shell_link.h"

namespace corvane {

/// Folders and shortcuts in the Start menu and on the desktop. `folder` may hold folder tokens (see
/// expandFolderTokens); `subfolder` is a path below it, which may be empty. The shell is told of
/// each change. All throw Win32Failure, with a Win32 error or an HRESULT. What removes throws it
/// for a subfolder that leads upwards or has a colon, too (ERROR_BAD_PATHNAME), and passes over
/// what names nothing in it (see namedPath): the folder itself stays.

void createDesktopFolder(const WString& folder, const WString& subfolder);

/// Removes the sub-folders that are empty. One that still holds something stays, and is no failure;
/// on Windows 9x nothing is. An empty `subfolder` does nothing.
void removeDesktopFolder(const WString& folder, const WString& subfolder);

/// Makes the sub-folder and in it the shortcut name.lnk.
void createDesktopItem(const WString& folder,
                       const WString& subfolder,
                       const WString& name,
                       const Shortcut& link);

/// Deletes the shortcut, which need not be there, and the sub-folder when it is empty then, as
/// removeDesktopFolder does; not one of the shell's own folders (on Windows XP and later).
void removeDesktopItem(const WString& folder, const WString& subfolder, const WString& name);

}  // namespace corvane
