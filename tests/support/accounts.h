#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace bed {

/// What can be opened and must be closed again.
enum class Account {
  kNone,
  kKey,
  kModule,
  kLocalBlock,
  kHeapBlock,
  kPinnedString,
  kUnobtainedString,
  kLocalReference,
  kGlobalReference,
  /// A file or a mapping: both end with CloseHandle.
  kHandle,
  kSearch,
  kView,
  kSid,
  /// A place in the shell's name space.
  kItemList,
  kInterface,
};

/// How a call moves an account when it succeeds: it opens what it returns or what it puts where an
/// argument points, or it closes what an argument is.
struct Effect {
  enum class Move { kNothing, kOpensResult, kOpensAt, kCloses } move = Move::kNothing;
  Account account = Account::kNone;
  int argument = 0;
  /// How many items there are, side by side, where the argument points.
  int items = 1;
};

constexpr Effect opensResult(Account account) {
  return {Effect::Move::kOpensResult, account, 0};
}
constexpr Effect opensAt(Account account, int argument, int items = 1) {
  return {Effect::Move::kOpensAt, account, argument, items};
}
constexpr Effect closes(Account account, int argument) {
  return {Effect::Move::kCloses, account, argument};
}

/// The books over everything that the library opened since the last clear.
class Accounts {
 public:
  void clear() { *this = Accounts(); }

  /// Names the Java native that runs on the calling thread; the JNI hooks put it here.
  using NativeName = std::string (*)();
  static void nameNativesBy(NativeName function);

  void open(Account account, uint64_t item, const std::string& function);
  /// Closing what is not open is a violation.
  void close(Account account, uint64_t item, const std::string& function);
  /// Closes whatever is open of this kind, as the JVM does with local references.
  void closeAll(Account account);
  bool isOpen(Account account, uint64_t item) const { return items_.contains({account, item}); }

  /// What is open and should not be, in words.
  std::vector<std::string> unbalanced() const;
  /// How many things are open that the library promises to leave open.
  uint32_t leftOpen() const;
  /// The most things of one kind that were open at once.
  uint32_t peak(Account account) const;

 private:
  struct Origin {
    std::string function;
    std::string native;
  };
  static bool staysOpen(Account account, const Origin& origin);

  std::map<std::pair<Account, uint64_t>, Origin> items_;
  struct Count {
    uint32_t now = 0;
    uint32_t peak = 0;
  };
  std::map<Account, Count> counts_;
};

Accounts& accounts();

}  // namespace bed
