#ifndef _MSC_VER  // which brings its own

#include <windows.h>
#include <x86intrin.h>

#include <cstdint>

// A function with an array on its stack leaves this number behind it and looks at its end whether
// it is still there. The compiler's own library for that asks the system's cryptographic provider
// for one, which some systems lack at the moment when the library is loaded.
// NOLINTBEGIN(bugprone-reserved-identifier): the compiler's own names.

extern "C" {

extern uintptr_t __stack_chk_guard;
[[noreturn]] void __stack_chk_fail();

/// The number until one has been drawn. It has a zero byte in it: a text that runs over its array
/// ends there and cannot restore it.
uintptr_t __stack_chk_guard = 0x0A0D'FF00'2992'DDA2U;

/// The process ends at once: no more code may run on a stack that somebody else has written.
void __stack_chk_fail() {
  constexpr unsigned kStackGuardOverrun = 2;
  // __fastfail, which the headers lack. Before Windows 8 it is an exception that ends the process.
  __asm__ volatile("int $0x29" : : "c"(kStackGuardOverrun));
  __builtin_unreachable();
}

}  // extern "C"

namespace corvane {
namespace {

/// Before any other code of the library, and not guarded itself: the number must not change between
/// a function's begin and its end. What is mixed is what nobody outside the process knows: the
/// moment, and where the system has put the stack and the library.
__attribute__((constructor(101), no_stack_protector)) void drawStackGuard() {
  constexpr uintptr_t kSpread = 0x9E37'79B9'7F4A'7C15U;
  constexpr uintptr_t kWithNul = ~uintptr_t{0xFF00};
  uintptr_t guard = __rdtsc() ^ GetCurrentProcessId();
  guard = (guard ^ reinterpret_cast<uintptr_t>(&guard)) * kSpread;
  guard = (guard ^ guard >> 32 ^ reinterpret_cast<uintptr_t>(&drawStackGuard)) * kSpread;
  __stack_chk_guard = (guard ^ guard >> 32) & kWithNul;
}

}  // namespace
}  // namespace corvane
// NOLINTEND(bugprone-reserved-identifier)

#endif
