#include <cstdlib>
#include <new>

#include "bridge/win32/last_error.h"

// What the C++ runtime would do otherwise, and an installer cannot have.

namespace corvane {
namespace {

/// The runtime allocates its state at the first exception, once for the process and once for each
/// thread, and ends the process when there is no memory for it. Here it is made while the library
/// is loaded, for the thread that loads it.
const bool exceptionsReady = [] {
  try {
    throw true;
  } catch (bool ready) {
    return ready;
  }
}();

}  // namespace
}  // namespace corvane

// Memory is taken and given back without a trace in the thread's last error: making, assigning or
// freeing a text never changes the error that is about to be reported.

void* operator new(size_t size) {
  const corvane::LastErrorKeeper keeper;
  void* const block = std::malloc(size == 0 ? 1 : size);
  if (block == nullptr) {
    throw std::bad_alloc();
  }
  return block;
}

void operator delete(void* block) noexcept {
  const corvane::LastErrorKeeper keeper;
  std::free(block);
}

#ifdef __cpp_sized_deallocation
void operator delete(void* block, size_t) noexcept {
  operator delete(block);
}
#endif

#ifdef __GLIBCXX__
// The runtime of g++ ends a program that it cannot go on with by printing the exception's name, for
// which it carries a formatter as large as this library. An installer has nowhere to print it.
// NOLINTBEGIN(bugprone-reserved-identifier): the runtime's own name, replaced.
namespace __gnu_cxx {
void __verbose_terminate_handler();
void __verbose_terminate_handler() {
  std::abort();
}
}  // namespace __gnu_cxx
// NOLINTEND(bugprone-reserved-identifier)
#endif
