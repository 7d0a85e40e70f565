#include "process/kept_bytes.h"

#include <windows.h>

#include <algorithm>

namespace corvane {

namespace {

constexpr size_t kInMemory = size_t{16} << 20;
constexpr uint64_t kPiece = 1 << 16;

/// A new file that goes when it is closed. Its name is found in the code page: where that lacks a
/// character of the folder's name, there is no file.
ScopedFile temporaryFile() noexcept {
  char folder[MAX_PATH + 1] = {};
  char name[MAX_PATH] = {};
  if (GetTempPathA(sizeof(folder), folder) == 0 || GetTempFileNameA(folder, "out", 0, name) == 0) {
    return ScopedFile();
  }
  ScopedFile file(CreateFileA(name,
                              GENERIC_READ | GENERIC_WRITE,
                              0,
                              nullptr,
                              CREATE_ALWAYS,
                              FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE,
                              nullptr));
  if (!file) {
    DeleteFileA(name);
  }
  return file;
}

}  // namespace

void KeptBytes::add(std::span<const char> bytes) {
  memory_.insert(memory_.end(), bytes.begin(), bytes.end());
  if (memory_.size() >= kInMemory && fileServes_) {
    moveToFile();
  }
}

/// What was written in part is not counted, and is not there for a reader.
void KeptBytes::moveToFile() {
  if (!file_) {
    file_ = temporaryFile();
  }
  const auto size = static_cast<DWORD>(memory_.size());
  DWORD written = 0;
  fileServes_ = file_ && WriteFile(file_.get(), memory_.data(), size, &written, nullptr) != FALSE &&
                written == size;
  if (fileServes_) {
    inFile_ += size;
    memory_.clear();
  }
}

void KeptBytes::rewind() {
  if (inFile_ != 0 &&
      SetFilePointer(file_.get(), 0, nullptr, FILE_BEGIN) == INVALID_SET_FILE_POINTER) {
    throw KeptBytesLost();
  }
}

/// The next bytes of the file, empty at the end of them.
const std::vector<char>& KeptBytes::readPiece() {
  piece_.resize(static_cast<size_t>(std::min(inFile_, kPiece)));
  const auto size = static_cast<DWORD>(piece_.size());
  DWORD read = 0;
  if (size != 0 &&
      (ReadFile(file_.get(), piece_.data(), size, &read, nullptr) == FALSE || read == 0)) {
    throw KeptBytesLost();
  }
  piece_.resize(read);
  inFile_ -= read;
  return piece_;
}

}  // namespace corvane
