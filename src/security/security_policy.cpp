#include "security/security_policy.h"

#include <cwchar>

namespace corvane {

namespace {

/// The bytes of the longest text, whose terminator must be countable as well.
constexpr size_t kLongestText = 0xFFFC;

}  // namespace

LSA_UNICODE_STRING lsaText(const wchar_t* text) {
  if (text == nullptr) {
    return {};
  }
  const size_t length = std::wcslen(text) * sizeof(wchar_t);
  if (length > kLongestText) {
    throw Win32Failure(ERROR_INVALID_PARAMETER);
  }
  return {static_cast<USHORT>(length),
          static_cast<USHORT>(length + sizeof(wchar_t)),
          const_cast<wchar_t*>(text)};
}

SecurityPolicy::SecurityPolicy(const WString& system, ACCESS_MASK access)
    : toWin32Error_(LSA_FUNCTION(LsaNtStatusToWinError)) {
  LSA_UNICODE_STRING name = lsaText(system.c_str());
  LSA_OBJECT_ATTRIBUTES attributes = {};
  const auto lsaOpenPolicy = LSA_FUNCTION(LsaOpenPolicy);
  throwUnlessGood(lsaOpenPolicy(system.empty() ? nullptr : &name, &attributes, access, &handle_));
}

void SecurityPolicy::throwUnlessGood(NTSTATUS status) const {
  if (status != 0) {
    throw Win32Failure(toWin32Error_(status));
  }
}

void SecurityPolicy::close() const {
  const auto lsaClose = LSA_FUNCTION(LsaClose);
  throwUnlessGood(lsaClose(handle_));
}

void SecurityPolicy::closeQuietly() const noexcept {
  if (const auto lsaClose = RUNTIME_FUNCTION(Advapi32, LsaClose); lsaClose) {
    lsaClose(handle_);
  }
}

}  // namespace corvane
