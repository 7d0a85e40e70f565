#pragma once

#include <windows.h>

#include "bridge/win32/runtime_function.h"
#include "bridge/win32/text.h"
#include "file/in_use/file_outcome.h"

namespace corvane {

/// What is left for the next start of Windows: through MoveFileExW on the NT family, through
/// WinInit.Ini on Windows 9x.

/// Suffixes of the files that stand beside a target in use, appended to its whole path.
constexpr const wchar_t* kDeleteOnReboot = L".delete_on_reboot";  // the old content, moved aside
constexpr const wchar_t* kUseOnReboot = L".use_on_reboot";        // the new content of a copy
constexpr const wchar_t* kMoveOnReboot = L".move_on_reboot";      // the source of a move

/// The flags with which a file beside its target comes to replace it.
constexpr DWORD kReplaceAtReboot = MOVEFILE_REPLACE_EXISTING | MOVEFILE_DELAY_UNTIL_REBOOT;

/// MoveFileExW, which Windows 9x does not have.
using MoveFileExFunction = RuntimeFunction<decltype(&MoveFileExW)>;
MoveFileExFunction findMoveFileEx() noexcept;

/// The name beside `target`; a null target has none, and the suffix stands alone.
WString besideTarget(const wchar_t* target, const wchar_t* suffix);

/// Schedules the deletion of a file or an empty directory: kAtReboot, or kFailed with the error.
FileOutcome deleteAtReboot(const wchar_t* path);

}  // namespace corvane
