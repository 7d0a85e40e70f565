#include "file/properties/file_version.h"

#include <cstdint>
#include <cstring>

#include "bridge/win32/ansi_or_wide.h"

namespace corvane {

namespace {

/// Behind the data stand as many zeros again, and these. VerQueryValue looks for the end of a name
/// before it looks at any length, and finds one there. The ANSI one besides puts what it takes for
/// text behind what the data claim to be, and as far behind again.
constexpr DWORD kEnd = 64;

/// No version is larger; one that is could not be had with the zeros.
constexpr DWORD kLargestSize = 0x3FFFFFFF;

/// The version of a file as the system gives it, in `size` bytes; 0 when it gives none.
struct VersionData {
  ByteBuffer bytes;
  DWORD size = 0;
};

VersionData readVersion(bool ansi, const wchar_t* path) {
  DWORD handle = 0;
  const DWORD size =
      ansiOrWide(ansi, GetFileVersionInfoSizeA, GetFileVersionInfoSizeW, path, &handle);
  VersionData data;
  if (size == 0 || size > kLargestSize) {
    return data;
  }
  data.bytes.allocate(2 * size + kEnd, 1);
  void* const bytes = data.bytes.data();
  if (ansiOrWide(ansi, GetFileVersionInfoA, GetFileVersionInfoW, path, handle, size, bytes) !=
      FALSE) {
    data.size = size;
  }
  return data;
}

/// In their first place the data say how long they are. Those that claim more are damaged.
bool isWhole(const VersionData& data) {
  return data.size != 0 && *data.bytes.data<WORD>() <= data.size;
}

/// What was found, when all of it lies within the data.
std::optional<VS_FIXEDFILEINFO> infoWithin(const VersionData& data,
                                           const void* found,
                                           UINT length) {
  VS_FIXEDFILEINFO info = {};
  const auto begin = reinterpret_cast<uintptr_t>(data.bytes.data());
  const auto offset = reinterpret_cast<uintptr_t>(found) - begin;
  if (length < sizeof(info) || offset > data.size || data.size - offset < sizeof(info)) {
    return std::nullopt;
  }
  std::memcpy(&info, found, sizeof(info));
  return info;
}

}  // namespace

std::optional<VS_FIXEDFILEINFO> fixedFileInfo(const wchar_t* path) {
  const bool ansi = isWindows9x();
  const VersionData data = readVersion(ansi, path);
  if (!isWhole(data)) {
    return std::nullopt;
  }
  void* found = nullptr;
  UINT length = 0;
  const BOOL queried =
      ansiOrWide(ansi, VerQueryValueA, VerQueryValueW, data.bytes.data(), L"\\", &found, &length);
  return queried == FALSE ? std::nullopt : infoWithin(data, found, length);
}

}  // namespace corvane
