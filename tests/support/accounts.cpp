#include "accounts.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "monitor.h"

namespace bed {
namespace {

/// What the library promises to leave open until the process ends, and why. Everything else
/// balances.
struct LeftOpen {
  std::string_view native;
  Account account;
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
};

constexpr std::string_view kAccountNames[] = {
    "nothing",
    "registry key",
    "module",
    "local block",
    "heap block",
    "pinned string",
    "unobtained string",
    "local reference",
    "global reference",
    "handle",
    "search",
    "view",
    "SID",
    "item list",
    "interface",
};

std::string describe(Account account, uint64_t item) {
  constexpr std::string_view digits = "0123456789abcdef";
  std::string hex;
  do {
    hex.insert(hex.begin(), digits[item % 16]);
    item /= 16;
  } while (item != 0);
  return std::string(kAccountNames[static_cast<size_t>(account)]) + " 0x" + hex;
}

/// Predefined keys are not opened (opening one with no path gives itself), and closing one, or no
/// key at all, changes nothing.
bool isUnopenedKey(uint64_t key) {
  const auto low = static_cast<uint32_t>(key);
  return key == 0 || (low >= 0x80000000U && low <= 0x80000060U);
}

/// What a file that could not be made left behind; closing it changes nothing.
bool isNoHandle(Account account, uint64_t item) {
  return account == Account::kHandle && item == ~uint64_t{0};
}

Accounts::NativeName nativeName = nullptr;

}  // namespace

Accounts& accounts() {
  static Accounts instance;
  return instance;
}

void Accounts::nameNativesBy(NativeName function) {
  nativeName = function;
}

void Accounts::open(Account account, uint64_t item, const std::string& function) {
  if (account == Account::kKey && isUnopenedKey(item)) {
    return;
  }
  const bool mayStay = account == Account::kKey || account == Account::kHandle;
  const bool wanted = mayStay && nativeName != nullptr;
  items_.insert_or_assign({account, item}, Origin{function, wanted ? nativeName() : ""});
  Count& count = counts_[account];
  count.peak = std::max(count.peak, ++count.now);
}

void Accounts::close(Account account, uint64_t item, const std::string& function) {
  if ((account == Account::kKey && isUnopenedKey(item)) || isNoHandle(account, item)) {
    return;
  }
  if (items_.erase({account, item}) == 0) {
    monitor().violation(function + " closes what is not open: " + describe(account, item));
  } else {
    --counts_[account].now;
  }
}

void Accounts::closeAll(Account account) {
  std::erase_if(items_, [&](const auto& item) { return item.first.first == account; });
  counts_[account].now = 0;
}

bool Accounts::staysOpen(Account account, const Origin& origin) {
  return std::any_of(std::begin(kLeftOpen), std::end(kLeftOpen), [&](const LeftOpen& left) {
    return left.account == account && left.native == origin.native;
  });
}

std::vector<std::string> Accounts::unbalanced() const {
  std::vector<std::string> texts;
  for (const auto& [key, origin] : items_) {
    if (!staysOpen(key.first, origin)) {
      texts.push_back(describe(key.first, key.second) + " of " + origin.function +
                      (origin.native.empty() ? "" : " in " + origin.native));
    }
  }
  return texts;
}

uint32_t Accounts::leftOpen() const {
  return static_cast<uint32_t>(std::count_if(items_.begin(), items_.end(), [](const auto& item) {
    return staysOpen(item.first.first, item.second);
  }));
}

uint32_t Accounts::peak(Account account) const {
  const auto found = counts_.find(account);
  return found == counts_.end() ? 0 : found->second.peak;
}

}  // namespace bed
