#include "security/account_sid.h"

#include <cwchar>

#include "bridge/win32/ansi_or_wide.h"
#include "bridge/win32/win32_failure.h"

namespace corvane {

namespace {

/// More than the name of any computer has.
constexpr DWORD kComputerNameCapacity = 256;
/// More than any SID has.
constexpr DWORD kSidCapacity = 1024;
constexpr DWORD kDomainCapacity = 80;

WString computerName() {
  char name[kComputerNameCapacity] = {};
  DWORD size = kComputerNameCapacity;
  throwUnless(GetComputerNameA(name, &size) != FALSE);
  return boundedTextFromAnsi(name, kComputerNameCapacity);
}

/// A bare name that is the computer's as well would be looked up as the computer, which has no
/// rights of a user: behind the computer's name it is the account.
WString unmistakable(const WString& account) {
  const WString computer = computerName();
  return _wcsicmp(account.c_str(), computer.c_str()) == 0 ? computer + L"\\" + account : account;
}

LocalHolder newBlock(DWORD size) {
  LocalHolder block(LocalAlloc(LPTR, size));
  throwUnless(static_cast<bool>(block));
  return block;
}

}  // namespace

LocalHolder findAccountSid(const WString& account) {
  const AnsiText name(unmistakable(account).c_str());
  LocalHolder sid = newBlock(kSidCapacity);
  DWORD sidSize = kSidCapacity;
  const LocalHolder domain = newBlock(kDomainCapacity);
  DWORD domainSize = kDomainCapacity;
  SID_NAME_USE use = SidTypeUnknown;
  throwUnless(LookupAccountNameA(nullptr,
                                 name,
                                 sid.get(),
                                 &sidSize,
                                 static_cast<char*>(domain.get()),
                                 &domainSize,
                                 &use) != FALSE);
  return sid;
}

}  // namespace corvane
