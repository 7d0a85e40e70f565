#include <windows.h>

#include <winternl.h>

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <utility>

#include "cleaner/parent_process.h"
#include "cleaner/removal.h"

// What the cleaner asks of the system, which this program answers: it defines imports of the code
// under test itself.

extern "C" NTSTATUS NTAPI LdrGetProcedureAddress(HMODULE, ANSI_STRING*, ULONG, void**);

namespace {

bool isOld = false;
int refused = 0;
DWORD rightsToParent = 0;

constexpr NTSTATUS kInvalidParameter = static_cast<NTSTATUS>(0xC000000D);

/// Who waits needs the right to, and who deletes need not have it; a link is opened itself. Before
/// Windows 10 the flag against links is refused.
NTSTATUS NTAPI openFile(HANDLE* file,
                        ACCESS_MASK rights,
                        OBJECT_ATTRIBUTES* object,
                        IO_STATUS_BLOCK* io,
                        ULONG sharing,
                        ULONG options) {
  const bool waits = (options & 0x20) != 0;
  if (waits != ((rights & SYNCHRONIZE) != 0) || waits == ((rights & DELETE) != 0) ||
      (options & 0x00200000) == 0) {
    return kInvalidParameter;
  }
  if (isOld && (object->Attributes & 0x1000) != 0) {
    ++refused;
    return kInvalidParameter;
  }
  return NtOpenFile(file, rights, object, io, sharing, options);
}

NTSTATUS(NTAPI* systemsSetFile)(HANDLE, IO_STATUS_BLOCK*, void*, ULONG, int) = nullptr;

/// Windows 10 is asked to delete at once, read-only or not, and an older one refuses that.
NTSTATUS NTAPI setFile(HANDLE file, IO_STATUS_BLOCK* io, void* data, ULONG size, int kind) {
  constexpr int kDisposition = 13;
  const bool atOnce = kind == 64 && *static_cast<ULONG*>(data) == 7;
  if ((kind == 64 && (isOld || !atOnce)) || (kind == kDisposition && !isOld)) {
    return static_cast<NTSTATUS>(0xC0000003);
  }
  BOOLEAN deletes = TRUE;
  return atOnce ? systemsSetFile(file, io, &deletes, 1, kDisposition)
                : systemsSetFile(file, io, data, size, kind);
}

FARPROC lookUp(HMODULE module, const char* name) {
  ANSI_STRING text;
  RtlInitAnsiString(&text, name);
  void* found = nullptr;
  LdrGetProcedureAddress(module, &text, 0, &found);
  if (std::strcmp(name, "NtOpenFile") == 0) {
    found = reinterpret_cast<void*>(openFile);
  } else if (std::strcmp(name, "NtSetInformationFile") == 0) {
    systemsSetFile = reinterpret_cast<decltype(systemsSetFile)>(
        std::exchange(found, reinterpret_cast<void*>(setFile)));
  }
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
  std::ofstream(root / "a" / "b" / "file").close();
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
