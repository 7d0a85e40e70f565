#include "cleaner/held_file.h"

#include <winternl.h>

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "bridge/win32/required_function.h"

namespace corvane {

namespace {

// Not every SDK declares these, nor what they take.
using QueryOrSet = NTSTATUS(NTAPI*)(HANDLE, IO_STATUS_BLOCK*, void*, ULONG, int);
using QueryDirectory = NTSTATUS(NTAPI*)(HANDLE,
                                        HANDLE,
                                        void*,
                                        void*,
                                        IO_STATUS_BLOCK*,
                                        void*,
                                        ULONG,
                                        int,
                                        BOOLEAN,
                                        UNICODE_STRING*,
                                        BOOLEAN);

constexpr int kDirectoryInformation = 1;
constexpr int kBasicInformation = 4;
constexpr int kDispositionInformation = 13;
constexpr int kAttributeTagInformation = 35;
constexpr int kDispositionInformationEx = 64;

struct DirectoryInformation {
  ULONG nextOffset;
  ULONG index;
  LARGE_INTEGER times[4];
  LARGE_INTEGER sizes[2];
  ULONG attributes;
  ULONG nameBytes;
  wchar_t name[1];
};

struct BasicInformation {
  LARGE_INTEGER times[4];  // 0: as it is
  ULONG attributes;
};

struct AttributeTagInformation {
  ULONG attributes;
  ULONG tag;
};

constexpr ULONG kAllMayShare = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr ULONG kOptions = 0x00200000 | 0x00004000;  // reparse point, backup
constexpr ULONG kSynchronous = 0x20;
constexpr ULONG kDirectoryAlone = 0x01;
constexpr ULONG kFileAlone = 0x40;

/// No link is followed on the way, even where the directory became one while it is open. Since
/// Windows 10; one that is older refuses the flag.
constexpr ULONG kNoLinks = 0x1000;
constexpr NTSTATUS kInvalidParameter = static_cast<NTSTATUS>(0xC000000D);

/// What `\\?\` is to Win32; no path is longer than the system's count.
WString systemPath(const WString& path) {
  return L"\\??\\" + path.substr(4);
}

UNICODE_STRING counted(WString& name) {
  const auto bytes = static_cast<USHORT>(name.size() * sizeof(wchar_t));
  return {bytes, bytes, name.data()};
}

template <class Function>
auto found(RuntimeFunction<Function> function) {
  return required<ERROR_PROC_NOT_FOUND>(function);
}

struct Opening {
  HANDLE directory;
  WString name;
  ACCESS_MASK rights;
  ULONG options;

