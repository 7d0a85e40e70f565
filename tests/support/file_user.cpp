#include <windows.h>

#include <cstdio>
#include <cwchar>

// A program that uses a file until a line, or the end, of its standard input:
//   corvane_file_user               only runs: it is the file in use itself
//   corvane_file_user SHARING FILE  has the file open; others may (1) read, (2) write, (4) delete
// It says "ready" when the file is in use, or the error.

int wmain(int count, wchar_t** arguments) {
  if (count > 2 && CreateFileW(arguments[2],
                               GENERIC_READ,
                               std::wcstoul(arguments[1], nullptr, 10),
                               nullptr,
                               OPEN_EXISTING,
                               0,
                               nullptr) == INVALID_HANDLE_VALUE) {
    std::printf("error %lu\n", GetLastError());
    return 1;
  }
  std::puts("ready");
  std::fflush(stdout);
  std::getchar();
  return 0;
}
