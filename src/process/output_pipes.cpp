#include "process/output_pipes.h"

namespace corvane {

void OutputPipe::open(DWORD standardHandle) {
  SECURITY_ATTRIBUTES inheritable = {sizeof(inheritable), nullptr, TRUE};
  if (CreatePipe(readEnd_.receive(), writeEnd_.receive(), &inheritable, 0) != FALSE) {
    keepReadEndFromChild();
    return;
  }
  readEnd_.close();
  writeEnd_ = ScopedKernelHandle(GetStdHandle(standardHandle));
}

/// A child that inherited this end too would never see that nobody reads any more: it would wait
/// for ever to be rid of its output. Where the end cannot be kept from it, that is how it is.
void OutputPipe::keepReadEndFromChild() noexcept {
  const HANDLE self = GetCurrentProcess();
  ScopedKernelHandle own;
  if (DuplicateHandle(self, readEnd_.get(), self, own.receive(), 0, FALSE, DUPLICATE_SAME_ACCESS) !=
      FALSE) {
    readEnd_ = std::move(own);
  }
}

void OutputPipe::close() noexcept {
  writeEnd_.close();
  readEnd_.close();
}

std::optional<DWORD> OutputPipe::available() const noexcept {
  DWORD count = 0;
  if (PeekNamedPipe(readEnd_.get(), nullptr, 0, nullptr, &count, nullptr) == FALSE) {
    return std::nullopt;
  }
  return count;
}

std::span<const char> OutputPipe::read(ReadBuffer& buffer) const noexcept {
  DWORD count = 0;
  if (ReadFile(readEnd_.get(), buffer.data(), DWORD{sizeof(buffer)}, &count, nullptr) == FALSE) {
    return {};
  }
  return {buffer.data(), count};
}

void OutputPipes::open() {
  output.open(STD_OUTPUT_HANDLE);
  errors.open(STD_ERROR_HANDLE);
}

void OutputPipes::close() noexcept {
  errors.close();
  output.close();
}

STARTUPINFOA OutputPipes::startupInfo(WORD showWindow) const noexcept {
  STARTUPINFOA startup = {};
  startup.cb = sizeof(startup);
  startup.dwFlags = STARTF_USESHOWWINDOW | STARTF_USESTDHANDLES;
  startup.wShowWindow = showWindow;
  startup.hStdInput = GetStdHandle(STD_INPUT_HANDLE);
  startup.hStdOutput = output.writeEnd();
  startup.hStdError = errors.writeEnd();
  return startup;
}

}  // namespace corvane
