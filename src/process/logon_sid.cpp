#include "process/logon_sid.h"

#include <algorithm>
#include <span>

#include "bridge/win32/win32_failure.h"

namespace corvane {

namespace {

ByteBuffer groupsOf(HANDLE token) {
  DWORD size = 0;
  if (GetTokenInformation(token, TokenGroups, nullptr, 0, &size) == FALSE &&
      GetLastError() != ERROR_INSUFFICIENT_BUFFER) {
    throwLastError();
  }
  ByteBuffer groups;
  groups.allocate(size, 1);
  throwUnless(GetTokenInformation(token, TokenGroups, groups.data(), size, &size) != FALSE);
  return groups;
}

bool isOfLogon(const SID_AND_ATTRIBUTES& group) noexcept {
  return (group.Attributes & SE_GROUP_LOGON_ID) == SE_GROUP_LOGON_ID;
}

ByteBuffer copyOf(PSID sid) {
  ByteBuffer copy;
  copy.allocate(GetLengthSid(sid), 1);
  throwUnless(CopySid(copy.count(), copy.data(), sid) != FALSE);
  return copy;
}

}  // namespace

ByteBuffer logonSid(HANDLE token) {
  const ByteBuffer buffer = groupsOf(token);
  const auto* groups = buffer.data<TOKEN_GROUPS>();
  if (groups != nullptr) {
    const std::span all(groups->Groups, groups->GroupCount);
    const auto found = std::find_if(all.begin(), all.end(), isOfLogon);
    if (found != all.end()) {
      return copyOf(found->Sid);
    }
  }
  throw Win32Failure(ERROR_NO_SUCH_LOGON_SESSION);
}

}  // namespace corvane
