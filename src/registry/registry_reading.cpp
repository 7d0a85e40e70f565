#include <algorithm>
#include <cstring>
#include <string>
#include <utility>

#include "bridge/win32/ansi_or_wide.h"
#include "bridge/win32/expand_environment.h"
#include "bridge/win32/multi_string.h"
#include "registry/registry_key.h"
#include "registry/registry_result.h"
#include "registry/scoped_registry_key.h"

namespace corvane {

namespace {

/// The first attempt at reading, in UTF-16 units: most values fit, and need one query only.
constexpr uint32_t kStringUnits = 256;
constexpr uint32_t kMultiStringUnits = 1024;

void throwUnlessType(DWORD type, DWORD expected) {
  if (type != expected) {
    throw RegistryException(ERROR_INVALID_DATATYPE);
  }
}

}  // namespace

/// What RegQueryValueEx gave: of the buffer, the first `size` bytes.
struct RegistryKey::Value {
  DWORD type = 0;
  ByteBuffer data;
  DWORD size = 0;
};

/// RegQueryValueEx; each of the three results may be null, and is not asked for then.
LSTATUS RegistryKey::query(HKEY key,
                           const wchar_t* name,
                           DWORD* type,
                           void* data,
                           DWORD* size) const {
  return ansiOrWide(isWin9x_,
                    RegQueryValueExA,
                    RegQueryValueExW,
                    key,
                    name,
                    nullptr,
                    type,
                    static_cast<BYTE*>(data),
                    size);
}

/// Queries into the buffer that `value` has.
LSTATUS RegistryKey::queryValue(HKEY key, const wchar_t* name, Value& value) const {
  value.size = static_cast<DWORD>(value.data.byteLength());
  return query(key, name, &value.type, value.data.data(), &value.size);
}

/// Reads a value into a buffer of `units` UTF-16 units, or, when it does not fit, of the size that
/// the system then asks for; once, so that a value that keeps growing ends in ERROR_MORE_DATA.
RegistryKey::Value RegistryKey::readValue(RegistryRoot root,
                                          const wchar_t* path,
                                          const wchar_t* name,
                                          uint32_t units) const {
  Value value;
  value.data.allocate(units, sizeof(wchar_t));
  ScopedRegistryKey key(openKey(root, path, KEY_QUERY_VALUE));
  LSTATUS result = queryValue(key.get(), name, value);
  if (result == ERROR_MORE_DATA) {
    value.data.allocate(value.size, 1);
    result = queryValue(key.get(), name, value);
  }
  key.close();
  throwUnlessSuccess(result);
  value.size = std::min(value.size, static_cast<DWORD>(value.data.byteLength()));
  return value;
}

WString RegistryKey::textOf(const Value& value) const {
  return isWin9x_ ? boundedTextFromAnsi(value.data.data<char>(), value.size)
                  : boundedText(value.data.data<wchar_t>(), value.size / sizeof(wchar_t));
}

bool RegistryKey::valueExists(RegistryRoot root, const wchar_t* path, const wchar_t* name) const {
  HKEY opened = nullptr;
  LSTATUS result = tryOpen(root, path, KEY_QUERY_VALUE, opened);
  if (result == ERROR_SUCCESS) {
    const ScopedRegistryKey key(opened);
    result = query(opened, name, nullptr, nullptr, nullptr);
  }
  return foundOrMissing(result);
}

DWORD RegistryKey::getValueType(RegistryRoot root, const wchar_t* path, const wchar_t* name) const {
  DWORD type = 0;
  const ScopedRegistryKey key(openKey(root, path, KEY_QUERY_VALUE));
  throwUnlessSuccess(query(key.get(), name, &type, nullptr, nullptr));
  return type;
}

WString RegistryKey::getStringValue(RegistryRoot root,
                                    const wchar_t* path,
                                    const wchar_t* name,
                                    bool expand) const {
  const Value value = readValue(root, path, name, kStringUnits);
  WString text = textOf(value);
  if (value.type == REG_EXPAND_SZ) {
    return expand ? expandedText(isWin9x_, text) : text;
  }
  throwUnlessType(value.type, REG_SZ);
  return text;
}

uint32_t RegistryKey::get32BitValue(RegistryRoot root,
                                    const wchar_t* path,
                                    const wchar_t* name) const {
  DWORD type = 0;
  DWORD number = 0xFFFF;  // what a value shorter than four bytes leaves in place
  DWORD size = sizeof(number);
  const ScopedRegistryKey key(openKey(root, path, KEY_QUERY_VALUE));
  throwUnlessSuccess(query(key.get(), name, &type, &number, &size));
  throwUnlessType(type, REG_DWORD);
  return number;
}

ByteBuffer RegistryKey::getBinaryValue(RegistryRoot root,
                                       const wchar_t* path,
                                       const wchar_t* name) const {
  Value value;
  ScopedRegistryKey key(openKey(root, path, KEY_QUERY_VALUE));
  throwUnlessSuccess(query(key.get(), name, nullptr, nullptr, &value.size));
  value.data.allocate(value.size, 1);
  throwUnlessSuccess(queryValue(key.get(), name, value));
  key.close();
  throwUnlessType(value.type, REG_BINARY);
  value.data.truncate(value.size);
  return std::move(value.data);
}

std::vector<WString> RegistryKey::getMultiStringValue(RegistryRoot root,
                                                      const wchar_t* path,
                                                      const wchar_t* name) const {
  Value value = readValue(root, path, name, kMultiStringUnits);
  throwUnlessType(value.type, REG_MULTI_SZ);
  if (!isWin9x_) {
    return unpackMultiString(value.data.data<wchar_t>(), value.size / sizeof(wchar_t));
  }
  if (value.size == 0) {
    return {};
  }
  // The whole buffer is converted, zeros behind the data too, and the bytes of the data count as
  // units: in a two-byte code page empty texts follow the list, one for each pair. No text of
  // the list is lost by that, and callers know them.
  const auto length = static_cast<uint32_t>(value.data.byteLength());
  std::memset(value.data.data() + value.size, 0, length - value.size);
  ByteBuffer wide;
  const uint32_t units = ansiToWideN(value.data.data<char>(), length, wide);
  throwUnlessConverted(units);
  return unpackMultiString(wide.data<wchar_t>(), std::min(value.size, DWORD{units}));
}

}  // namespace corvane
