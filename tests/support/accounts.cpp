#include "accounts.h"

#include <algorithm>
#include <iterator>
#include <sstream>

#include "jni_hooks.h"
#include "monitor.h"

namespace bed {
namespace {

/// What the library promises to leave open until the process ends, and why. Everything else
/// balances.
struct LeftOpen {
  std::string_view native;
  std::string_view account;
};
constexpr LeftOpen kLeftOpen[] = {
    // The keys of inquiries and enumerations are promised to stay open; see RegistryKey.
    {"isKeyEmpty", Account::kKey},
    {"countSubKeys", Account::kKey},
    {"countValuesInKey", Account::kKey},
    {"longestSubKeyNameLength", Account::kKey},
    {"longestValueNameLength", Account::kKey},
    {"longestValueNameData", Account::kKey},
    {"getKeyValueNames", Account::kKey},
    {"getSubkeyNames", Account::kKey},
    {"systemStartupCommands", Account::kKey},
    {"removeSystemStartupCommand", Account::kKey},
    // The token by which an administrator is told from others is promised to stay open.
    {"isCurrentUserAdmin", Account::kHandle},
    {"win32RegisterUninstaller", Account::kHandle},
    {"win32UnregisterUninstaller", Account::kHandle},
    // And so are those by which privileges are enabled; see PrivilegeEnabler.
    {"setFileOwner", Account::kHandle},
    {"setFileOwnerGroup", Account::kHandle},
    {"setDesktopItemOwner", Account::kHandle},
    {"setDesktopItemOwnerGroup", Account::kHandle},
    {"setDesktopFolderOwner", Account::kHandle},
    {"setDesktopFolderOwnerGroup", Account::kHandle},
    {"changeWin2kServiceFailureActions", Account::kHandle},
    // A policy with which something failed stays open; see SecurityPolicy.
    {"nativeAddAccountRights", Account::kHandle},
    {"nativeRemoveAllRights", Account::kHandle},
    {"nativeRemoveAccountRights", Account::kHandle},
    {"nativeEnumerateAccountRights", Account::kHandle},
};

bool staysOpen(std::string_view account, std::string_view native) {
  return std::any_of(std::begin(kLeftOpen), std::end(kLeftOpen), [&](const LeftOpen& left) {
    return left.account == account && left.native == native;
  });
}

/// Predefined keys are not opened (opening one with no path gives itself), and closing one, or no
/// key at all, changes nothing. Nor does it to close what a file that could not be made left
/// behind.
bool isNothing(std::string_view account, uint64_t item) {
  const auto low = static_cast<uint32_t>(item);
  return account == Account::kKey ? item == 0 || (low >= 0x80000000U && low <= 0x80000060U)
                                  : account == Account::kHandle && item == ~uint64_t{0};
}

std::string describe(std::string_view account, uint64_t item) {
  std::ostringstream text;
  text << account << " 0x" << std::hex << item;
  return text.str();
}

}  // namespace

Accounts& accounts() {
  static Accounts instance;
  return instance;
}

void Accounts::open(std::string_view account, uint64_t item, const std::string& function) {
  if (!isNothing(account, item)) {
    items_.insert({{account, item}, {function, runningNative()}});
    Count& count = counts_[account];
    count.peak = std::max(count.peak, ++count.now);
  }
}

void Accounts::close(std::string_view account, uint64_t item, const std::string& function) {
  if (isNothing(account, item)) {
    return;
  }
  const auto found = items_.find({account, item});
  if (found == items_.end()) {
    violation(function + " closes what is not open: " + describe(account, item));
  } else {
    items_.erase(found);
    --counts_[account].now;
  }
}

void Accounts::closeAll(std::string_view account) {
  std::erase_if(items_, [&](const auto& item) { return item.first.first == account; });
  counts_[account].now = 0;
}

std::vector<std::string> Accounts::unbalanced() const {
  std::vector<std::string> texts;
  for (const auto& [key, origin] : items_) {
    if (!staysOpen(key.first, origin.native)) {
      texts.push_back(describe(key.first, key.second) + " of " + origin.function +
                      (origin.native.empty() ? "" : " in " + origin.native));
    }
  }
  return texts;
}

size_t Accounts::leftOpen() const {
  return items_.size() - unbalanced().size();
}

}  // namespace bed
