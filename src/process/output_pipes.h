#pragma once

#include <windows.h>

#include <array>
#include <optional>
#include <span>

#include "bridge/win32/scoped_handle.h"

namespace corvane {

using ReadBuffer = std::array<char, 1000>;

/// The pipe for one of a child's outputs. This process keeps the end for writing open as well, so
/// that the end of the output is never seen here: it is the end of the child.
class OutputPipe {
 public:
  /// When no pipe can be made, the child writes to where this process writes itself
  /// (`standardHandle`), and nothing of it is read here. That handle is owned and closed like an
  /// end of a pipe: it is the child's then, and what is left of it here would keep a reader
  /// waiting.
  void open(DWORD standardHandle);
  void close() noexcept;

  HANDLE writeEnd() const noexcept { return writeEnd_.get(); }

  /// How many bytes stand in the pipe; nothing when it cannot be asked.
  std::optional<DWORD> available() const noexcept;

  /// What was read; nothing when that failed.
  std::span<const char> read(ReadBuffer& buffer) const noexcept;

 private:
  void keepReadEndFromChild() noexcept;

  // The end for writing is closed first.
  ScopedKernelHandle readEnd_;
  ScopedKernelHandle writeEnd_;
};

/// Both outputs. Those for errors are closed first.
struct OutputPipes {
  void open();
  void close() noexcept;

  /// What a program is started with: these pipes, and the window that is asked for.
  STARTUPINFOA startupInfo(WORD showWindow) const noexcept;

  OutputPipe output;
  OutputPipe errors;
};

}  // namespace corvane
