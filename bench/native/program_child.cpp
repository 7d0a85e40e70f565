#include <windows.h>

#include <cstdlib>
#include <cstring>

// What the rows of programs run: corvane_bench_child.exe N writes so many bytes to its output and
// ends.

int main(int count, char** arguments) {
  static char block[64 * 1024];
  std::memset(block, 'x', sizeof(block));
  DWORD left = count > 1 ? std::strtoul(arguments[1], nullptr, 10) : 0;
  while (left > 0) {
    const DWORD part = left < sizeof(block) ? left : static_cast<DWORD>(sizeof(block));
    DWORD written = 0;
    if (WriteFile(GetStdHandle(STD_OUTPUT_HANDLE), block, part, &written, nullptr) == FALSE) {
      return 1;
    }
    left -= written;
  }
  return 0;
}
