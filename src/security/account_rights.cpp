#include "security/account_rights.h"

#include <span>

#include "bridge/win32/scoped_handle.h"
#include "security/account_sid.h"
#include "security/security_policy.h"

namespace corvane {

namespace {

/// Rights may be given to an account that has no record yet.
constexpr ACCESS_MASK kAdding = POLICY_LOOKUP_NAMES | POLICY_CREATE_ACCOUNT;
/// What is there may be looked at and taken away.
constexpr ACCESS_MASK kWorkingOnRecord = POLICY_LOOKUP_NAMES;

enum class Change { kAdd, kRemove, kRemoveAll };

std::vector<LSA_UNICODE_STRING> lsaTexts(const Rights& rights) {
  std::vector<LSA_UNICODE_STRING> texts;
  texts.reserve(rights.size());
  for (const OptionalText& right : rights) {
    texts.push_back(lsaText(right.get()));
  }
  return texts;
}

void changeRights(Change change, const RightsHolder& holder, const Rights& rights) {
  const bool adding = change == Change::kAdd;
  const SecurityPolicy policy(holder.system, adding ? kAdding : kWorkingOnRecord);
  const LocalHolder sid = findAccountSid(holder.account);
  std::vector<LSA_UNICODE_STRING> texts = lsaTexts(rights);
  const auto count = static_cast<ULONG>(texts.size());
  const auto lsaAddAccountRights = LSA_FUNCTION(LsaAddAccountRights);
  const auto lsaRemoveAccountRights = LSA_FUNCTION(LsaRemoveAccountRights);
  const BOOLEAN all = change == Change::kRemoveAll ? TRUE : FALSE;
  policy.throwUnlessGood(
      adding ? lsaAddAccountRights(policy.get(), sid.get(), texts.data(), count)
             : lsaRemoveAccountRights(policy.get(), sid.get(), all, texts.data(), count));
  policy.close();
}

struct LsaMemoryTraits {
  using Handle = LSA_UNICODE_STRING*;
  static Handle none() noexcept { return nullptr; }
  void close(Handle memory) const noexcept {
    if (lsaFreeMemory) {
      lsaFreeMemory(memory);
    }
  }

  RuntimeFunction<decltype(&LsaFreeMemory)> lsaFreeMemory =
      RUNTIME_FUNCTION(Advapi32, LsaFreeMemory);
};

/// What the authority returned, which is freed with its own function. Where that is missing it
/// stays: what was found out is worth more than a few bytes.
using LsaMemory = ScopedHandle<LsaMemoryTraits>;

/// The text that the authority returned, which need not be terminated.
WString textOf(const LSA_UNICODE_STRING& text) {
  return text.Buffer == nullptr ? WString()
                                : boundedText(text.Buffer, text.Length / sizeof(wchar_t));
}

}  // namespace

void addAccountRights(const RightsHolder& holder, const Rights& rights) {
  changeRights(Change::kAdd, holder, rights);
}

void removeAccountRights(const RightsHolder& holder, const Rights& rights) {
  changeRights(Change::kRemove, holder, rights);
}

void removeAllAccountRights(const RightsHolder& holder) {
  changeRights(Change::kRemoveAll, holder, {});
}

std::vector<WString> accountRights(const RightsHolder& holder) {
  const SecurityPolicy policy(holder.system, kWorkingOnRecord);
  const LocalHolder sid = findAccountSid(holder.account);
  const auto lsaEnumerateAccountRights = LSA_FUNCTION(LsaEnumerateAccountRights);
  LSA_UNICODE_STRING* found = nullptr;
  ULONG count = 0;
  policy.throwUnlessGood(lsaEnumerateAccountRights(policy.get(), sid.get(), &found, &count));
  const LsaMemory rights(found);
  std::vector<WString> texts;
  for (const LSA_UNICODE_STRING& right : std::span(rights.get(), found == nullptr ? 0 : count)) {
    texts.push_back(textOf(right));
  }
  policy.closeQuietly();
  return texts;
}

}  // namespace corvane
