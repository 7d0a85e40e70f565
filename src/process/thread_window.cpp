#include "process/thread_window.h"

#include <imm.h>

namespace corvane {

namespace {

constexpr DWORD kHeadStartMilliseconds = 500;
constexpr int kPasses = 10;

bool isOfThread(HWND window, DWORD threadId) {
  return ImmGetDefaultIMEWnd(window) != window &&
         GetWindowThreadProcessId(window, nullptr) == threadId;
}

HWND lastOfThread(DWORD threadId) {
  HWND last = nullptr;
  for (HWND window = GetWindow(GetDesktopWindow(), GW_CHILD); window != nullptr;
       window = GetWindow(window, GW_HWNDNEXT)) {
    if (isOfThread(window, threadId)) {
      last = window;
    }
  }
  return last;
}

}  // namespace

HWND findWindowOfThread(DWORD threadId) {
  // A program that was started just now makes its window meanwhile.
  Sleep(kHeadStartMilliseconds);
  HWND found = nullptr;
  for (int pass = 0; pass < kPasses && found == nullptr; ++pass) {
    found = lastOfThread(threadId);
  }
  return found;
}

}  // namespace corvane
