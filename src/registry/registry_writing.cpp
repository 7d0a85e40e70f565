#include <algorithm>
#include <cstring>
#include <cwchar>
#include <limits>
#include <stdexcept>
#include <utility>

#include "bridge/win32/ansi_or_wide.h"
#include "bridge/win32/multi_string.h"
#include "registry/registry_key.h"
#include "registry/registry_result.h"
#include "registry/scoped_registry_key.h"

namespace corvane {

namespace {

/// A text as it is handed to RegSetValueEx, between zeros. The system adds a terminator by itself
/// when the unit before the end of the data is none and the unit behind it is one; it looks for
/// both in whole units, which around the single byte of an empty text lie outside the data. With
/// zeros there nothing is added to it.
class StoredText {
 public:
  StoredText(bool ansi, const wchar_t* text) {
    if (text == nullptr) {
      return;
    }
    const size_t wideLength = std::wcslen(text) * sizeof(wchar_t);
    ByteBuffer converted;
    if (ansi) {
      throwUnlessConverted(wideToAnsi(text, converted));
    }
    const size_t size = ansi ? converted.byteLength() : wideLength;
    const size_t units = (std::max(size, wideLength) + 1) / sizeof(wchar_t);
    block_.allocate(static_cast<uint32_t>(units + 2 * kMargin), sizeof(wchar_t));
    std::memcpy(block_.data<wchar_t>() + kMargin, ansi ? converted.data<const void>() : text, size);
    // Windows 9x is told the length of the UTF-16 text, too.
    byteLength_ = wideLength == 0 ? 1 : wideLength;
  }

  /// Null for no text.
  const void* data() const noexcept {
    return block_.data() == nullptr ? nullptr : block_.data<wchar_t>() + kMargin;
  }
  size_t byteLength() const noexcept { return byteLength_; }

 private:
  static constexpr size_t kMargin = 1;  // in units

  ByteBuffer block_;
  size_t byteLength_ = 0;
};

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

void RegistryKey::setStringValue(RegistryRoot root,
                                 const wchar_t* path,
                                 const wchar_t* name,
                                 bool expandable,
                                 const wchar_t* text) const {
  const DWORD type = expandable ? REG_EXPAND_SZ : REG_SZ;
  const ScopedRegistryKey key(openKey(root, path, KEY_SET_VALUE));
  const StoredText stored(isWin9x_, text);
  throwUnlessSuccess(setValue(key.get(), name, type, stored.data(), stored.byteLength()));
}

void RegistryKey::set32BitValue(RegistryRoot root,
                                const wchar_t* path,
                                const wchar_t* name,
                                uint32_t value) const {
  const ScopedRegistryKey key(openKey(root, path, KEY_SET_VALUE));
  throwUnlessSuccess(setValue(key.get(), name, REG_DWORD, &value, sizeof(value)));
}

void RegistryKey::setBinaryValue(RegistryRoot root,
                                 const wchar_t* path,
                                 const wchar_t* name,
                                 const ByteBuffer& bytes) const {
  const ScopedRegistryKey key(openKey(root, path, KEY_SET_VALUE));
  throwUnlessSuccess(setValue(key.get(), name, REG_BINARY, bytes.data(), bytes.byteLength()));
}

void RegistryKey::setMultiStringValue(RegistryRoot root,
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

void RegistryKey::deleteValue(RegistryRoot root,
                              const wchar_t* path,
                              const wchar_t* name,
                              bool mustExist) const {
  const ScopedRegistryKey key(openKey(root, path, KEY_SET_VALUE));
  throwUnlessDeleted(ansiOrWide(isWin9x_, RegDeleteValueA, RegDeleteValueW, key.get(), name),
                     mustExist);
}

}  // namespace corvane
