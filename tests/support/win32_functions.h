#pragma once

#include <cstdint>
#include <string_view>

#include "accounts.h"
#include "thunk.h"

namespace bed {

/// How a function tells that it failed.
enum class Failure {
  /// Not hooked at all: it neither fails nor concerns any account (memcpy), or it must see the
  /// stack as
  /// it is (unwinding), or it is no function (imported data).
  kUntouched,
  kCannotFail,
  /// Returns the error itself.
  kStatus,
  /// Returns 0 and sets the last error.
  kZero,
  /// Returns -1, as a handle or as 32 bits, and sets the last error.
  kMinusOne,
};

/// What is known of one function that the library calls.
struct Win32Function {
  std::string_view name;
  /// How its arguments are shown; see showCall.
  std::string_view signature = {};
  Failure failure = Failure::kCannotFail;
  Effect effect = {};
  /// The error of a failure that names none, 1450 as a rule, which nothing expects; 0 leaves the
  /// last error as it is.
  uint32_t error = 1450;
  /// Whether this call has the effect; null: every call has.
  bool (*applies)(const Call&) = nullptr;
};

/// Null for a function that is not in the table: whoever makes the library call a new one adds a
/// line.
const Win32Function* findWin32Function(std::string_view name);

/// The result of a call that failed.
uint64_t failureResult(const Win32Function& function, uint32_t error);
bool succeeded(const Win32Function& function, uint64_t result);

}  // namespace bed
