#pragma once

#include <windows.h>

#include <lm.h>

#include "bridge/win32/runtime_function.h"

namespace corvane {

/// The system has no functions of network management: Netapi32.dll or one of them is missing.
struct NoNetworkManagement {};

/// The functions of Netapi32.dll by which users and groups are made and deleted. The library is
/// loaded by the first who needs it, from the system's directory and no other, and stays. Throws
/// NoNetworkManagement unless all are there: nothing is begun that could not be undone.
class NetworkManagement {
 public:
  NetworkManagement();

  RuntimeFunction<decltype(&NetGetDCName)> getDcName;
  RuntimeFunction<decltype(&NetApiBufferFree)> apiBufferFree;
  RuntimeFunction<decltype(&NetUserAdd)> userAdd;
  RuntimeFunction<decltype(&NetUserDel)> userDel;
  RuntimeFunction<decltype(&NetGroupAdd)> groupAdd;
  RuntimeFunction<decltype(&NetGroupDel)> groupDel;
  RuntimeFunction<decltype(&NetGroupAddUser)> groupAddUser;
  RuntimeFunction<decltype(&NetLocalGroupAdd)> localGroupAdd;
  RuntimeFunction<decltype(&NetLocalGroupDel)> localGroupDel;
  RuntimeFunction<decltype(&NetLocalGroupAddMembers)> localGroupAddMembers;

 private:
  explicit NetworkManagement(HMODULE library) noexcept;
  bool isComplete() const noexcept;
};

}  // namespace corvane
