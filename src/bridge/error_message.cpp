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

/// Where `text` points is the pointer that FormatMessage sets, whatever the family.
TextBuffer receiver(LocalHolder& text) {
  return TextBuffer(text.receive());
}

LocalHolder systemText(bool windows9x, uint32_t messageId) {
  const ScopedModule module(isNetworkManagementError(messageId)
                                ? LoadLibraryExA("netmsg.dll", nullptr, LOAD_LIBRARY_AS_DATAFILE)
                                : nullptr);
  const DWORD flags = FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_IGNORE_INSERTS |
                      FORMAT_MESSAGE_FROM_SYSTEM | (module ? FORMAT_MESSAGE_FROM_HMODULE : 0U);
  LocalHolder text;
  ansiOrWide(windows9x,
             FormatMessageA,
             FormatMessageW,
             flags,
             module.get(),
             messageId,
             kDefaultLanguage,
             receiver(text),
             0U,
             nullptr);
  return text;
}

/// Puts the system's text and the number together through the system's own inserts.
LocalHolder withNumber(bool windows9x, const LocalHolder& text, uint32_t messageId) {
  // On x64 an argument list is a pointer to eight-byte places. A missing text is an empty one.
  DWORD_PTR inserts[] = {reinterpret_cast<DWORD_PTR>(text ? text.get() : L""), messageId};
  auto* list = reinterpret_cast<va_list>(inserts);
  const void* format = windows9x ? static_cast<const void*>("%1!s! (%2!lu!)") : L"%1!ls! (%2!lu!)";
  LocalHolder message;
  ansiOrWide(windows9x,
             FormatMessageA,
             FormatMessageW,
             DWORD{FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_STRING},
             format,
             0U,
             kDefaultLanguage,
             receiver(message),
             0U,
             &list);
  return message;
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
  const LocalHolder text = systemText(windows9x, messageId);
  return textOf(windows9x, withNumber(windows9x, text, messageId));
}

WString formatErrorText(int32_t code, uint32_t messageId) {
  const LastErrorKeeper keeper;
  return std::to_wstring(code) + L": " + errorMessage(isWindows9x(), messageId);
}
