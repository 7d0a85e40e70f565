#include "security/network_management.h"

#include "bridge/win32/system_library.h"

namespace corvane {

NetworkManagement::NetworkManagement() : NetworkManagement(keptSystemLibrary(L"Netapi32.dll")) {
  if (!isComplete()) {
    throw NoNetworkManagement();
  }
}

NetworkManagement::NetworkManagement(HMODULE netapi32) noexcept
    : getDcName(RUNTIME_FUNCTION_OF(netapi32, NetGetDCName)),
      apiBufferFree(RUNTIME_FUNCTION_OF(netapi32, NetApiBufferFree)),
      userAdd(RUNTIME_FUNCTION_OF(netapi32, NetUserAdd)),
      userDel(RUNTIME_FUNCTION_OF(netapi32, NetUserDel)),
      groupAdd(RUNTIME_FUNCTION_OF(netapi32, NetGroupAdd)),
      groupDel(RUNTIME_FUNCTION_OF(netapi32, NetGroupDel)),
      groupAddUser(RUNTIME_FUNCTION_OF(netapi32, NetGroupAddUser)),
      localGroupAdd(RUNTIME_FUNCTION_OF(netapi32, NetLocalGroupAdd)),
      localGroupDel(RUNTIME_FUNCTION_OF(netapi32, NetLocalGroupDel)),
      localGroupAddMembers(RUNTIME_FUNCTION_OF(netapi32, NetLocalGroupAddMembers)) {}

bool NetworkManagement::isComplete() const noexcept {
  return getDcName && apiBufferFree && userAdd && userDel && groupAdd && groupDel && groupAddUser &&
         localGroupAdd && localGroupDel && localGroupAddMembers;
}

}  // namespace corvane
