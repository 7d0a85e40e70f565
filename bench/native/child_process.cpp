#include "child_process.h"

#include "timed_calls.h"

namespace {

void close(HANDLE& handle) {
  if (handle != nullptr) {
    CloseHandle(handle);
    handle = nullptr;
  }
}

}  // namespace

ChildProcess::~ChildProcess() {
  closeChildEnds();
  close(output_);
  close(errors_);
  close(process_.hThread);
  close(process_.hProcess);
}

DWORD ChildProcess::makePipes() {
  SECURITY_ATTRIBUTES inherited = {sizeof(inherited), nullptr, TRUE};
  const DWORD error = errorUnless(CreatePipe(&output_, &childOutput_, &inherited, 0));
  return error != ERROR_SUCCESS ? error
                                : errorUnless(CreatePipe(&errors_, &childErrors_, &inherited, 0));
}

void ChildProcess::closeChildEnds() {
  close(childOutput_);
  close(childErrors_);
}

DWORD ChildProcess::start(std::string commandLine, bool keepsChildEnds) {
  DWORD error = makePipes();
  if (error != ERROR_SUCCESS) {
    return error;
  }
  STARTUPINFOA startup = {};
  startup.cb = sizeof(startup);
  startup.dwFlags = STARTF_USESHOWWINDOW | STARTF_USESTDHANDLES;
  startup.hStdInput = GetStdHandle(STD_INPUT_HANDLE);
  startup.hStdOutput = childOutput_;
  startup.hStdError = childErrors_;
  error = errorUnless(CreateProcessA(nullptr,
                                     commandLine.data(),
                                     nullptr,
                                     nullptr,
                                     TRUE,
                                     CREATE_NEW_CONSOLE | NORMAL_PRIORITY_CLASS,
                                     nullptr,
                                     nullptr,
                                     &startup,
                                     &process_));
  if (!keepsChildEnds) {
    closeChildEnds();
  }
  return error;
}

DWORD exitCode(HANDLE process, DWORD& code) {
  WaitForSingleObject(process, INFINITE);
  return errorUnless(GetExitCodeProcess(process, &code));
}
