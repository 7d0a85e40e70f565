#include "file/in_use/reboot_file_list.h"

#include <climits>
#include <cstring>
#include <utility>

#include "bridge/win32/byte_buffer.h"
#include "bridge/win32/last_error.h"
#include "bridge/win32/scoped_handle.h"
#include "bridge/win32/win32_failure.h"
#include "file/in_use/rename_section.h"

namespace corvane {

namespace {

/// Room beyond the lines: the section's header and its line feed, and one for good measure.
constexpr size_t kHeaderRoom = 10;

std::string shortName(const char* path) {
  const DWORD size = GetShortPathNameA(path, nullptr, 0);
  ByteBuffer name;
  name.allocate(size, sizeof(char));
  const DWORD length = size == 0 ? 0 : GetShortPathNameA(path, name.data<char>(), size);
  if (length == 0 || length >= size) {
    return path == nullptr ? "" : path;
  }
  return {name.data<char>(), length};
}

std::string iniFile() {
  char directory[MAX_PATH] = {};
  const UINT length = GetWindowsDirectoryA(directory, MAX_PATH);
  throwUnless(length != 0);
  if (length >= MAX_PATH) {
    throw Win32Failure(ERROR_INSUFFICIENT_BUFFER);
  }
  return std::string(directory) + "\\WinInit.Ini";
}

/// Sets where a file ends, when the scope does: what a mapping has added goes again then, also when
/// that failed.
class FileEnd {
 public:
  FileEnd(HANDLE file, size_t end) noexcept : file_(file), end_(end) {}
  FileEnd(const FileEnd&) = delete;
  FileEnd& operator=(const FileEnd&) = delete;
  ~FileEnd() {
    const LastErrorKeeper keeper;
    const DWORD at = SetFilePointer(file_, static_cast<LONG>(end_), nullptr, FILE_BEGIN);
    if (at != INVALID_SET_FILE_POINTER) {  // or the file would end where it begins
      SetEndOfFile(file_);
    }
  }

  void moveTo(size_t end) noexcept { end_ = end; }

 private:
  HANDLE file_;
  size_t end_;
};

/// The size of a file, which must leave room for `added` bytes more.
DWORD sizeOf(HANDLE file, size_t added) {
  DWORD beyond = 0;
  const DWORD size = GetFileSize(file, &beyond);
  throwUnless(size != INVALID_FILE_SIZE || GetLastError() == ERROR_SUCCESS);
  if (beyond != 0 || size + added > size_t{LONG_MAX}) {
    throw Win32Failure(ERROR_FILE_TOO_LARGE);
  }
  return size;
}

/// Writes the lines into the file through a view that has room for them. The view and its mapping
/// are closed before the end is set.
void writeLines(HANDLE file, const std::vector<std::string>& lines) {
  const size_t added = joinedLength(lines) + kHeaderRoom;
  const DWORD size = sizeOf(file, added);
  FileEnd end(file, size);
  const ScopedKernelHandle mapping(CreateFileMappingA(file,
                                                      nullptr,
                                                      PAGE_READWRITE,
                                                      0,
                                                      static_cast<DWORD>(size + added),
                                                      nullptr));
  throwUnless(static_cast<bool>(mapping));
  const ScopedView view(MapViewOfFile(mapping.get(), FILE_MAP_WRITE, 0, 0, 0));
  throwUnless(static_cast<bool>(view));
  auto* text = static_cast<char*>(view.get());
  std::memset(text + size, 0, added);
  end.moveTo(insertRenameLines(text, size, lines));
}

void writeToIniFile(const std::vector<std::string>& lines) {
  const std::string path = iniFile();
  const ScopedFile file(CreateFileA(path.c_str(),
                                    GENERIC_READ | GENERIC_WRITE,
                                    0,
                                    nullptr,
                                    OPEN_ALWAYS,
                                    FILE_FLAG_SEQUENTIAL_SCAN | FILE_ATTRIBUTE_NORMAL,
                                    nullptr));
  throwUnless(static_cast<bool>(file));
  writeLines(file.get(), lines);
}

}  // namespace

void RebootFileList::addRename(const char* newFile, const char* target) {
  std::string line = shortName(target) + "=";
  line += shortName(newFile);
  lines_.push_back(std::move(line));
}

void RebootFileList::addDelete(const char* path) {
  lines_.push_back("NUL=" + shortName(path));
}

DWORD RebootFileList::commit() {
  if (lines_.empty()) {
    return ERROR_SUCCESS;
  }
  try {
    writeToIniFile(lines_);
  } catch (const Win32Failure& failure) {
    return failure.code();
  }
  lines_.clear();
  return ERROR_SUCCESS;
}

}  // namespace corvane
