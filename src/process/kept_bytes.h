#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "bridge/win32/scoped_handle.h"

namespace corvane {

/// What was kept cannot be read again. It is no Win32Failure: the program was started, and this
/// must not pass for a start that failed.
struct KeptBytesLost {};

/// Bytes that are kept until somebody takes them: in memory, and each time that 16 MiB are there,
/// in a temporary file, which the system deletes when it is closed. Where there is no such file,
/// they stay in memory.
class KeptBytes {
 public:
  void add(std::span<const char> bytes);

  /// Gives them back in their order, in pieces: `take(std::span<const char>)`. Throws KeptBytesLost
  /// when the file cannot be read.
  template <class Take>
  void giveBack(const Take& take) {
    rewind();
    while (!readPiece().empty()) {
      take(std::span<const char>(piece_));
    }
    if (!memory_.empty()) {
      take(std::span<const char>(memory_));
    }
  }

 private:
  void moveToFile();
  void rewind();
  const std::vector<char>& readPiece();

  std::vector<char> memory_;  // what came after all that is in the file
  ScopedFile file_;
  uint64_t inFile_ = 0;
  bool fileServes_ = true;
  std::vector<char> piece_;
};

}  // namespace corvane
