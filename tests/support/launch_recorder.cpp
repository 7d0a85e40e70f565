#include <windows.h>

#include <filesystem>
#include <fstream>
#include <string>

// A program that records how it was started, for the tests to see what a shortcut does: where it
// stands itself, its command line and its working directory, a line each, in UTF-16. The record is
// a file beside it with the extension ".started". It has no console, whose own process would use
// the working directory for longer.

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
  wchar_t program[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, program, MAX_PATH);
  const std::wstring text = program + std::wstring(L"\n") + GetCommandLineW() + L"\n" +
                            std::filesystem::current_path().wstring();
  std::ofstream record(std::filesystem::path(program) += L".started", std::ios::binary);
  record.write(reinterpret_cast<const char*>(text.data()),
               static_cast<std::streamsize>(text.size() * sizeof(wchar_t)));
  return record.flush() ? 0 : 1;
}
