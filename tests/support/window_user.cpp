#include <windows.h>

#include <cstdio>
#include <cstring>
#include <iterator>
#include <string>

// A program with a window, for the tests:
//   corvane_window_user listens            says what it is told of changed settings
//   corvane_window_user hangs              takes no message
//   corvane_window_user sends PID WHO TEXT sends the text to the cleaner with this process id, as
//                                          its own window ("own") or as none; says the answer
// It says "ready" when the window is there. "own" in the text is the number of this process.

namespace {

LRESULT CALLBACK onMessage(HWND window, UINT message, WPARAM first, LPARAM second) {
  if (message == WM_SETTINGCHANGE) {
    std::printf("changed %s\n", second == 0 ? "" : reinterpret_cast<const char*>(second));
    std::fflush(stdout);
  }
  return DefWindowProcA(window, message, first, second);
}

HWND makeWindow() {
  WNDCLASSA type = {};
  type.lpfnWndProc = onMessage;
  type.lpszClassName = "corvane_window_user";
  RegisterClassA(&type);
  return CreateWindowA(type.lpszClassName,
                       "",
                       WS_POPUP,
                       0,
                       0,
                       0,
                       0,
                       nullptr,
                       nullptr,
                       nullptr,
                       nullptr);
}

HWND cleanerOf(DWORD process) {
  for (HWND window = nullptr;
       (window = FindWindowExA(nullptr, window, "corvane_cleaner", nullptr)) != nullptr;) {
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    if (owner == process) {
      return window;
    }
  }
  return nullptr;
}

std::string withOwnNumber(std::string text) {
  char number[16];
  std::snprintf(number, std::size(number), "%lx", GetCurrentProcessId());
  const size_t at = text.find("own");
  return at == std::string::npos ? text : text.replace(at, 3, number);
}

void send(HWND sender, DWORD process, std::string text) {
  COPYDATASTRUCT data = {0, static_cast<DWORD>(text.size() + 1), text.data()};
  const HWND window = cleanerOf(process);
  std::printf("%s %d\n",
              window == nullptr ? "nobody" : "answer",
              static_cast<int>(SendMessageA(window,
                                            WM_COPYDATA,
                                            reinterpret_cast<WPARAM>(sender),
                                            reinterpret_cast<LPARAM>(&data))));
}

}  // namespace

int main(int count, char** arguments) {
  const HWND window = makeWindow();
  if (count == 5) {
    const HWND sender = std::strcmp(arguments[3], "own") == 0 ? window : nullptr;
    send(sender, std::strtoul(arguments[2], nullptr, 10), withOwnNumber(arguments[4]));
    return 0;
  }
  std::puts("ready");
  std::fflush(stdout);
  while (std::strcmp(arguments[1], "hangs") == 0) {
    Sleep(INFINITE);
  }
  for (MSG message; GetMessageA(&message, nullptr, 0, 0) > 0;) {
    DispatchMessageA(&message);
  }
  return 0;
}
