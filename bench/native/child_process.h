#pragma once

#include <windows.h>

#include <string>

/// A program with its output in a pipe, as the rows of programs run it. The closing end is the
/// destructor's.
class ChildProcess {
 public:
  ChildProcess() = default;
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;
  ~ChildProcess();

  /// 0 or the error. The child's ends stay open here when `keepsChildEnds`, so that a read never
  /// meets an end of data.
  DWORD start(std::string commandLine, bool keepsChildEnds);

  HANDLE process() const { return process_.hProcess; }
  HANDLE output() const { return output_; }
  HANDLE errors() const { return errors_; }

 private:
  DWORD makePipes();
  void closeChildEnds();

  PROCESS_INFORMATION process_ = {};
  HANDLE output_ = nullptr;
  HANDLE errors_ = nullptr;
  HANDLE childOutput_ = nullptr;
  HANDLE childErrors_ = nullptr;
};

/// How many bytes are read at once, as the library is ordered to.
constexpr DWORD kReadSize = 1000;

/// Waits for the end. 0 or the error.
DWORD exitCode(HANDLE process, DWORD& code);
