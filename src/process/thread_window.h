#pragma once

#include <windows.h>

namespace corvane {

/// A top-level window that the thread owns, or null: the last one from the top, but for the windows
/// of input methods, which the system makes for the thread. It is waited for half a second, and
/// then looked for up to ten times. Win32: GetWindow, GetWindowThreadProcessId,
/// ImmGetDefaultIMEWnd.
HWND findWindowOfThread(DWORD threadId);

}  // namespace corvane
