#include <cstdlib>

// The C++ runtime of g++ ends a program that it cannot go on with by printing the exception's name,
// for which it carries a formatter as large as this library. An installer has nowhere to print it.

#ifdef __GLIBCXX__
// NOLINTBEGIN(bugprone-reserved-identifier): the runtime's own name, replaced.
namespace __gnu_cxx {
void __verbose_terminate_handler();
void __verbose_terminate_handler() {
  std::abort();
}
}  // namespace __gnu_cxx
// NOLINTEND(bugprone-reserved-identifier)
#endif
