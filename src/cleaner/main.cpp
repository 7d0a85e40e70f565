#include <windows.h>

#include "cleaner/parent_process.h"
#include "cleaner/receiver.h"
#include "cleaner/removal.h"

// A program that deletes what its parent process cannot: files that this has in use as long as it
// runs. It is handed one order, waits until the parent has ended, and carries it out. It never
// shows a window, and uses no directory: one that is to go may be the one that it was started in.

namespace corvane {
namespace {

/// To stay out of everybody's way.
void withdraw() {
  SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
  wchar_t directory[MAX_PATH];
  if (GetSystemDirectoryW(directory, MAX_PATH) != 0) {
    SetCurrentDirectoryW(directory);
  }
}

void run() {
  withdraw();
  const ParentProcess parent;
  if (!parent) {
    return;
  }
  // The window is gone by now: nobody waits for one that does not answer.
  if (const auto order = receiveOrder(parent)) {
    parent.awaitEnd();
    removeAll(order->removables());
  }
}

}  // namespace
}  // namespace corvane

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
  try {
    corvane::run();
    return 0;
  } catch (...) {
    return 1;
  }
}
