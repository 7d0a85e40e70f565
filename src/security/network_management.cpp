#include "security/network_management.h"

#include "bridge/win32/system_library.h"

namespace corvane {

namespace {

constinit KeptSystemLibrary netapi32(L"Netapi32.dll");

}  // namespace

NetworkManagement::NetworkManagement() : NetworkManagement(netapi32.get()) {
  if (!isComplete()) {
    throw NoNetworkManagement();
  }
}

NetworkManagement::NetworkManagement(HMODULE library) noexcept
    : getDcName(RUNTIME_FUNCTION_OF(library, NetGetDCName)),
      apiBufferFree(RUNTIME_FUNCTION_OF(library, NetApiBufferFree)),
      userAdd(RUNTIME_FUNCTION_OF(library, NetUserAdd)),
      userDel(RUNTIME_FUNCTION_OF(library, NetUserDel)),
      groupAdd(RUNTIME_FUNCTION_OF(library, NetGroupAdd)),
      groupDel(RUNTIME_FUNCTION_OF(library, NetGroupDel)),
      groupAddUser(RUNTIME_FUNCTION_OF(library, NetGroupAddUser)),
      localGroupAdd(RUNTIME_FUNCTION_OF(library, NetLocalGroupAdd)),
      localGroupDel(RUNTIME_FUNCTION_OF(library, NetLocalGroupDel)),
      localGroupAddMembers(RUNTIME_FUNCTION_OF(library, NetLocalGroupAddMembers)) {}

bool NetworkManagement::isComplete() const noexcept {
  return getDcName && apiBufferFree && userAdd && userDel && groupAdd && groupDel && groupAddUser &&
         localGroupAdd && localGroupDel && localGroupAddMembers;
}

}  // namespace corvane
