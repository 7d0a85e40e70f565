#include "accounts.h"

#include <algorithm>

#include "jni_hooks.h"
#include "monitor.h"

namespace bed {
namespace {

// The natives that are promised to leave something open until the process ends, and what. All else
// balances.

/// The keys of inquiries and enumerations; see RegistryKey.
constexpr std::string_view kLeaveKeys =
    " isKeyEmpty countSubKeys countValuesInKey longestSubKeyNameLength longestValueNameLength"
    " longestValueNameData getKeyValueNames getSubkeyNames systemStartupCommands"
    " removeSystemStartupCommand ";
/// The token by which an administrator is told from others, those by which privileges are enabled
/// (see PrivilegeEnabler), and a policy with which something failed (see SecurityPolicy); and what
/// the authority returned, where its function for freeing it is missing.
constexpr std::string_view kLeaveHandles =
    " isCurrentUserAdmin win32RegisterUninstaller win32UnregisterUninstaller"
    " setFileOwner setFileOwnerGroup setDesktopItemOwner setDesktopItemOwnerGroup"
    " setDesktopFolderOwner setDesktopFolderOwnerGroup changeWin2kServiceFailureActions"
    " nativeAddAccountRights nativeRemoveAllRights nativeRemoveAccountRights"
    " nativeEnumerateAccountRights ";

bool names(std::string_view natives, const std::string& native) {
  return natives.find(" " + native + " ") != std::string_view::npos;
}

/// What is loaded in this way is kept by promise (see KeptSystemLibrary and advapi32).
constexpr std::string_view kKeepsModule = "LoadLibraryW";

bool staysOpen(std::string_view account, const Accounts::Origin& origin) {
  return (account == Account::kKey && names(kLeaveKeys, origin.native)) ||
         ((account == Account::kHandle || account == Account::kLsaMemory) &&
          names(kLeaveHandles, origin.native)) ||
         (account == Account::kModule && origin.function == kKeepsModule);
}

/// Predefined keys are not opened (opening one with no path gives itself), and closing one, or no
/// key at all, changes nothing. Nor does it to close what a file that could not be made left
/// behind.
bool isNothing(std::string_view account, uint64_t item) {
  const auto low = static_cast<uint32_t>(item);
  return account == Account::kKey ? item == 0 || (low >= 0x80000000U && low <= 0x80000060U)
                                  : account == Account::kHandle && item == ~uint64_t{0};
}

}  // namespace

Accounts& accounts() {
  static Accounts instance;
  return instance;
}

void Accounts::open(std::string_view account, uint64_t item, const std::string& function) {
  if (!isNothing(account, item)) {
    items_.insert({{account, item}, {function, runningNative()}});
    const auto isOfAccount = [&](const auto& entry) { return entry.first.first == account; };
    constexpr int kPromisedByJni = 16;
    if (account == Account::kLocalReference &&
        std::ranges::count_if(items_, isOfAccount) == kPromisedByJni + 1) {
      violation("references pile up: more than 16 at once");
    }
  }
}

void Accounts::close(std::string_view account, uint64_t item, const std::string& function) {
  const auto found = items_.find({account, item});
  if (found != items_.end()) {
    items_.erase(found);
  } else if (!isNothing(account, item)) {
    violation(function + " closes what is not open: " + std::string(account));
  }
}

void Accounts::closeAll(std::string_view account) {
  std::erase_if(items_, [&](const auto& item) { return item.first.first == account; });
}

std::vector<std::string> Accounts::unbalanced() const {
  std::vector<std::string> texts;
  for (const auto& [key, origin] : items_) {
    if (!staysOpen(key.first, origin)) {
      texts.push_back(std::string(key.first) + " of " + origin.function +
                      (origin.native.empty() ? "" : " in " + origin.native));
    }
  }
  return texts;
}

size_t Accounts::leftOpen() const {
  return items_.size() - unbalanced().size();
}

}  // namespace bed
