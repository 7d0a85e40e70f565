#pragma once

#include <windows.h>

/// The size of the buffers into which the library reads strings and names, in characters.
constexpr DWORD kStringUnits = 256;
constexpr DWORD kNameUnits = 1024;

template <class Work>
LSTATUS withKey(const wchar_t* path, REGSAM access, const Work& work) {
  HKEY key = nullptr;
  LSTATUS result = RegOpenKeyExW(HKEY_CURRENT_USER, path, 0, access, &key);
  if (result == ERROR_SUCCESS) {
    result = work(key);
    RegCloseKey(key);
  }
  return result;
}

/// `size`: of the buffer, then of the value.
inline LSTATUS query(HKEY key, const wchar_t* name, void* data, DWORD& size) {
  DWORD type = REG_NONE;
  return RegQueryValueExW(key, name, nullptr, &type, static_cast<BYTE*>(data), &size);
}

inline LSTATUS writeText(HKEY key, const wchar_t* name, const wchar_t* text, size_t length) {
  return RegSetValueExW(key,
                        name,
                        0,
                        REG_SZ,
                        reinterpret_cast<const BYTE*>(text),
                        static_cast<DWORD>(length * sizeof(wchar_t)));
}

/// Hands each name to `take(name, length)`. The key stays open, as the library leaves it.
template <class Take>
LSTATUS eachName(const wchar_t* path, const Take& take) {
  HKEY key = nullptr;
  LSTATUS result = RegOpenKeyExW(HKEY_CURRENT_USER, path, 0, KEY_QUERY_VALUE, &key);
  for (DWORD index = 0; result == ERROR_SUCCESS; ++index) {
    wchar_t name[kNameUnits];
    DWORD length = kNameUnits;
    DWORD type = REG_NONE;
    result = RegEnumValueW(key, index, name, &length, nullptr, &type, nullptr, nullptr);
    if (result == ERROR_SUCCESS) {
      take(name, length);
    }
  }
  return result == ERROR_NO_MORE_ITEMS ? ERROR_SUCCESS : result;
}
