#include "bridge/error_message.h"

#include <windows.h>

#include "bridge/ansi_or_wide.h"
#include "bridge/last_error.h"
#include "bridge/platform.h"
#include "bridge/scoped_handle.h"

namespace {

constexpr DWORD kDefaultLanguage = MAKELANGID(LANG_NEUTRAL, SUBLANG_DEFAULT);

bool isNetworkManagementError(uint32_t messageId) {
  return messageId - 2100U < 900U;
}

/// Calls FormatMessage so that it allocates its text; null when it has none.
LocalHolder formatMessage(bool windows9x,
                          DWORD flags,
                          const void* source,
                          uint32_t messageId,
                          va_list* inserts) {
  void* text = nullptr;
  const DWORD length = ansiOrWide(windows9x,
                                  FormatMessageA,
                                  FormatMessageW,
                                  flags | FORMAT_MESSAGE_ALLOCATE_BUFFER,
                                  source,
                                  messageId,
                                  kDefaultLanguage,
                                  TextBuffer(&text),
                                  DWORD{0},
                                  inserts);
  return LocalHolder(length == 0 ? nullptr : text);
}

LocalHolder systemText(bool windows9x, const ScopedModule& module, uint32_t messageId) {
  const DWORD flags = FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_FROM_SYSTEM |
                      (module ? FORMAT_MESSAGE_FROM_HMODULE : 0U);
  return formatMessage(windows9x, flags, module.get(), messageId, nullptr);
}

/// Puts the system's text and the number together through the system's own inserts.
LocalHolder withNumber(bool windows9x, const LocalHolder& text, uint32_t messageId) {
  // On x64 an argument list is a pointer to eight-byte places. A missing text is an empty one.
  DWORD_PTR inserts[] = {reinterpret_cast<DWORD_PTR>(text ? text.get() : L""), messageId};
  auto* list = reinterpret_cast<va_list>(inserts);
  const void* format = windows9x ? static_cast<const void*>("%1!s! (%2!lu!)") : L"%1!ls! (%2!lu!)";
  return formatMessage(windows9x, FORMAT_MESSAGE_FROM_STRING, format, 0, &list);
}

WString textOf(bool windows9x, const LocalHolder& message) {
  if (windows9x) {
    ByteBuffer wide;
    ansiToWide(static_cast<const char*>(message.get()), wide);
    return boundedText(wide.data<wchar_t>(), wide.count());
  }
  return message ? WString(static_cast<const wchar_t*>(message.get())) : WString();
}

}  // namespace

WString errorMessage(bool windows9x, uint32_t messageId) {
  // Freed last: the text below comes out of it.
  const ScopedModule module(isNetworkManagementError(messageId)
                                ? LoadLibraryExA("netmsg.dll", nullptr, LOAD_LIBRARY_AS_DATAFILE)
                                : nullptr);
  const LocalHolder text = systemText(windows9x, module, messageId);
  return textOf(windows9x, withNumber(windows9x, text, messageId));
}

WString formatErrorText(int32_t code, uint32_t messageId) {
  const LastErrorKeeper keeper;
  return std::to_wstring(code) + L": " + errorMessage(isWindows9x(), messageId);
}
