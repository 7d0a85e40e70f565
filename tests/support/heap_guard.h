#pragma once

#include "thunk.h"

namespace bed {

/// Makes heap errors of the library show. Each block that it allocates gets a guard behind it that
/// `free` checks (what reads over the end reads letters, not zeros), new memory is filled with what
/// nobody counts on, and so is freed memory.
class HeapGuard {
 public:
  /// What each call of the heap leaves as the thread's last error: an error that is read after it,
  /// and not on the line after the call that failed, shows as this number.
  static constexpr uint32_t kLastError = 0xDEAD;

  static bool guards(const Call& call) {
    return call.function->facts.effect.account == Account::kHeapBlock;
  }
  /// Before malloc, calloc, realloc: asks for room for the guard. Before free: checks it. False
  /// when the call must not take place, because the block is already free.
  static bool before(Call& call);
  static void after(Call& call);
  /// Forgets all blocks; they stay valid.
  static void clear();
};

}  // namespace bed
