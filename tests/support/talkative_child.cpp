#include <windows.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

// A program that does what its arguments say, one after the other, for the tests to run:
//   out=N err=N   writes N bytes, of all values      both=N   both at once, from two threads
//   line          writes its command line            window   writes how its window is to be shown
//   close         closes its outputs                 sleep=N  lives on for N milliseconds
//   child=WHAT    starts another of its kind that inherits its outputs, and does not wait for it
//   exit=N        ends with this code; without it, with 0. When it cannot write: with 99

namespace {

void write(DWORD stream, const void* bytes, size_t count) {
  DWORD written = 0;
  const auto* next = static_cast<const char*>(bytes);
  for (size_t left = count; left != 0; left -= written, next += written) {
    const auto size = static_cast<DWORD>(std::min(left, size_t{50000}));
    if (WriteFile(GetStdHandle(stream), next, size, &written, nullptr) == FALSE) {
      ExitProcess(99);
    }
  }
}

void writePattern(DWORD stream, size_t count) {
  std::vector<unsigned char> bytes(count);
  for (size_t index = 0; index < count; ++index) {
    bytes[index] = static_cast<unsigned char>(index);
  }
  write(stream, bytes.data(), count);
}

DWORD WINAPI writeErrors(void* count) {
  writePattern(STD_ERROR_HANDLE, reinterpret_cast<size_t>(count));
  return 0;
}

void writeBoth(size_t count) {
  const HANDLE thread =
      CreateThread(nullptr, 0, writeErrors, reinterpret_cast<void*>(count), 0, nullptr);
  writePattern(STD_OUTPUT_HANDLE, count);
  WaitForSingleObject(thread, INFINITE);
}

void startAnother(const char* program, const char* what) {
  STARTUPINFOA startup = {};
  startup.cb = sizeof(startup);
  PROCESS_INFORMATION started = {};
  std::string line = "\"" + std::string(program) + "\" " + what;
  CreateProcessA(nullptr,
                 line.data(),
                 nullptr,
                 nullptr,
                 TRUE,
                 0,
                 nullptr,
                 nullptr,
                 &startup,
                 &started);
}

void writeWindow() {
  STARTUPINFOA startup = {};
  GetStartupInfoA(&startup);
  const std::string shown = std::to_string(startup.wShowWindow);
  write(STD_OUTPUT_HANDLE, shown.data(), shown.size());
}

void act(const char* program, const std::string& what, const char* value) {
  const size_t number = std::strtoull(value, nullptr, 10);
  if (what == "out" || what == "err") {
    writePattern(what == "out" ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE, number);
  } else if (what == "both") {
    writeBoth(number);
  } else if (what == "line") {
    write(STD_OUTPUT_HANDLE, GetCommandLineA(), std::strlen(GetCommandLineA()));
  } else if (what == "window") {
    writeWindow();
  } else if (what == "close") {
    CloseHandle(GetStdHandle(STD_OUTPUT_HANDLE));
    CloseHandle(GetStdHandle(STD_ERROR_HANDLE));
  } else if (what == "sleep") {
    Sleep(static_cast<DWORD>(number));
  } else if (what == "child") {
    startAnother(program, value);
  } else if (what == "exit") {
    ExitProcess(static_cast<UINT>(number));
  }
}

}  // namespace

int main(int count, char** arguments) {
  for (int index = 1; index < count; ++index) {
    const std::string argument = arguments[index];
    const size_t sign = std::min(argument.find('='), argument.size());
    act(arguments[0],
        argument.substr(0, sign),
        sign < argument.size() ? arguments[index] + sign + 1 : "");
  }
  return 0;
}
