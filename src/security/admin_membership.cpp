#include "security/admin_membership.h"

#include <memory>
#include <span>

#include "bridge/byte_buffer.h"
#include "bridge/runtime_function.h"
#include "security/advapi32.h"

namespace {

/// The functions of the check, looked up in this order up to the first that is missing.
struct Functions {
  bool find(HMODULE module) noexcept {
    return (openProcessToken = {module, "OpenProcessToken"}) &&
           (openThreadToken = {module, "OpenThreadToken"}) &&
           (getTokenInformation = {module, "GetTokenInformation"}) &&
           (allocateAndInitializeSid = {module, "AllocateAndInitializeSid"}) &&
           (equalSid = {module, "EqualSid"}) && (freeSid = {module, "FreeSid"});
  }

  RuntimeFunction<decltype(&OpenProcessToken)> openProcessToken;
  RuntimeFunction<decltype(&OpenThreadToken)> openThreadToken;
  RuntimeFunction<decltype(&GetTokenInformation)> getTokenInformation;
  RuntimeFunction<decltype(&AllocateAndInitializeSid)> allocateAndInitializeSid;
  RuntimeFunction<decltype(&EqualSid)> equalSid;
  RuntimeFunction<decltype(&FreeSid)> freeSid;
};

using SidOwner = std::unique_ptr<void, RuntimeFunction<decltype(&FreeSid)>>;

/// The check, step by step; each step that fails leaves its error.
class AdminCheck {
 public:
  AdminCheck(const Functions& functions, DWORD& error) noexcept : call_(functions), error_(error) {}

  bool run() {
    HANDLE token = nullptr;  // stays open: see the header
    DWORD size = 0;
    if (!openToken(token) || !askSize(token, size)) {
      return false;
    }
    ByteBuffer groups;
    groups.allocate(size, 1);
    if (call_.getTokenInformation(token, TokenGroups, groups.data(), size, &size) == FALSE) {
      error_ = GetLastError();
    }
    const SidOwner administrators = administratorsSid();
    return error_ == ERROR_SUCCESS && contains(groups, administrators.get());
  }

 private:
  bool openToken(HANDLE& token) {
    if (call_.openThreadToken(GetCurrentThread(), DWORD{TOKEN_QUERY}, FALSE, &token) != FALSE) {
      return true;
    }
    error_ = GetLastError();
    if (error_ == ERROR_NO_TOKEN) {  // the thread does not impersonate
      const BOOL opened = call_.openProcessToken(GetCurrentProcess(), DWORD{TOKEN_QUERY}, &token);
      error_ = opened != FALSE ? ERROR_SUCCESS : GetLastError();
    }
    return error_ == ERROR_SUCCESS;
  }

  /// This call is meant to fail, for want of a buffer. Only when it does not, its error counts.
  bool askSize(HANDLE token, DWORD& size) {
    if (call_.getTokenInformation(token, TokenGroups, nullptr, DWORD{0}, &size) != FALSE) {
      error_ = GetLastError();
    }
    if (error_ == ERROR_INSUFFICIENT_BUFFER) {
      error_ = ERROR_SUCCESS;
    }
    return error_ == ERROR_SUCCESS;
  }

  SidOwner administratorsSid() {
    SID_IDENTIFIER_AUTHORITY authority = SECURITY_NT_AUTHORITY;
    constexpr DWORD kNone = 0;
    PSID sid = nullptr;
    const BOOL made = call_.allocateAndInitializeSid(&authority,
                                                     BYTE{2},
                                                     DWORD{SECURITY_BUILTIN_DOMAIN_RID},
                                                     DWORD{DOMAIN_ALIAS_RID_ADMINS},
                                                     kNone,
                                                     kNone,
                                                     kNone,
                                                     kNone,
                                                     kNone,
                                                     kNone,
                                                     &sid);
    if (made == FALSE) {
      error_ = GetLastError();
      sid = nullptr;
    }
    return {sid, call_.freeSid};
  }

  bool contains(const ByteBuffer& buffer, PSID wanted) const {
    const auto* groups = buffer.data<const TOKEN_GROUPS>();
    if (groups == nullptr) {
      return false;
    }
    for (const auto& group : std::span(groups->Groups, groups->GroupCount)) {
      if (call_.equalSid(group.Sid, wanted) != FALSE) {
        return true;
      }
    }
    return false;
  }

  const Functions& call_;
  DWORD& error_;
};

}  // namespace

bool queryAdminMembership(DWORD& error) {
  error = ERROR_SUCCESS;
  Functions functions;
  if (!functions.find(advapi32())) {
    error = GetLastError();
    return false;
  }
  return AdminCheck(functions, error).run();
}
