#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "functions.h"

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
  /// The thread's last error, which the hooks' own work leaves as it is unless they set another.
  uint32_t lastError;
};

/// A function of any signature that calls are led past; none has arguments or a result in floating
/// point.
struct HookedFunction {
  std::string name;
  const void* original;
  /// Returns where the call goes on (usually `original`), or null when it answers by `result`.
  const void* (*before)(Call&);
  void (*after)(Call&);
  Function facts = {};
  /// Of a native: the letter of its result in Java's signature, or that of a text.
  char type = 'V';

  static constexpr char kText = 'T';
};

/// Makes the address to call instead of `function.original`. It lives until the process ends.
const void* makeStub(const HookedFunction& function);

/// Whether an address is where a stub's original returns to: its caller is a hooked function whose
/// last act is a jump.
bool isReturnToStub(const void* address);

/// Whether an address is in the hooked library.
bool isOfLibrary(const void* address);

/// What is called instead of `original`: a stub that leads it past the monitor when the library
/// calls. One for each name.
const void* stubFor(const std::string& name, const Function& facts, const void* original);

/// Leads every function that the library imports past the monitor, and also those that it looks up
/// with GetProcAddress, and the methods of the objects that it is handed, from now on. Returns the
/// names of imports that the table of functions lacks; those are not hooked.
std::vector<std::string> hookImports(void* library);

}  // namespace bed
