#include "fakes.h"

#include <windows.h>

#include <cstring>
#include <deque>
#include <map>

#include "import_hooks.h"

namespace bed {
namespace {

struct Contents {
  WindowsVersion version{};
  std::deque<ValueContent> values;
  bool lastValueFound = false;
  std::map<std::string, std::string> modules;
};

Contents& contents() {
  static Contents instance;
  return instance;
}

/// The record of the system that is imitated; only sizes that it knows are accepted.
template <class Info, class InfoEx>
BOOL WINAPI getVersionEx(Info* info) {
  const WindowsVersion& version = contents().version;
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
  auto& values = contents().values;
  const ValueContent value = values.front();
  if (values.size() > 1) {
    values.pop_front();
  } else {
    contents().lastValueFound = true;
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
  if (data != nullptr && *size != 0) {
    std::memcpy(data, value.data.data(), *size);
  }
  return ERROR_SUCCESS;
}

HMODULE WINAPI loadLibraryExA(const char* name, HANDLE file, DWORD flags) {
  const auto alias = contents().modules.find(name);
  return LoadLibraryExA(alias == contents().modules.end() ? name : alias->second.c_str(),
                        file,
                        flags);
}

template <class Function>
const void* address(Function* function) {
  return reinterpret_cast<const void*>(function);
}

}  // namespace

void fakeVersion(const WindowsVersion& version) {
  contents().version = version;
  fakeFunction("GetVersionExA", address(&getVersionEx<OSVERSIONINFOA, OSVERSIONINFOEXA>));
  fakeFunction("GetVersionExW", address(&getVersionEx<OSVERSIONINFOW, OSVERSIONINFOEXW>));
}

void fakeValue(ValueContent content) {
  contents().values.push_back(std::move(content));
  fakeFunction("RegQueryValueExA", address(&regQueryValueEx));
  fakeFunction("RegQueryValueExW", address(&regQueryValueEx));
}

size_t valuesInVain() {
  return contents().values.size() - (contents().lastValueFound ? 1 : 0);
}

void fakeModule(std::string name, std::string file) {
  contents().modules[std::move(name)] = std::move(file);
  fakeFunction("LoadLibraryExA", address(&loadLibraryExA));
}

void clearFakedContents() {
  contents() = Contents();
  clearFakes();
}

}  // namespace bed
