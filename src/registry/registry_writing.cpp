#include <algorithm>
#include <cstring>
#include <cwchar>
#include <limits>
#include <stdexcept>
#include <utility>

#include "bridge/win32/ansi_or_wide.h"
#include "registry/multi_string.h"
#include "registry/registry_key.h"
#include "registry/registry_result.h"
#include "registry/scoped_registry_key.h"

namespace {

/// The bytes that RegSetValueEx is told: those of the UTF-16 text without its terminator, but one
/// for an empty text.
size_t storedLength(const wchar_t* text) {
  if (text == nullptr) {
    return 0;
  }
  return *text == L'\0' ? 1 : std::wcslen(text) * sizeof(wchar_t);
}

/// The text in the ANSI code page with zeros behind it up to `byteLength`. Windows 9x is told the
/// length of the UTF-16 text and must find as many bytes to read.
ByteBuffer paddedAnsi(const wchar_t* text, size_t byteLength) {
  ByteBuffer padded;
  if (text != nullptr) {
    ByteBuffer converted;
    throwUnlessConverted(wideToAnsi(text, converted));
    padded.allocate(static_cast<uint32_t>(std::max(converted.byteLength(), byteLength)), 1);
    std::memcpy(padded.data(), converted.data(), converted.byteLength());
  }
  return padded;
}

}  // namespace

LSTATUS RegistryKey::setValue(HKEY key,
                              const wchar_t* name,
                              DWORD type,
                              const void* data,
                              size_t byteLength) const {
  if (byteLength > std::numeric_limits<DWORD>::max()) {
    throw std::length_error("value too long for the registry");
  }
  return ansiOrWide(isWin9x_,
                    RegSetValueExA,
                    RegSetValueExW,
                    key,
                    name,
                    DWORD{0},
                    type,
                    static_cast<const BYTE*>(data),
                    static_cast<DWORD>(byteLength));
}

void RegistryKey::setStringValue(int root,
                                 const wchar_t* path,
                                 const wchar_t* name,
                                 bool expandable,
                                 const wchar_t* text) const {
  const DWORD type = expandable ? REG_EXPAND_SZ : REG_SZ;
  const size_t length = storedLength(text);
  const ScopedRegistryKey key(openKey(root, path, KEY_SET_VALUE));
  throwUnlessSuccess(isWin9x_
                         ? setValue(key.get(), name, type, paddedAnsi(text, length).data(), length)
                         : setValue(key.get(), name, type, text, length));
}

void RegistryKey::set32BitValue(int root,
                                const wchar_t* path,
                                const wchar_t* name,
                                uint32_t value) const {
  const ScopedRegistryKey key(openKey(root, path, KEY_SET_VALUE));
  throwUnlessSuccess(setValue(key.get(), name, REG_DWORD, &value, sizeof(value)));
}

void RegistryKey::setBinaryValue(int root,
                                 const wchar_t* path,
                                 const wchar_t* name,
                                 const ByteBuffer& bytes) const {
  const ScopedRegistryKey key(openKey(root, path, KEY_SET_VALUE));
  throwUnlessSuccess(setValue(key.get(), name, REG_BINARY, bytes.data(), bytes.byteLength()));
}

void RegistryKey::setMultiStringValue(int root,
                                      const wchar_t* path,
                                      const wchar_t* name,
                                      const std::vector<WString>& texts) const {
  ByteBuffer packed = packMultiString(texts);
  const ScopedRegistryKey key(openKey(root, path, KEY_SET_VALUE));
  if (isWin9x_) {
    ByteBuffer ansi;
    throwUnlessConverted(wideToAnsiN(packed.data<wchar_t>(), packed.count(), ansi));
    packed = std::move(ansi);
  }
  throwUnlessSuccess(setValue(key.get(), name, REG_MULTI_SZ, packed.data(), packed.byteLength()));
}

void RegistryKey::deleteValue(int root,
                              const wchar_t* path,
                              const wchar_t* name,
                              bool mustExist) const {
  const ScopedRegistryKey key(openKey(root, path, KEY_SET_VALUE));
  throwUnlessDeleted(ansiOrWide(isWin9x_, RegDeleteValueA, RegDeleteValueW, key.get(), name),
                     mustExist);
}
