#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace bed {

struct Call;

/// What is opened and must be closed again goes by its name. These have rules of their own.
namespace Account {
constexpr std::string_view kKey = "registry key";
/// Of a file, a mapping, a process, a token or a policy.
constexpr std::string_view kHandle = "handle";
constexpr std::string_view kHeapBlock = "heap block";
constexpr std::string_view kLocalReference = "local reference";
constexpr std::string_view kLsaMemory = "memory of the security authority";
constexpr std::string_view kModule = "module";
}  // namespace Account

/// How a call moves an account when it succeeds: it opens what it returns or what it puts where an
/// argument points, or it closes what an argument is. What it asks for is to be given back also
/// when it failed.
struct Effect {
  enum class Move { kNothing, kOpensResult, kOpensAt, kAsksFor, kCloses } move = Move::kNothing;
  std::string_view account = {};
  int argument = 0;
  /// How many items there are, side by side, where the argument points.
  int items = 1;
  /// Of an interface that is opened: how the names of its methods begin.
  std::string_view methods = {};
};

/// How a function tells that it failed.
enum class Failure {
  /// Not hooked at all: it neither fails nor concerns any account (memcpy), or it must see the
  /// stack as it is (unwinding), or it is no function (imported data).
  kUntouched,
  kCannotFail,
  /// Returns the error itself: of Windows, of COM, of the system's own functions.
  kStatus,
  kComStatus,
  kNtStatus,
  /// Returns 0 and sets the last error.
  kZero,
  /// Returns 0 and gives no reason, such as for a kind of drive or folder that is unknown.
  kBareZero,
  /// Returns -1, as a handle or as 32 bits, and sets the last error.
  kMinusOne,

  // Of JNI alone.
  /// Returns 0 and leaves an exception pending.
  kThrows,
  kNeverThrows,
  /// Does not, and may be called while an exception is pending.
  kCleansUp,
  /// An entry of the table of JNI functions that has no row.
  kUnlisted,
};

/// What is known of one function that the library calls.
struct Function {
  std::string_view name = {};
  Failure failure = Failure::kCannotFail;
  Effect effect = {};
  /// Whether this call has the effect; null: every call has.
  bool (*applies)(const Call&) = nullptr;
  /// How its arguments are shown: a letter for each, up to the last that is shown.
  ///
  ///     -  not shown                          p  a pointer: 0 or "&"
  ///     t  text in the letters of the name    u  wide text, whatever the name
  ///     n  32-bit number                      w  number of the size of a pointer, or a handle
  ///     y  8-bit number                       h  16-bit number
  ///     i  where a 32-bit number stands       q  where a 64-bit number stands
  ///     d  bytes; the next argument is their number       6  as many bytes as the digit
  ///     k  registry key: HKCU and its like, or "a key"    s  a SID
  ///     c  what is changed of a service, by the level before it
  ///     f  a stream of the C runtime: "stderr" or another
  ///     {uhn}  a record: its fields, which have the size that their letters say; . is 32 bits,
  ///            not shown
  ///     [uhn]  such records; the next argument is their number
  std::string_view signature = {};
  /// Of a method and of a JNI function: its place in their table.
  size_t slot = 0;

  bool isOfJni() const { return failure >= Failure::kThrows; }
  bool canFail() const;
  bool returnsError() const;
  /// The error of a failure that names none, which no code expects: what is hard-coded shows beside
  /// it. 0 leaves the last error as it is.
  uint32_t error() const;
  /// The result of a call that failed.
  uint64_t failureResult(uint32_t named) const;
  bool succeeded(uint64_t result) const;
};

/// All that the library calls, methods and JNI functions as well.
const std::vector<Function>& allFunctions();
/// Null for a function that the table lacks: whoever makes the library call a new one adds it.
const Function* findFunction(std::string_view name);

/// A call as a person reads it: the name and the arguments, with a tab before each.
std::wstring showCall(std::string_view name, std::string_view signature, const uint64_t* words);

}  // namespace bed
