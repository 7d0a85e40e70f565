#include "cleaner/parent_process.h"

#include <winternl.h>

#include "bridge/win32/runtime_function.h"

namespace corvane {

namespace {

/// What ProcessBasicInformation tells. The SDK's declaration has no names for some of it.
struct BasicInformation {
  NTSTATUS exitStatus;
  void* environmentBlock;
  ULONG_PTR affinityMask;
  ULONG_PTR basePriority;
  ULONG_PTR processId;
  ULONG_PTR parentId;
};
static_assert(sizeof(BasicInformation) == sizeof(PROCESS_BASIC_INFORMATION));

/// 0, which is no process of anybody's, when it cannot be told.
DWORD parentId() noexcept {
  BasicInformation information = {};
  const auto query = RUNTIME_FUNCTION(ntdll, NtQueryInformationProcess);
  if (query) {
    query(GetCurrentProcess(),
          ProcessBasicInformation,
          &information,
          ULONG{sizeof(information)},
          nullptr);
  }
  return static_cast<DWORD>(information.parentId);
}

}  // namespace

ParentProcess::ParentProcess() : id_(parentId()), process_(OpenProcess(SYNCHRONIZE, FALSE, id_)) {}

}  // namespace corvane