  NTSTATUS into(HANDLE* file, ULONG flags) {
    UNICODE_STRING text = counted(name);
    OBJECT_ATTRIBUTES object;
    InitializeObjectAttributes(&object, &text, OBJ_CASE_INSENSITIVE | flags, directory, nullptr);
    IO_STATUS_BLOCK io = {};
    const auto open = found(RUNTIME_FUNCTION(ntdll, NtOpenFile));
    return open(file, rights, &object, &io, ULONG{kAllMayShare}, options);
  }
};

DWORD win32Error(NTSTATUS status) {
  const auto error = found(RUNTIME_FUNCTION(ntdll, RtlNtStatusToDosError));
  return NT_SUCCESS(status) ? DWORD{ERROR_SUCCESS} : error(status);
}

template <class Information>
NTSTATUS queryOrSet(const char* name, HANDLE file, int kind, Information& information) {
  const auto function = found(RuntimeFunction<QueryOrSet>("ntdll.dll", name));
  IO_STATUS_BLOCK io = {};
  return function(file, &io, &information, ULONG{sizeof(information)}, kind);
}

template <class Information>
Information query(HANDLE file, int kind) {
  Information information = {};
  queryOrSet("NtQueryInformationFile", file, kind, information);
  return information;
}

template <class Information>
NTSTATUS set(HANDLE file, int kind, Information information) {
  return queryOrSet("NtSetInformationFile", file, kind, information);
}

/// A name with a separator is none: who gives one wants another place to be opened.
bool isOneName(std::wstring_view name) {
  return !name.empty() && name != L"." && name != L".." && name.find_first_of(L"\\/") == name.npos;
}

/// Nothing behind the end of what a file system has told, whatever it says there.
void append(std::vector<ListedFile>& files, const std::byte* next, size_t size) {
  constexpr size_t kHead = offsetof(DirectoryInformation, name);
  while (size >= kHead) {
    const auto& entry = *reinterpret_cast<const DirectoryInformation*>(next);
    if (entry.nameBytes > size - kHead) {
      return;
    }
    const std::wstring_view name(entry.name, entry.nameBytes / sizeof(wchar_t));
    if (isOneName(name)) {
      files.push_back({WString(name), entry.attributes});
    }
    if (entry.nextOffset == 0 || entry.nextOffset > size) {
      return;
    }
    next += entry.nextOffset;
    size -= entry.nextOffset;
  }
}

}  // namespace

HeldFile::HeldFile(const HeldFile& directory, const WString& name, Kind kind, ACCESS_MASK rights) {
  const HANDLE parent = directory.handle_.get();
  // Who may delete in a directory may delete what is in it, but not wait for it: the system asks
  // the file itself for that right.
  const bool waits = rights != DELETE;
  const ULONG options = kOptions | (waits ? kSynchronous : 0) |
                        (kind == Kind::kDirectory ? kDirectoryAlone : kFileAlone);
  Opening opening{parent,
                  parent == nullptr ? systemPath(name) : name,
                  rights | (waits ? ACCESS_MASK{SYNCHRONIZE} : 0),
                  options};
  // The way to a whole path is the caller's, and its drive is a link itself.
  NTSTATUS status = opening.into(handle_.receive(), parent == nullptr ? 0 : kNoLinks);
  if (status == kInvalidParameter) {
    status = opening.into(handle_.receive(), 0);
  }
  error_ = win32Error(status);
}

bool HeldFile::isReparsePoint() const {
  const auto basic = query<BasicInformation>(handle_.get(), kBasicInformation);
  return (basic.attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
}

bool HeldFile::isLink() const {
  const auto known = query<AttributeTagInformation>(handle_.get(), kAttributeTagInformation);
  return isReparsePoint() && (known.tag == 0 || IsReparseTagNameSurrogate(known.tag) != 0);
}

std::vector<ListedFile> HeldFile::list() const {
  const auto next = found(RuntimeFunction<QueryDirectory>("ntdll.dll", "NtQueryDirectoryFile"));
  std::vector<ListedFile> files;
  alignas(DirectoryInformation) std::byte buffer[16 * 1024];
  const auto read = [&]() -> size_t {
    IO_STATUS_BLOCK io = {};
    const NTSTATUS status = next(handle_.get(),
                                 nullptr,
                                 nullptr,
                                 nullptr,
                                 &io,
                                 buffer,
                                 ULONG{sizeof(buffer)},
                                 kDirectoryInformation,
                                 BOOLEAN{FALSE},
                                 nullptr,
                                 BOOLEAN{FALSE});
    return NT_SUCCESS(status) ? std::min<size_t>(io.Information, sizeof(buffer)) : 0;
  };
  while (const size_t size = read()) {
    append(files, buffer, size);
  }
  return files;
}

void HeldFile::makeWriteable() const {
  auto basic = query<BasicInformation>(handle_.get(), kBasicInformation);
  basic = {{}, basic.attributes & ~ULONG{FILE_ATTRIBUTE_READONLY}};
  // None at all would be: as they are.
  basic.attributes |= basic.attributes == 0 ? ULONG{FILE_ATTRIBUTE_NORMAL} : 0;
  set(handle_.get(), kBasicInformation, basic);
}

DWORD HeldFile::remove() const {
  // Since Windows 10, as DeleteFileW does there: the name goes at once, and not only when the last
  // of those has ended who have it open and let others delete it.
  constexpr ULONG kDeleteAtOnce = 0x1 | 0x2 | 0x4;  // but not a program that runs
  if (NT_SUCCESS(set(handle_.get(), kDispositionInformationEx, kDeleteAtOnce))) {
    return ERROR_SUCCESS;
  }
  return win32Error(set(handle_.get(), kDispositionInformation, BOOLEAN{TRUE}));
}

}  // namespace corvane
