#include "process/access_grant.h"

#include "bridge/win32/byte_buffer.h"
#include "bridge/win32/win32_failure.h"

namespace corvane {

namespace {

constexpr BYTE kForWhatIsInIt = CONTAINER_INHERIT_ACE | INHERIT_ONLY_ACE | OBJECT_INHERIT_ACE;
constexpr DWORD kEverything = GENERIC_ALL | GENERIC_EXECUTE | GENERIC_WRITE | GENERIC_READ;
constexpr DWORD kWholeStation = WINSTA_ALL_ACCESS | STANDARD_RIGHTS_REQUIRED;
static_assert(kWholeStation == 0xF037F);
constexpr DWORD kWholeDesktop = DESKTOP_READOBJECTS | DESKTOP_CREATEWINDOW | DESKTOP_CREATEMENU |
                                DESKTOP_HOOKCONTROL | DESKTOP_JOURNALRECORD |
                                DESKTOP_JOURNALPLAYBACK | DESKTOP_ENUMERATE | DESKTOP_WRITEOBJECTS |
                                DESKTOP_SWITCHDESKTOP | STANDARD_RIGHTS_REQUIRED;
static_assert(kWholeDesktop == 0xF01FF);

/// The access list of a window station or a desktop, to which entries for one SID are added.
class AccessList {
 public:
  /// Reads the list, and makes a copy that has room for `more` entries.
  AccessList(HANDLE object, PSID sid, DWORD more) : object_(object), sid_(sid) {
    readSecurity();
    const PACL old = oldList();
    isOpenToAll_ = old == nullptr;
    ACL_SIZE_INFORMATION size = {0, sizeof(ACL), 0};
    if (old != nullptr) {
      throwUnless(GetAclInformation(old, &size, sizeof(size), AclSizeInformation) != FALSE);
    }
    list_.allocate(size.AclBytesInUse + more * sizeOfEntry(), 1);
    throwUnless(InitializeAcl(list(), list_.count(), ACL_REVISION) != FALSE);
    for (DWORD index = 0; index < size.AceCount; ++index) {
      copyEntry(old, index);
    }
  }

  void allow(BYTE flags, DWORD mask) {
    ByteBuffer buffer;
    buffer.allocate(sizeOfEntry(), 1);
    auto* entry = buffer.data<ACCESS_ALLOWED_ACE>();
    entry->Header.AceType = ACCESS_ALLOWED_ACE_TYPE;
    entry->Header.AceFlags = flags;
    entry->Header.AceSize = static_cast<WORD>(buffer.count());
    entry->Mask = mask;
    throwUnless(CopySid(GetLengthSid(sid_), &entry->SidStart, sid_) != FALSE);
    append(entry, buffer.count());
  }

  void allow(DWORD mask) {
    throwUnless(AddAccessAllowedAce(list(), ACL_REVISION, mask, sid_) != FALSE);
  }

  /// Makes it the object's. Where there was none, everybody may do everything already, and a list
  /// with one entry would lock them out.
  void set() {
    if (isOpenToAll_) {
      return;
    }
    SECURITY_DESCRIPTOR security = {};
    throwUnless(InitializeSecurityDescriptor(&security, SECURITY_DESCRIPTOR_REVISION) != FALSE);
    throwUnless(SetSecurityDescriptorDacl(&security, TRUE, list(), FALSE) != FALSE);
    SECURITY_INFORMATION kind = DACL_SECURITY_INFORMATION;
    throwUnless(SetUserObjectSecurity(object_, &kind, &security) != FALSE);
  }

 private:
  PACL list() noexcept { return list_.data<ACL>(); }

  DWORD sizeOfEntry() const noexcept {
    return sizeof(ACCESS_ALLOWED_ACE) - sizeof(DWORD) + GetLengthSid(sid_);
  }

  void readSecurity() {
    SECURITY_INFORMATION kind = DACL_SECURITY_INFORMATION;
    DWORD size = 0;
    if (GetUserObjectSecurity(object_, &kind, nullptr, 0, &size) == FALSE &&
        GetLastError() != ERROR_INSUFFICIENT_BUFFER) {
      throwLastError();
    }
    security_.allocate(size, 1);
    throwUnless(GetUserObjectSecurity(object_, &kind, security_.data(), size, &size) != FALSE);
  }

  /// Null when the object has none.
  PACL oldList() {
    BOOL isThere = FALSE;
    BOOL isDefault = FALSE;
    PACL list = nullptr;
    throwUnless(GetSecurityDescriptorDacl(security_.data(), &isThere, &list, &isDefault) != FALSE);
    return isThere != FALSE ? list : nullptr;
  }

  void copyEntry(PACL from, DWORD index) {
    void* entry = nullptr;
    throwUnless(GetAce(from, index, &entry) != FALSE);
    append(entry, static_cast<const ACE_HEADER*>(entry)->AceSize);
  }

  void append(void* entry, DWORD size) {
    throwUnless(AddAce(list(), ACL_REVISION, MAXDWORD, entry, size) != FALSE);
  }

  HANDLE object_;
  PSID sid_;
  ByteBuffer security_;
  ByteBuffer list_;
  bool isOpenToAll_ = false;
};

}  // namespace

void grantWindowStation(HWINSTA station, PSID sid) {
  AccessList list(station, sid, 2);
  list.allow(kForWhatIsInIt, kEverything);
  list.allow(NO_PROPAGATE_INHERIT_ACE, kWholeStation);
  list.set();
}

void grantDesktop(HDESK desktop, PSID sid) {
  AccessList list(desktop, sid, 1);
  list.allow(kWholeDesktop);
  list.set();
}

}  // namespace corvane
