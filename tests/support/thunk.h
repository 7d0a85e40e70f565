#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace bed {

struct HookedFunction;

/// One call on its way through a stub.
struct Call {
  HookedFunction* function;
  /// The arguments as the x64 convention lays them out: one word each, however many there are. What
  /// is written here is what the called function gets.
  uint64_t* words;
  /// The return address: who called.
  const void* caller;
  /// Set by `before` when it answers the call itself, and there for `after` to read and to change.
  uint64_t result;
  /// For `before` to leave something to `after`.
  uint64_t note;
};

/// A function of any signature that calls are led past.
struct HookedFunction {
  std::string name;
  /// How its arguments are shown; see showCall.
  std::string_view signature;
  const void* original;
  /// Returns where the call goes on (usually `original`), or null when it answers by `result`.
  const void* (*before)(Call&);
  void (*after)(Call&);
};

/// Makes the address to call instead of `function.original`. Both live until the process ends.
/// Stubs keep every register that a call may use for arguments or for its result.
const void* makeStub(HookedFunction& function);

/// Whether an address is where a stub's original returns to: its caller is a hooked function whose
/// last act is a jump.
bool isReturnToStub(const void* address);

}  // namespace bed
