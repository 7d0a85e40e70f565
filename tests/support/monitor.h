#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <map>
#include <string>
#include <vector>

#include "thunk.h"

namespace bed {

/// Keeps the thread's last error over the hooks' own work.
class LastErrorScope {
 public:
  LastErrorScope();
  LastErrorScope(const LastErrorScope&) = delete;
  LastErrorScope& operator=(const LastErrorScope&) = delete;
  ~LastErrorScope();
  /// The error to leave behind instead of the kept one.
  void set(uint32_t error) { error_ = error; }

 private:
  uint32_t error_;
};

enum class Kind { kWin32, kJni };

/// What a hook saw of one call.
struct RecordedCall {
  std::string name;
  Kind kind;
  std::array<uint64_t, 12> words;
  /// See showCall.
  std::wstring shown;
  /// By argument, what it pointed to when the call began (see Monitor::capture).
  std::map<int, std::vector<uint8_t>> captured;
};

/// Makes one call fail: the n-th (from 1) of all that can fail, or of those of one function.
struct FailRule {
  Kind kind = Kind::kWin32;
  std::string name;
  uint32_t nth = 1;
  /// 0: the error that fits the function; kNoError: none at all.
  uint32_t error = 0;
  /// And every later one too, as when the power is gone.
  bool andAllLater = false;
  uint32_t seen = 0;

  bool isDue() { return ++seen == nth || (andAllLater && seen > nth); }
  bool isUnused() const { return seen < nth && !andAllLater; }

  static constexpr uint32_t kNoError = ~uint32_t{0};
};

/// A prepared answer: the system is not asked. `writes` go where the arguments point.
struct Answer {
  uint64_t result = 0;
  /// 0: the last error stays as it is.
  uint32_t lastError = 0;
  std::vector<std::pair<int, std::vector<uint8_t>>> writes;
  /// For every later call, too.
  bool always = false;
};

/// Watches the calls that the library makes on one thread: counts and records them, and knows which
/// of them are to fail or to be answered. All other threads' calls pass unseen.
class Monitor {
 public:
  /// Starts with the calling thread; `reset` goes before a new test.
  void arm();
  void disarm() { thread_ = 0; }
  bool watchesThisThread() const;
  void reset();

  void fail(FailRule rule) { rules_.push_back(std::move(rule)); }
  /// Answers of one function are used up in their order; then the system answers again.
  void answer(const std::string& name, Answer answer) {
    answers_[name].push_back(std::move(answer));
  }
  /// `bytes` may be kText: up to the terminator, in wide characters when the name ends in W.
  static constexpr uint32_t kText = 0;
  void capture(const std::string& name, int argument, uint32_t bytes) {
    captures_[name][argument] = bytes;
  }

  /// What was prepared in vain, in words.
  std::vector<std::string> unused() const;

  /// Takes down a call. Returns the rule by which it is to fail, or null.
  const FailRule* begin(Kind kind, const Call& call, bool canFail);
  /// Gives the prepared answer, when there is one, as the call's result.
  bool answered(Call& call, LastErrorScope& lastError);

  /// Something that the library must never do, in words.
  void violation(std::string text) { violations_.push_back(std::move(text)); }

  const std::vector<RecordedCall>& calls() const { return calls_; }
  const std::vector<std::string>& violations() const { return violations_; }
  /// How many calls could have been made to fail.
  uint32_t failable(Kind kind) const { return failable_[static_cast<size_t>(kind)]; }
  /// Which of the calls failed as the n-th of all; -1 when none has.
  int failed() const { return failed_; }

 private:
  void record(Kind kind, const Call& call);
  const FailRule* dueRule(Kind kind, const std::string& name);
  size_t countOf(const std::string& name) const;

  unsigned long thread_ = 0;
  std::vector<RecordedCall> calls_;
  std::vector<std::string> violations_;
  std::vector<FailRule> rules_;
  std::map<std::string, std::deque<Answer>> answers_;
  std::map<std::string, std::map<int, uint32_t>> captures_;
  std::array<uint32_t, 2> failable_{};
  int failed_ = -1;
};

Monitor& monitor();

}  // namespace bed
