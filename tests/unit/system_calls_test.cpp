#include <windows.h>

#include <winternl.h>

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <fstream>

#include "cleaner/parent_process.h"
#include "cleaner/removal.h"

// What the cleaner asks of the system, which this program answers: it defines imports of the code
// under test itself.

extern "C" NTSTATUS NTAPI LdrGetProcedureAddress(HMODULE, ANSI_STRING*, ULONG, void**);

namespace {

bool isOld = false;
int refused = 0;
DWORD rightsToParent = 0;

/// As before Windows 10.
NTSTATUS NTAPI openAsOld(HANDLE* file,
                         ACCESS_MASK rights,
                         OBJECT_ATTRIBUTES* object,
                         IO_STATUS_BLOCK* io,
                         ULONG sharing,
                         ULONG options) {
  constexpr ULONG kKnownFlags = 0x7F2;
  if (isOld && (object->Attributes & ~kKnownFlags) != 0) {
    ++refused;
    return static_cast<NTSTATUS>(0xC000000D);
  }
  return NtOpenFile(file, rights, object, io, sharing, options);
}

FARPROC lookUp(HMODULE module, const char* name) {
  if (std::strcmp(name, "NtOpenFile") == 0) {
    return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(openAsOld));
  }
  ANSI_STRING text;
  RtlInitAnsiString(&text, name);
  void* found = nullptr;
  LdrGetProcedureAddress(module, &text, 0, &found);
  return reinterpret_cast<FARPROC>(found);
}

HANDLE refuseProcess(DWORD rights, BOOL /*inherits*/, DWORD /*process*/) {
  rightsToParent = rights;
  return nullptr;
}

}  // namespace

decltype(&GetProcAddress) getProcAddressImport asm("__imp_GetProcAddress") = lookUp;
decltype(&OpenProcess) openProcessImport asm("__imp_OpenProcess") = refuseProcess;

namespace {

TEST(Removal, DoesWithoutTheFlagOfWindows10) {
  const auto root = std::filesystem::temp_directory_path() / "corvane_old";
  std::filesystem::create_directories(root / "a" / "b");
  std::ofstream(root / "a" / "b" / "file");
  isOld = true;
  corvane::removeAll({{LR"(\\?\)" + root.wstring(), true}});
  isOld = false;
  EXPECT_FALSE(std::filesystem::exists(root));
  EXPECT_GT(refused, 3);
}

TEST(Parent, IsAskedForNoMoreThanItsEnd) {
  EXPECT_FALSE(corvane::ParentProcess());
  EXPECT_EQ(rightsToParent, DWORD{SYNCHRONIZE});
}

}  // namespace
