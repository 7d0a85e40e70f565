#pragma once

#include <windows.h>

#include "bridge/win32/ansi_or_wide.h"

namespace corvane {

/// A language of no importance: texts with inserts are this library's own.
constexpr DWORD kDefaultLanguage = MAKELANGID(LANG_NEUTRAL, SUBLANG_DEFAULT);

/// A format with two inserts, a text of the family (%1) and a number (%2), given to
/// FormatMessageA/W. With FORMAT_MESSAGE_ALLOCATE_BUFFER among the flags, `buffer` is where the
/// pointer to the text goes. Returns the length of the text, 0 when it could not be made.
inline DWORD formatInserts(bool ansi,
                           DWORD flags,
                           const char* ansiFormat,
                           const wchar_t* wideFormat,
                           const void* text,
                           DWORD number,
                           void* buffer,
                           DWORD size) {
  // On x64 an argument list is a pointer to eight-byte places.
  DWORD_PTR inserts[] = {reinterpret_cast<DWORD_PTR>(text), number};
  auto* list = reinterpret_cast<va_list>(inserts);
  const void* format = ansi ? static_cast<const void*>(ansiFormat) : wideFormat;
  return ansiOrWide(ansi,
                    FormatMessageA,
                    FormatMessageW,
                    flags | FORMAT_MESSAGE_FROM_STRING,
                    format,
                    DWORD{0},
                    kDefaultLanguage,
                    TextBuffer(buffer),
                    size,
                    &list);
}

}  // namespace corvane
