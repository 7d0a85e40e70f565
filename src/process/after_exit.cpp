#include "process/after_exit.h"

#include <windows.h>

#include <charconv>
#include <iterator>
#include <utility>

#include "bridge/win32/scoped_handle.h"
#include "bridge/win32/win32_failure.h"
#include "process/thread_window.h"

namespace corvane {

namespace {

constexpr DWORD kStartMilliseconds = 1000;

struct StartedProcess {
  ScopedKernelHandle process;
  ScopedKernelHandle thread;
  DWORD threadId;
};

/// Held open, it has the system delete the file of the cleaner when the last handle to it is gone.
/// That it cannot be opened is no reason not to start it.
ScopedFile deletedWhenClosed(const char* path) {
  return ScopedFile(CreateFileA(path,
                                0,
                                FILE_SHARE_READ,
                                nullptr,
                                OPEN_EXISTING,
                                FILE_FLAG_DELETE_ON_CLOSE,
                                nullptr));
}

/// Without a window that shows.
StartedProcess start(std::string command) {
  STARTUPINFOA startup = {};
  startup.cb = sizeof(startup);
  startup.dwFlags = STARTF_USESHOWWINDOW;
  startup.wShowWindow = SW_HIDE;
  PROCESS_INFORMATION started = {};
  throwUnless(CreateProcessA(nullptr,
                             command.data(),
                             nullptr,
                             nullptr,
                             FALSE,
                             0,
                             nullptr,
                             nullptr,
                             &startup,
                             &started) != FALSE);
  return {ScopedKernelHandle(started.hProcess),
          ScopedKernelHandle(started.hThread),
          started.dwThreadId};
}

/// The flag and the number of this process in hexadecimal, a blank, and the list.
std::string handOverText(bool flag, const AfterExitList& list) {
  char number[sizeof("ffffffff")];
  char* const end =
      std::to_chars(std::begin(number), std::end(number), GetCurrentProcessId(), 16).ptr;
  return (flag ? "1" : "0") + std::string(std::begin(number), end) + " " + list.text();
}

void handOver(HWND window, HWND sender, std::string text) {
  if (IsWindowVisible(window) != FALSE) {
    ShowWindow(window, SW_HIDE);
  }
  COPYDATASTRUCT data = {0, static_cast<DWORD>(text.size() + 1), text.data()};
  SendMessageA(window,
               WM_COPYDATA,
               reinterpret_cast<WPARAM>(sender),
               reinterpret_cast<LPARAM>(&data));
}

}  // namespace

void AfterExitList::addFile(const WString& path) {
  add("", path);
}

void AfterExitList::addDirectory(const WString& path) {
  add("*", path);
}

void AfterExitList::add(const char* mark, const WString& path) {
  const AnsiText ansi(path.c_str());
  list_.append(list_.empty() ? "" : ";").append(mark).append(ansi);
}

void handToCleaner(const char* cleaner, bool flag, const AfterExitList& list) {
  // First, for a lack of memory must not leave a cleaner that waits for its order.
  std::string text = handOverText(flag, list);
  const ScopedFile file = deletedWhenClosed(cleaner);
  const HWND sender = findWindowOfThread(GetCurrentThreadId());
  const StartedProcess started = start(cleaner);
  WaitForInputIdle(started.process.get(), kStartMilliseconds);
  if (const HWND window = findWindowOfThread(started.threadId); window != nullptr) {
    handOver(window, sender, std::move(text));
  }
}

}  // namespace corvane
