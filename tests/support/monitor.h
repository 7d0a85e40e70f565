#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <map>
#include <optional>
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

/// Makes calls fail: of those that `name` means, the n-th (from 1).
struct FailRule {
  /// A function; or "any call" and "any JNI call" that can fail.
  std::string name;
  uint32_t nth = 1;
  /// 0: the error that fits the function; kNoError: none at all.
  uint32_t error = 0;
  /// And every later one too, as when the power is gone.
  bool andAllLater = false;
  /// Of GetProcAddress: only for this function, which a Windows too old for it lacks.
  std::string lookedUp = {};
  uint32_t seen = 0;

  static constexpr uint32_t kNoError = ~uint32_t{0};
};

/// A prepared answer: the system is not asked. `writes` go where the arguments point.
struct Answer {
  uint64_t result = 0;
  /// 0: the last error stays as it is.
  uint32_t lastError = 0;
  std::vector<std::pair<int, std::string>> writes = {};
  /// For every later call, too.
  bool always = false;
  /// The data of a registry value, whose type is `result`; the last one prepared stays.
  std::optional<std::string> value = {};
};

/// The Windows that the library sees.
struct Version {
  uint32_t platform;
  uint32_t major;
  uint32_t minor;
  /// Whether it knows the long version record, as Windows 98 and NT 4 did not at first.
  bool knowsLongRecord;
  /// Not a system that tells nothing at all.
  bool tells;
};

/// Watches the calls that the library makes on one thread: counts and records them, and knows which
/// of them are to fail or to be answered. All other threads' calls pass unseen.
class Monitor {
 public:
  /// Starts with the calling thread; `reset` goes before a new test.
  void arm();
  void disarm() { thread_ = 0; }
  bool watchesThisThread() const;
  void reset() { *this = Monitor(); }

  /// Takes down a call. Returns the rule by which it is to fail, or null.
  const FailRule* begin(const Call& call);
  /// Gives the prepared answer, when there is one, as the call's result.
  bool answered(Call& call, LastErrorScope& lastError);
  /// Tells which Windows this is, when that is another than it is.
  bool toldVersion(Call& call, LastErrorScope& lastError) const;
  /// Has LoadLibraryExA load another file for a name.
  void leadToModule(Call& call);
  /// What was prepared in vain, in words.
  std::vector<std::string> unused() const;

  std::vector<FailRule> rules;
  /// Those of one function are used up in their order; then the system answers again.
  std::map<std::string, std::deque<Answer>> answers;
  std::optional<Version> version;
  /// The file that LoadLibraryExA loads for a name.
  std::map<std::string, std::string> modules;

  /// As showCall shows them.
  std::vector<std::wstring> calls;
  /// What the library did that it must never do, in words.
  std::vector<std::string> violations;
  /// How many calls could have been made to fail, of Windows and of JNI.
  std::array<size_t, 2> failable{};
  /// Which of the calls failed as the n-th of all; -1 when none has.
  int failed = -1;

 private:
  unsigned long thread_ = 0;
};

Monitor& monitor();
/// Something that the library must never do, in words.
void violation(const std::string& text);

}  // namespace bed
