#include <windows.h>

#include <objbase.h>

#include <gtest/gtest.h>

#include <functional>

#include "import_hooks.h"
#include "monitor.h"

namespace {

DWORD WINAPI runWork(void* work) {
  (*static_cast<std::function<void()>*>(work))();
  return 0;
}

/// COM is started thread by thread, and on this program's first one the library's own objects have
/// done so already.
void onFreshThread(std::function<void()> work) {
  HANDLE const thread = CreateThread(nullptr, 0, runWork, &work, 0, nullptr);
  ASSERT_NE(thread, nullptr);
  WaitForSingleObject(thread, INFINITE);
  CloseHandle(thread);
}

/// S_OK when COM was not started on this thread, S_FALSE when it was.
HRESULT comState() {
  const HRESULT state = CoInitialize(nullptr);
  CoUninitialize();
  return state;
}

HMODULE loadLibrary() {
  HMODULE const library = LoadLibraryA("corvane_win32.dll");
  EXPECT_NE(library, nullptr);
  return library;
}

size_t callsOf(const char* name) {
  size_t count = 0;
  for (const bed::RecordedCall& call : bed::monitor().calls()) {
    count += call.name == name ? 1 : 0;
  }
  return count;
}

}  // namespace

// Loading it starts COM on the loading thread, and unloading ends that start and no other.
TEST(LibraryLoad, StartsComAndEndsItAgain) {
  onFreshThread([] {
    ASSERT_EQ(comState(), S_OK);
    HMODULE const library = loadLibrary();
    EXPECT_EQ(comState(), S_FALSE);
    FreeLibrary(library);
    EXPECT_EQ(comState(), S_OK);
  });
}

// A thread in a multi-threaded apartment makes the start fail; the end is told to COM all the same.
TEST(LibraryLoad, EndsComOnceAlsoWhenItsStartFailed) {
  onFreshThread([] {
    ASSERT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
    HMODULE const library = loadLibrary();
    bed::hookImports(library, {"CoInitialize", "CoUninitialize"});
    bed::monitor().arm();
    FreeLibrary(library);
    bed::monitor().disarm();
    EXPECT_EQ(callsOf("CoUninitialize"), 1U);
    EXPECT_EQ(callsOf("CoInitialize"), 0U);
  });
}
