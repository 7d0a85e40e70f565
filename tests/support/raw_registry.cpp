#include "raw_registry.h"

#include <windows.h>

#include <winternl.h>

#include <stdexcept>

// Not in every SDK's headers.
extern "C" NTSTATUS NTAPI NtDeleteKey(HANDLE key);
extern "C" NTSTATUS NTAPI RtlFormatCurrentUserKeyPath(UNICODE_STRING* path);

namespace bed {
namespace {

constexpr DWORD kNameUnits = 16384;

void require(LSTATUS result) {
  if (result != ERROR_SUCCESS) {
    throw std::runtime_error("registry error " + std::to_string(result));
  }
}

class Key {
 public:
  explicit Key(const std::wstring& path, DWORD options = 0) {
    require(RegCreateKeyExW(HKEY_CURRENT_USER,
                            path.c_str(),
                            0,
                            nullptr,
                            options,
                            KEY_ALL_ACCESS,
                            nullptr,
                            &key_,
                            nullptr));
  }
  Key(const Key&) = delete;
  Key& operator=(const Key&) = delete;
  ~Key() { RegCloseKey(key_); }
  HKEY get() const { return key_; }

 private:
  HKEY key_ = nullptr;
};

std::optional<RawRegistry::Value> query(const Key& key, const std::wstring& name) {
  DWORD type = 0;
  DWORD size = 0;
  if (RegQueryValueExW(key.get(), name.c_str(), nullptr, &type, nullptr, &size) != ERROR_SUCCESS) {
    return std::nullopt;
  }
  RawRegistry::Value value{type, std::vector<uint8_t>(size)};
  require(RegQueryValueExW(key.get(), name.c_str(), nullptr, nullptr, value.data.data(), &size));
  return value;
}

/// The names that `next(index, buffer, length)` gives.
template <class Next>
std::vector<std::wstring> names(const Next& next) {
  std::vector<std::wstring> found;
  std::wstring buffer(kNameUnits, L'\0');
  for (DWORD index = 0;; ++index) {
    DWORD length = kNameUnits;
    if (next(index, buffer.data(), &length) != ERROR_SUCCESS) {
      return found;
    }
    found.emplace_back(buffer, 0, length);
  }
}

std::vector<std::wstring> valueNames(const Key& key) {
  return names([&](DWORD index, wchar_t* buffer, DWORD* length) {
    return RegEnumValueW(key.get(), index, buffer, length, nullptr, nullptr, nullptr, nullptr);
  });
}

std::vector<std::wstring> subKeyNames(HKEY key) {
  return names([&](DWORD index, wchar_t* buffer, DWORD* length) {
    return RegEnumKeyExW(key, index, buffer, length, nullptr, nullptr, nullptr, nullptr);
  });
}

void dumpTree(const std::wstring& path, std::wstring& out) {
  const Key key(path);
  out.append(L"[").append(path).append(L"]\n");
  for (const std::wstring& name : valueNames(key)) {
    const auto value = query(key, name);
    out.append(name).append(L" ").append(std::to_wstring(value->type));
    for (const uint8_t byte : value->data) {
      out.append(L" ").append(std::to_wstring(byte));
    }
    out.append(L"\n");
  }
  for (const std::wstring& name : subKeyNames(key.get())) {
    dumpTree(std::wstring(path).append(L"\\").append(name), out);
  }
}

/// As the system's own paths begin, which links need.
std::wstring currentUserPath() {
  UNICODE_STRING path{};
  if (RtlFormatCurrentUserKeyPath(&path) < 0) {
    throw std::runtime_error("the user has no key");
  }
  std::wstring text(path.Buffer, path.Length / sizeof(wchar_t));
  RtlFreeUnicodeString(&path);
  return text;
}

}  // namespace

void RawRegistry::createKey(const std::wstring& path) {
  const Key key(path);
}

void RawRegistry::createLink(const std::wstring& path, const std::wstring& target) {
  const std::wstring value = currentUserPath() + L"\\" + target;
  require(RegSetValueExW(Key(path, REG_OPTION_CREATE_LINK).get(),
                         L"SymbolicLinkValue",
                         0,
                         REG_LINK,
                         reinterpret_cast<const BYTE*>(value.data()),
                         static_cast<DWORD>(value.size() * sizeof(wchar_t))));
}

void RawRegistry::deleteTree(const std::wstring& path) {
  HKEY key = nullptr;
  const LSTATUS result =
      RegOpenKeyExW(HKEY_CURRENT_USER, path.c_str(), REG_OPTION_OPEN_LINK, KEY_READ | DELETE, &key);
  if (result == ERROR_FILE_NOT_FOUND) {
    return;
  }
  require(result);
  for (const std::wstring& name : subKeyNames(key)) {
    deleteTree(std::wstring(path).append(L"\\").append(name));
  }
  NtDeleteKey(key);
  RegCloseKey(key);
}

void RawRegistry::set(const std::wstring& path, const std::wstring& name, const Value& value) {
  require(RegSetValueExW(Key(path).get(),
                         name.c_str(),
                         0,
                         value.type,
                         value.data.data(),
                         static_cast<DWORD>(value.data.size())));
}

std::optional<RawRegistry::Value> RawRegistry::get(const std::wstring& path,
                                                   const std::wstring& name) {
  return query(Key(path), name);
}

std::wstring RawRegistry::dump(const std::wstring& path) {
  std::wstring text;
  dumpTree(path, text);
  return text;
}

}  // namespace bed
