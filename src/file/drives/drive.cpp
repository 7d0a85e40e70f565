#include "file/drives/drive.h"

#include <utility>

#include "bridge/win32/ansi_or_wide.h"
#include "bridge/win32/runtime_function.h"
#include "bridge/win32/win32_failure.h"
#include "file/drives/critical_errors.h"

namespace corvane {

namespace {

constexpr DWORD kFormatElements = 256;
constexpr DWORD kLongName = 255;

/// Clusters, sectors and bytes, for systems that count no further.
BOOL countClusters(bool ansi, const wchar_t* drive, uint64_t& bytes) {
  DWORD sectorsPerCluster = 0;
  DWORD bytesPerSector = 0;
  DWORD freeClusters = 0;
  DWORD clusters = 0;
  const BOOL known = ansiOrWide(ansi,
                                GetDiskFreeSpaceA,
                                GetDiskFreeSpaceW,
                                drive,
                                &sectorsPerCluster,
                                &bytesPerSector,
                                &freeClusters,
                                &clusters);
  bytes = uint64_t{freeClusters} * bytesPerSector * sectorsPerCluster;
  return known;
}

template <class Function, class Drive>
BOOL countBytes(const RuntimeFunction<Function>& getDiskFreeSpaceEx, Drive drive, uint64_t& bytes) {
  ULARGE_INTEGER available = {};
  ULARGE_INTEGER total = {};
  ULARGE_INTEGER free = {};
  const BOOL known = getDiskFreeSpaceEx(drive, &available, &total, &free);
  bytes = available.QuadPart;
  return known;
}

BOOL freeBytesAnsi(const wchar_t* drive, uint64_t& bytes) {
  const auto getDiskFreeSpaceEx = RUNTIME_FUNCTION(kernel32, GetDiskFreeSpaceExA);
  if (!getDiskFreeSpaceEx) {
    return countClusters(true, drive, bytes);
  }
  const AnsiText ansi(drive);
  return countBytes(getDiskFreeSpaceEx, static_cast<const char*>(ansi), bytes);
}

BOOL freeBytesWide(const wchar_t* drive, uint64_t& bytes) {
  const auto getDiskFreeSpaceEx = RUNTIME_FUNCTION(kernel32, GetDiskFreeSpaceExW);
  return getDiskFreeSpaceEx ? countBytes(getDiskFreeSpaceEx, drive, bytes)
                            : countClusters(false, drive, bytes);
}

/// The texts of a list in which each has its terminator, and the last is followed by another.
std::vector<WString> split(const ByteBuffer& list) {
  std::vector<WString> texts;
  for (uint32_t at = 0; at < list.count() && list.data<wchar_t>()[at] != L'\0';) {
    texts.push_back(boundedText(list.data<wchar_t>() + at, list.count() - at));
    at += static_cast<uint32_t>(texts.back().size()) + 1;
  }
  return texts;
}

}  // namespace

int64_t driveFreeSpace(const wchar_t* drive) {
  const CriticalErrorSuppressor suppressor;
  uint64_t bytes = 0;
  const BOOL known = isWindows9x() ? freeBytesAnsi(drive, bytes) : freeBytesWide(drive, bytes);
  if (known == FALSE) {
    throwUnlessZero(GetLastError());
    return 0;
  }
  return static_cast<int64_t>(bytes);
}

std::vector<WString> driveNames() {
  const bool ansi = isWindows9x();
  const DWORD length =
      ansiOrWide(ansi, GetLogicalDriveStringsA, GetLogicalDriveStringsW, DWORD{0}, nullptr);
  ByteBuffer list;
  list.allocate(length + 1, ansi ? sizeof(char) : sizeof(wchar_t));
  ansiOrWide(ansi,
             GetLogicalDriveStringsA,
             GetLogicalDriveStringsW,
             DWORD{list.count()},
             TextBuffer(list.data()));
  if (ansi) {
    ByteBuffer wide;
    throwUnlessConverted(ansiToWideN(list.data<char>(), list.count(), wide));
    list = std::move(wide);
  }
  return split(list);
}

int driveType(const wchar_t* drive) {
  switch (GetDriveTypeA(ansiArgument(drive))) {
    case DRIVE_FIXED:
      return 1;
    case DRIVE_REMOVABLE:
      return 2;
    case DRIVE_REMOTE:
      return 3;
    case DRIVE_CDROM:
      return 4;
    case DRIVE_RAMDISK:
      return 5;
    default:
      return -1;
  }
}

WString driveFormat(const wchar_t* drive) {
  const CriticalErrorSuppressor suppressor;
  const bool ansi = isWindows9x();
  DWORD longestName = 0;
  DWORD flags = 0;
  wchar_t format[kFormatElements] = {};
  const BOOL known = ansiOrWide(ansi,
                                GetVolumeInformationA,
                                GetVolumeInformationW,
                                drive,
                                nullptr,
                                DWORD{0},
                                nullptr,
                                &longestName,
                                &flags,
                                TextBuffer(format),
                                kFormatElements);
  if (known == FALSE) {
    throwLastError();
  }
  return ansi ? boundedTextFromAnsi(reinterpret_cast<const char*>(format), kFormatElements)
              : boundedText(format, kFormatElements);
}

bool supportsLongFileNames(const wchar_t* drive) {
  const CriticalErrorSuppressor suppressor;
  DWORD longestName = 0;
  DWORD flags = 0;
  if (GetVolumeInformationA(ansiArgument(drive),
                            nullptr,
                            0,
                            nullptr,
                            &longestName,
                            &flags,
                            nullptr,
                            0) == FALSE) {
    throwLastError();
  }
  return longestName >= kLongName;
}

}  // namespace corvane
