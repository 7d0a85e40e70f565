#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "thunk.h"

namespace bed {

/// What is prepared for a call in the system's place.
struct Prepared {
  enum class Kind {
    /// The call fails with `error`; 0 is the one that fits the function, kNoError none at all.
    kFails,
    /// It gets `result`, and `writes` go where the arguments point; an `error` of 0 is none.
    kAnswers,
    /// A registry value is found: its type is `result`, and `writes` are its data.
    kFinds,
  };

  Kind kind = Kind::kFails;
  /// Of a failure, which of these calls it is, from 1. Answers are used up in their order.
  uint32_t nth = 1;
  /// Every later one, too, as when the power is gone; an answer, when no other is left.
  bool always = false;
  uint64_t result = 0;
  uint32_t error = 0;
  std::vector<std::pair<int, std::string>> writes = {};
  /// How the call begins as it is shown: the name of a function, perhaps with arguments; or "any
  /// call" and "any JNI call" that can fail.
  std::wstring call = {};
  uint32_t seen = 0;

  static constexpr uint32_t kNoError = ~uint32_t{0};
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
  /// What was prepared in vain, in words.
  std::vector<std::wstring> unused() const;

  std::vector<Prepared> prepared;

  /// As showCall shows them.
  std::vector<std::wstring> calls;
  /// What the library did that it must never do, in words.
  std::vector<std::string> violations;
  /// How many calls could have been made to fail, of Windows and of JNI.
  std::array<int, 2> failable{};
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
