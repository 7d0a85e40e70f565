#include "security/admin_membership.h"

#include <span>

#include "bridge/win32/byte_buffer.h"
#include "bridge/win32/runtime_function.h"
#include "bridge/win32/scoped_handle.h"
#include "bridge/win32/win32_failure.h"
#include "security/advapi32.h"

namespace corvane {

namespace {

/// The functions of the check, looked up in this order up to the first that is missing.
struct Functions {
  bool find(HMODULE module) noexcept {
    return (openProcessToken = RUNTIME_FUNCTION_OF(module, OpenProcessToken)) &&
           (openThreadToken = RUNTIME_FUNCTION_OF(module, OpenThreadToken)) &&
           (getTokenInformation = RUNTIME_FUNCTION_OF(module, GetTokenInformation)) &&
           (allocateAndInitializeSid = RUNTIME_FUNCTION_OF(module, AllocateAndInitializeSid)) &&
           (equalSid = RUNTIME_FUNCTION_OF(module, EqualSid)) &&
           (freeSid = RUNTIME_FUNCTION_OF(module, FreeSid));
  }

  RuntimeFunction<decltype(&OpenProcessToken)> openProcessToken;
  RuntimeFunction<decltype(&OpenThreadToken)> openThreadToken;
  RuntimeFunction<decltype(&GetTokenInformation)> getTokenInformation;
  RuntimeFunction<decltype(&AllocateAndInitializeSid)> allocateAndInitializeSid;
  RuntimeFunction<decltype(&EqualSid)> equalSid;
  RuntimeFunction<decltype(&FreeSid)> freeSid;
};

struct SidTraits {
  using Handle = PSID;
  static Handle none() noexcept { return nullptr; }
  void close(Handle sid) const noexcept { freeSid(sid); }

  RuntimeFunction<decltype(&FreeSid)> freeSid;
};
using ScopedSid = ScopedHandle<SidTraits>;

/// The check, step by step; each step that fails throws.
class AdminCheck {
 public:
  explicit AdminCheck(const Functions& functions) noexcept : call_(functions) {}

  bool run() const {
    const HANDLE token = openToken();  // stays open: see queryAdminMembership
    DWORD size = sizeOfGroups(token);
    ByteBuffer groups;
    groups.allocate(size, 1);
    const BOOL filled = call_.getTokenInformation(token, TokenGroups, groups.data(), size, &size);
    const DWORD error = filled != FALSE ? ERROR_SUCCESS : GetLastError();
    // Asked for in any case; when that fails too, its error is the one that is told.
    const ScopedSid administrators = administratorsSid();
    throwUnlessZero(error);
    return contains(groups, administrators.get());
  }

 private:
  HANDLE openToken() const {
    HANDLE token = nullptr;
    if (call_.openThreadToken(GetCurrentThread(), DWORD{TOKEN_QUERY}, FALSE, &token) != FALSE) {
      return token;
    }
    const DWORD error = GetLastError();
    throwUnlessZero(error == ERROR_NO_TOKEN ? ERROR_SUCCESS : error);
    // The thread does not impersonate.
    if (error == ERROR_NO_TOKEN &&
        call_.openProcessToken(GetCurrentProcess(), DWORD{TOKEN_QUERY}, &token) == FALSE) {
      throwUnlessZero(GetLastError());
    }
    return token;
  }

  /// This call is meant to fail, for want of a buffer. Only when it does not, its error counts.
  DWORD sizeOfGroups(HANDLE token) const {
    DWORD size = 0;
    if (call_.getTokenInformation(token, TokenGroups, nullptr, DWORD{0}, &size) != FALSE) {
      const DWORD error = GetLastError();
      throwUnlessZero(error == ERROR_INSUFFICIENT_BUFFER ? ERROR_SUCCESS : error);
    }
    return size;
  }

  ScopedSid administratorsSid() const {
    SID_IDENTIFIER_AUTHORITY authority = SECURITY_NT_AUTHORITY;
    constexpr DWORD kNone = 0;
    ScopedSid sid({call_.freeSid});
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
                                                     sid.receive());
    if (made == FALSE) {
      (void)sid.release();  // whatever a failure left there
      throwLastError();
    }
    return sid;
  }

  bool contains(const ByteBuffer& buffer, PSID wanted) const {
    const auto* groups = buffer.data<TOKEN_GROUPS>();
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
};

}  // namespace

bool queryAdminMembership() {
  return reasonedOnly([] {
    Functions functions;
    throwUnless(functions.find(advapi32()));
    return AdminCheck(functions).run();
  });
}

}  // namespace corvane
