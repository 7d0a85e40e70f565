#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "thunk.h"

namespace bed {

/// What is prepared for a call in the system's place.
struct Prepared {
  /// The call fails with `error`; 0 is the one that fits the function, kNoError none at all. Or
  /// it gets `result`, and `writes` go where the arguments point; an `error` of 0 is none then.
  bool fails = true;
  /// Of a failure, which of these calls it is, from 1. Answers are used up in their order.
  uint32_t nth = 1;
  /// Every later one, too, as when the power is gone; an answer, when no other is left.
  bool always = false;
  uint64_t result = 0;
  uint32_t error = 0;
  std::vector<std::pair<int, std::string>> writes = {};
  /// How the call begins as it is shown: the name of a function, perhaps with arguments; or "any
  /// call" that can fail.
  std::wstring call = {};
  uint32_t seen = 0;

  static constexpr uint32_t kNoError = ~uint32_t{0};
  /// In place of an argument: the data of a registry value that is found; its type is `result`.
  static constexpr int kFound = -1;
};

/// Watches the calls that the library makes on one thread: counts and records them, and does what
/// is prepared for them. All other threads' calls pass unseen.
class Monitor {
 public:
  /// Starts with the calling thread; `reset` goes before a new test.
  void arm();
  void disarm() { thread_ = 0; }
  bool watchesThisThread() const;
  void reset() { *this = Monitor(); }

  /// Takes down a call. Gives it its result when one is prepared.
  bool settles(Call& call);
  /// The violations, and what was prepared in vain, in words.
  std::vector<std::wstring> complaints() const;

  std::vector<Prepared> prepared;

  /// As showCall shows them.
  std::vector<std::wstring> calls;
  /// What the library did that it must never do, in words.
  std::vector<std::wstring> violations;
  /// How many calls could have been made to fail.
  int failable = 0;
  /// Which of the calls failed as the n-th of all; -1 when none has.
  int failed = -1;

 private:
  Prepared* due(const Call& call);

  unsigned long thread_ = 0;
};

Monitor& monitor();
/// Something that the library must never do, in words.
void violation(const std::string& text);

}  // namespace bed
