#include <windows.h>

#include <objbase.h>

#include <gtest/gtest.h>

#include "bridge/win32/system_library.h"

namespace {

/// What is left of COM on this thread: S_OK when nothing is started, S_FALSE when it is, and an
/// error when it is started for many threads.
HRESULT comState() {
  const HRESULT state = CoInitialize(nullptr);
  if (SUCCEEDED(state)) {
    CoUninitialize();
  }
  return state;
}

/// Loading it starts COM on the loading thread, and unloading ends that start and no other.
DWORD WINAPI startAndEnd(void* /*unused*/) {
  EXPECT_EQ(comState(), S_OK);
  HMODULE const library = LoadLibraryA("corvane_win32.dll");
  EXPECT_EQ(comState(), S_FALSE);
  EXPECT_NE(FreeLibrary(library), FALSE);
  EXPECT_EQ(comState(), S_OK);
  return 0;
}

/// A thread in a multi-threaded apartment makes the start fail; the end is told to COM all the
/// same, once.
DWORD WINAPI endAlone(void* /*unused*/) {
  CoInitializeEx(nullptr, COINIT_MULTITHREADED);
  CoInitializeEx(nullptr, COINIT_MULTITHREADED);
  EXPECT_NE(FreeLibrary(LoadLibraryA("corvane_win32.dll")), FALSE);
  EXPECT_EQ(comState(), RPC_E_CHANGED_MODE);
  CoUninitialize();
  EXPECT_EQ(comState(), S_OK);
  return 0;
}

/// COM is started thread by thread, and on this program's first one the library's own objects have
/// done so already.
TEST(LibraryLoad, StartsComAndEndsThatStart) {
  for (const auto work : {startAndEnd, endAlone}) {
    HANDLE const thread = CreateThread(nullptr, 0, work, nullptr, 0, nullptr);
    WaitForSingleObject(thread, INFINITE);
    CloseHandle(thread);
  }
}

// One reference, which nobody else can give back.
TEST(KeptSystemLibrary, StaysWhenEverybodyElseHasLeft) {
  static constinit corvane::KeptSystemLibrary kept(L"Netapi32.dll");
  HMODULE const others = LoadLibraryA("netapi32.dll");
  EXPECT_EQ(kept.get(), others);
  EXPECT_EQ(kept.get(), others);
  FreeLibrary(others);
  EXPECT_EQ(GetModuleHandleA("netapi32.dll"), others);
  FreeLibrary(others);
  EXPECT_EQ(GetModuleHandleA("netapi32.dll"), nullptr);
}

}  // namespace
