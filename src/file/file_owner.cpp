#include "file/file_owner.h"

#include <aclapi.h>

#include "bridge/runtime_function.h"
#include "bridge/scoped_handle.h"
#include "security/privilege_enabler.h"

namespace {

constexpr const char* kAdvapi32 = "advapi32.dll";

using SecurityReader = RuntimeFunction<decltype(&GetNamedSecurityInfoW)>;
using SidLookUp = RuntimeFunction<decltype(&LookupAccountSidW)>;
using NameLookUp = RuntimeFunction<decltype(&LookupAccountNameW)>;

DWORD findAccount(const SidLookUp& lookupAccountSid, PSID sid, AccountName& account) {
  DWORD nameSize = 0;
  DWORD domainSize = 0;
  SID_NAME_USE use = SidTypeUnknown;
  lookupAccountSid(nullptr, sid, nullptr, &nameSize, nullptr, &domainSize, &use);  // the sizes
  ByteBuffer name;
  ByteBuffer domain;
  name.allocate(nameSize, sizeof(wchar_t));
  domain.allocate(domainSize, sizeof(wchar_t));
  const BOOL found = lookupAccountSid(nullptr,
                                      sid,
                                      name.data<wchar_t>(),
                                      &nameSize,
                                      domain.data<wchar_t>(),
                                      &domainSize,
                                      &use);
  if (found == FALSE) {
    return GetLastError();
  }
  account = {boundedText(name.data<wchar_t>(), name.count()),
             boundedText(domain.data<wchar_t>(), domain.count())};
  return ERROR_SUCCESS;
}

/// The last error is the function's own when this returns.
BOOL findSid(const NameLookUp& lookupAccountName, const wchar_t* account, ByteBuffer& sid) {
  DWORD sidSize = 0;
  DWORD domainSize = 0;
  SID_NAME_USE use = SidTypeUnknown;
  lookupAccountName(nullptr, account, nullptr, &sidSize, nullptr, &domainSize, &use);  // the sizes
  ByteBuffer domain;
  sid.allocate(sidSize, 1);
  domain.allocate(domainSize, sizeof(wchar_t));
  return lookupAccountName(nullptr,
                           account,
                           sid.data(),
                           &sidSize,
                           domain.data<wchar_t>(),
                           &domainSize,
                           &use);
}

/// The functions that set an owner, looked up in this order up to the first that is missing.
struct Writing {
  bool find() noexcept {
    return (lookupAccountName = {kAdvapi32, "LookupAccountNameW"}) &&
           (setNamedSecurityInfo = {kAdvapi32, "SetNamedSecurityInfoW"}) &&
           (setFileSecurity = {kAdvapi32, "SetFileSecurityW"});
  }

  NameLookUp lookupAccountName;
  /// Only asked for, never called: it came to Windows together with the function that reads owners,
  /// and where none can be read, none is set.
  RuntimeFunction<decltype(&SetNamedSecurityInfoW)> setNamedSecurityInfo;
  RuntimeFunction<decltype(&SetFileSecurityW)> setFileSecurity;

  /// Sets the owner or the group, through a descriptor that holds nothing else.
  BOOL set(const wchar_t* path, Principal which, PSID sid) const noexcept {
    SECURITY_DESCRIPTOR descriptor = {};
    const auto setPrincipal =
        which == Principal::kOwner ? SetSecurityDescriptorOwner : SetSecurityDescriptorGroup;
    return InitializeSecurityDescriptor(&descriptor, SECURITY_DESCRIPTOR_REVISION) != FALSE &&
           setPrincipal(&descriptor, sid, FALSE) != FALSE &&
           IsValidSecurityDescriptor(&descriptor) != FALSE &&
           setFileSecurity(path, static_cast<SECURITY_INFORMATION>(which), &descriptor) != FALSE;
  }
};

}  // namespace

DWORD readPrincipal(const wchar_t* path, Principal which, AccountName& account) {
  SecurityReader getNamedSecurityInfo;
  SidLookUp lookupAccountSid;
  if (!(getNamedSecurityInfo = {kAdvapi32, "GetNamedSecurityInfoW"}) ||
      !(lookupAccountSid = {kAdvapi32, "LookupAccountSidW"})) {
    return GetLastError();
  }
  const bool owner = which == Principal::kOwner;
  PSID sid = nullptr;
  PSECURITY_DESCRIPTOR descriptor = nullptr;
  const DWORD error = getNamedSecurityInfo(const_cast<wchar_t*>(path),
                                           SE_FILE_OBJECT,
                                           static_cast<SECURITY_INFORMATION>(which),
                                           owner ? &sid : nullptr,
                                           owner ? nullptr : &sid,
                                           nullptr,
                                           nullptr,
                                           &descriptor);
  const LocalHolder holder(descriptor);
  return error != ERROR_SUCCESS ? error : findAccount(lookupAccountSid, sid, account);
}

DWORD writePrincipal(const wchar_t* path, Principal which, const wchar_t* account) {
  Writing functions;
  if (!functions.find()) {
    return GetLastError();
  }
  ByteBuffer sid;
  if (findSid(functions.lookupAccountName, account, sid) == FALSE) {
    return GetLastError();
  }
  const PrivilegeEnabler takeOwnership("SeTakeOwnershipPrivilege");
  const PrivilegeEnabler restore("SeRestorePrivilege");
  const PrivilegeEnabler backup("SeBackupPrivilege");
  return functions.set(path, which, sid.data()) != FALSE ? ERROR_SUCCESS : GetLastError();
}
