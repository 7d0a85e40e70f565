#include "fakes.h"

#include <windows.h>

#include <cstring>
#include <deque>
#include <map>
#include <optional>

namespace bed {
namespace {

struct Value {
  DWORD type;
  std::string data;
};

struct Contents {
  std::optional<WindowsVersion> version;
  std::deque<Value> values;
  bool lastValueFound = false;
  std::map<std::string, std::string> modules;
};
Contents contents;

/// The record of the system that is imitated; only sizes that it knows are accepted.
template <class Info, class InfoEx>
BOOL WINAPI getVersionEx(Info* info) {
  const WindowsVersion& version = *contents.version;
  const DWORD size = info->dwOSVersionInfoSize;
  const bool accepted = size == sizeof(Info) || (size == sizeof(InfoEx) && version.knowsLongRecord);
  if (!version.tells || !accepted) {
    SetLastError(ERROR_INSUFFICIENT_BUFFER);
    return FALSE;
  }
  std::memset(info, 0, size);
  info->dwOSVersionInfoSize = size;
  info->dwMajorVersion = version.major;
  info->dwMinorVersion = version.minor;
  info->dwPlatformId = version.platform;
  return TRUE;
}

LSTATUS WINAPI regQueryValueEx(HKEY, const void*, DWORD*, DWORD* type, BYTE* data, DWORD* size) {
  const Value value = contents.values.front();
  if (contents.values.size() > 1) {
    contents.values.pop_front();
  } else {
    contents.lastValueFound = true;
  }
  if (type != nullptr) {
    *type = value.type;
  }
  if (size == nullptr) {
    return data == nullptr ? ERROR_SUCCESS : ERROR_INVALID_PARAMETER;
  }
  const DWORD capacity = *size;
  *size = static_cast<DWORD>(value.data.size());
  if (data != nullptr && capacity < *size) {
    return ERROR_MORE_DATA;
  }
  if (data != nullptr) {
    std::memcpy(data, value.data.data(), *size);
  }
  return ERROR_SUCCESS;
}

HMODULE WINAPI loadLibraryExA(const char* name, HANDLE file, DWORD flags) {
  const auto found = contents.modules.find(name);
  return LoadLibraryExA(found == contents.modules.end() ? name : found->second.c_str(),
                        file,
                        flags);
}

}  // namespace

void fakeVersion(const WindowsVersion& version) {
  contents.version = version;
}

void fakeValue(uint32_t type, const std::string& data) {
  contents.values.push_back({type, data});
}

size_t valuesInVain() {
  return contents.values.size() - (contents.lastValueFound ? 1 : 0);
}

void fakeModule(const std::string& name, const std::string& file) {
  contents.modules[name] = file;
}

const void* fakeOf(const std::string& name, const void* original) {
  const auto address = [](auto* function) { return reinterpret_cast<const void*>(function); };
  if (name == "GetVersionExA" && contents.version) {
    return address(&getVersionEx<OSVERSIONINFOA, OSVERSIONINFOEXA>);
  }
  if (name == "GetVersionExW" && contents.version) {
    return address(&getVersionEx<OSVERSIONINFOW, OSVERSIONINFOEXW>);
  }
  if (name.starts_with("RegQueryValueEx") && !contents.values.empty()) {
    return address(&regQueryValueEx);
  }
  return name == "LoadLibraryExA" ? address(&loadLibraryExA) : original;
}

void clearFakes() {
  contents = Contents();
}

}  // namespace bed
