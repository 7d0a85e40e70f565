#include <windows.h>

#include <process.h>

#include <algorithm>
#include <cstdlib>
#include <string>

// A program that does what its arguments say, one after the other, for the tests to run:
//   out=N err=N   writes N bytes, of all values      both=N   both, by turns
//   line          writes its command line            window   writes how its window is to be shown
//   close         closes its outputs                 sleep=N  lives on for N milliseconds
//   child=WHAT    starts another of its kind that inherits its outputs, and does not wait for it
//   exit=N        ends with this code; without it, with 0. When it cannot write: with 99

namespace {

void write(DWORD stream, const std::string& bytes) {
  DWORD written = 0;
  for (size_t at = 0; at < bytes.size(); at += written) {
    const auto size = static_cast<DWORD>(std::min(bytes.size() - at, size_t{50000}));
    if (WriteFile(GetStdHandle(stream), &bytes[at], size, &written, nullptr) == FALSE) {
      ExitProcess(99);
    }
  }
}

std::string pattern(size_t first, size_t end) {
  std::string bytes;
  for (; first < end; ++first) {
    bytes += static_cast<char>(first);
  }
  return bytes;
}

void act(const char* program, const std::string& what, const std::string& value) {
  const size_t number = std::strtoul(value.c_str(), nullptr, 10);
  if (what == "out" || what == "err") {
    write(what == "out" ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE, pattern(0, number));
  } else if (what == "both") {
    for (size_t at = 0; at < number; at += 5000) {
      write(STD_ERROR_HANDLE, pattern(at, std::min(at + 5000, number)));
      write(STD_OUTPUT_HANDLE, pattern(at, std::min(at + 5000, number)));
    }
  } else if (what == "line") {
    write(STD_OUTPUT_HANDLE, GetCommandLineA());
  } else if (what == "window") {
    STARTUPINFOA startup = {};
    GetStartupInfoA(&startup);
    write(STD_OUTPUT_HANDLE, std::to_string(startup.wShowWindow));
  } else if (what == "close") {
    CloseHandle(GetStdHandle(STD_OUTPUT_HANDLE));
    CloseHandle(GetStdHandle(STD_ERROR_HANDLE));
  } else if (what == "sleep") {
    Sleep(static_cast<DWORD>(number));
  } else if (what == "child") {
    _spawnl(_P_NOWAIT, program, "child", value.c_str(), nullptr);
  } else if (what == "exit") {
    ExitProcess(static_cast<UINT>(number));
  }
}

}  // namespace

int main(int count, char** arguments) {
  for (int index = 1; index < count; ++index) {
    const std::string argument = arguments[index];
    const size_t end = std::min(argument.find('='), argument.size() - 1);
    act(arguments[0], argument.substr(0, argument.find('=')), argument.substr(end + 1));
  }
  return 0;
}
