#include "file/reboot_file_list.h"

#include <climits>
#include <cstring>
#include <utility>

#include "bridge/win32/byte_buffer.h"
#include "bridge/win32/last_error.h"
#include "bridge/win32/scoped_handle.h"
#include "file/rename_section.h"

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

/// Where the file is; 0, or the Win32 error.
DWORD findIniFile(std::string& path) {
  char directory[MAX_PATH] = {};
  const UINT length = GetWindowsDirectoryA(directory, MAX_PATH);
  if (length == 0) {
    return GetLastError();
  }
  if (length >= MAX_PATH) {
    return ERROR_INSUFFICIENT_BUFFER;
  }
  path = std::string(directory) + "\\WinInit.Ini";
  return ERROR_SUCCESS;
}

void setEnd(HANDLE file, size_t end) noexcept {
  const LastErrorKeeper keeper;
  SetFilePointer(file, static_cast<LONG>(end), nullptr, FILE_BEGIN);
  SetEndOfFile(file);
}

/// Writes the lines into the `size` bytes of the file through a view that has room for them, and
/// tells where the file ends then. 0, or the Win32 error; the mapping is closed in any case, so
/// that the end can be set.
DWORD editThroughView(HANDLE file,
                      size_t size,
                      const std::vector<std::string>& lines,
                      size_t& end) {
  const size_t capacity = size + joinedLength(lines) + kHeaderRoom;
  const ScopedKernelHandle mapping(
      CreateFileMappingA(file, nullptr, PAGE_READWRITE, 0, static_cast<DWORD>(capacity), nullptr));
  if (!mapping) {
    return GetLastError();
  }
  const ScopedView view(MapViewOfFile(mapping.get(), FILE_MAP_WRITE, 0, 0, 0));
  if (!view) {
    return GetLastError();
  }
  auto* text = static_cast<char*>(view.get());
  std::memset(text + size, 0, capacity - size);
  end = insertRenameLines(text, size, lines);
  return ERROR_SUCCESS;
}

DWORD writeLines(HANDLE file, const std::vector<std::string>& lines) {
  DWORD beyond = 0;
  const DWORD size = GetFileSize(file, &beyond);
  if (size == INVALID_FILE_SIZE && GetLastError() != ERROR_SUCCESS) {
    return GetLastError();
  }
  if (beyond != 0 || size + joinedLength(lines) + kHeaderRoom > size_t{LONG_MAX}) {
    return ERROR_FILE_TOO_LARGE;
  }
  size_t end = size;
  const DWORD error = editThroughView(file, size, lines, end);
  setEnd(file, end);  // also takes back what a mapping that failed has added
  return error;
}

DWORD writeToIniFile(const std::vector<std::string>& lines) {
  std::string path;
  const DWORD error = findIniFile(path);
  if (error != ERROR_SUCCESS) {
    return error;
  }
  const ScopedFile file(CreateFileA(path.c_str(),
                                    GENERIC_READ | GENERIC_WRITE,
                                    0,
                                    nullptr,
                                    OPEN_ALWAYS,
                                    FILE_FLAG_SEQUENTIAL_SCAN | FILE_ATTRIBUTE_NORMAL,
                                    nullptr));
  return file ? writeLines(file.get(), lines) : GetLastError();
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
  const DWORD error = writeToIniFile(lines_);
  if (error == ERROR_SUCCESS) {
    lines_.clear();
  }
  return error;
}
