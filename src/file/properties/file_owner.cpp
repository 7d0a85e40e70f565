#include "file/properties/file_owner.h"

#include <aclapi.h>

#include "bridge/win32/runtime_function.h"
#include "bridge/win32/scoped_handle.h"
#include "bridge/win32/win32_failure.h"
#include "security/privilege_enabler.h"

namespace corvane {

namespace {

using SecurityReader = RuntimeFunction<decltype(&GetNamedSecurityInfoW)>;
using SidLookUp = RuntimeFunction<decltype(&LookupAccountSidW)>;
using NameLookUp = RuntimeFunction<decltype(&LookupAccountNameW)>;

AccountName findAccount(const SidLookUp& lookupAccountSid, PSID sid) {
  DWORD nameSize = 0;
  DWORD domainSize = 0;
  SID_NAME_USE use = SidTypeUnknown;
  lookupAccountSid(nullptr, sid, nullptr, &nameSize, nullptr, &domainSize, &use);  // the sizes
  ByteBuffer name;
  ByteBuffer domain;
  name.allocate(nameSize, sizeof(wchar_t));
  domain.allocate(domainSize, sizeof(wchar_t));
  throwUnless(lookupAccountSid(nullptr,
                               sid,
                               name.data<wchar_t>(),
                               &nameSize,
                               domain.data<wchar_t>(),
                               &domainSize,
                               &use) != FALSE);
  return {boundedText(name.data<wchar_t>(), name.count()),
          boundedText(domain.data<wchar_t>(), domain.count())};
}

ByteBuffer findSid(const NameLookUp& lookupAccountName, const wchar_t* account) {
  DWORD sidSize = 0;
  DWORD domainSize = 0;
  SID_NAME_USE use = SidTypeUnknown;
  lookupAccountName(nullptr, account, nullptr, &sidSize, nullptr, &domainSize, &use);  // the sizes
  ByteBuffer sid;
  ByteBuffer domain;
  sid.allocate(sidSize, 1);
  domain.allocate(domainSize, sizeof(wchar_t));
  throwUnless(lookupAccountName(nullptr,
                                account,
                                sid.data(),
                                &sidSize,
                                domain.data<wchar_t>(),
                                &domainSize,
                                &use) != FALSE);
  return sid;
}

/// The functions that set an owner, looked up in this order up to the first that is missing.
struct Writing {
  bool find() noexcept {
    return (lookupAccountName = RUNTIME_FUNCTION(advapi32, LookupAccountNameW)) &&
           (setNamedSecurityInfo = RUNTIME_FUNCTION(advapi32, SetNamedSecurityInfoW)) &&
           (setFileSecurity = RUNTIME_FUNCTION(advapi32, SetFileSecurityW));
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

AccountName findPrincipal(const wchar_t* path, Principal which) {
  SecurityReader getNamedSecurityInfo;
  SidLookUp lookupAccountSid;
  throwUnless((getNamedSecurityInfo = RUNTIME_FUNCTION(advapi32, GetNamedSecurityInfoW)) &&
              (lookupAccountSid = RUNTIME_FUNCTION(advapi32, LookupAccountSidW)));
  const bool owner = which == Principal::kOwner;
  PSID sid = nullptr;
  LocalHolder descriptor;  // freed in every case: a failure may leave one there, too
  const DWORD error = getNamedSecurityInfo(const_cast<wchar_t*>(path),
                                           SE_FILE_OBJECT,
                                           static_cast<SECURITY_INFORMATION>(which),
                                           owner ? &sid : nullptr,
                                           owner ? nullptr : &sid,
                                           nullptr,
                                           nullptr,
                                           descriptor.receive());
  throwUnlessZero(error);
  return findAccount(lookupAccountSid, sid);
}

void setPrincipal(const wchar_t* path, Principal which, const wchar_t* account) {
  Writing functions;
  throwUnless(functions.find());
  ByteBuffer sid = findSid(functions.lookupAccountName, account);
  const PrivilegeEnabler takeOwnership("SeTakeOwnershipPrivilege");
  const PrivilegeEnabler restore("SeRestorePrivilege");
  const PrivilegeEnabler backup("SeBackupPrivilege");
  throwUnless(functions.set(path, which, sid.data()) != FALSE);
}

}  // namespace

AccountName readPrincipal(const wchar_t* path, Principal which) {
  return reasonedOnly([&] { return findPrincipal(path, which); });
}

void writePrincipal(const wchar_t* path, Principal which, const wchar_t* account) {
  reasonedOnly([&] { setPrincipal(path, which, account); });
}

}  // namespace corvane
