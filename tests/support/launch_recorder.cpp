#include <windows.h>

#include <string>

// A program that records how it was started, for the tests to see what a shortcut does: where it
// stands itself, its command line, its working directory and the number of its process, a line
// each, in UTF-16. The record is a file beside it with the extension ".started", which is there
// when it is whole. It has no console, whose own process would use the working directory for
// longer.

namespace {

std::wstring currentDirectory() {
  wchar_t directory[MAX_PATH] = {};
  GetCurrentDirectoryW(MAX_PATH, directory);
  return directory;
}

bool write(const std::wstring& file, const std::wstring& text) {
  const HANDLE handle =
      CreateFileW(file.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
  const auto size = static_cast<DWORD>(text.size() * sizeof(wchar_t));
  DWORD written = 0;
  const BOOL done = WriteFile(handle, text.data(), size, &written, nullptr);
  CloseHandle(handle);
  return done != FALSE;
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
  wchar_t program[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, program, MAX_PATH);
  const std::wstring record = program + std::wstring(L".started");
  const std::wstring part = record + L".part";
  const std::wstring text = program + std::wstring(L"\n") + GetCommandLineW() + L"\n" +
                            currentDirectory() + L"\n" + std::to_wstring(GetCurrentProcessId());
  return write(part, text) && MoveFileW(part.c_str(), record.c_str()) != FALSE ? 0 : 1;
}
