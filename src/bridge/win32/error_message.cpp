#include "bridge/win32/error_message.h"

#include <windows.h>

#include "bridge/win32/ansi_or_wide.h"
#include "bridge/win32/format_wide.h"
#include "bridge/win32/last_error.h"
#include "bridge/win32/message_inserts.h"
#include "bridge/win32/platform.h"
#include "bridge/win32/scoped_handle.h"
#include "bridge/win32/system_library.h"

namespace corvane {

namespace {

bool isNetworkManagementError(uint32_t messageId) {
  return messageId - 2100U < 900U;
}

/// What FormatMessage allocated; nothing when it failed, whatever the pointer holds.
LocalHolder allocated(DWORD length, void* text) {
  return LocalHolder(length == 0 ? nullptr : text);
}

LocalHolder systemText(bool windows9x, const ScopedModule& module, uint32_t messageId) {
  const DWORD flags = FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_IGNORE_INSERTS |
                      FORMAT_MESSAGE_FROM_SYSTEM | (module ? FORMAT_MESSAGE_FROM_HMODULE : 0U);
  void* text = nullptr;
  const DWORD length = ansiOrWide(windows9x,
                                  FormatMessageA,
                                  FormatMessageW,
                                  flags,
                                  module.get(),
                                  messageId,
                                  kDefaultLanguage,
                                  TextBuffer(&text),
                                  DWORD{0},
                                  nullptr);
  return allocated(length, text);
}

/// Puts the system's text, empty when it is missing, and the number together.
LocalHolder withNumber(bool windows9x, const LocalHolder& text, uint32_t messageId) {
  void* message = nullptr;
  const DWORD length = formatInserts(windows9x,
                                     FORMAT_MESSAGE_ALLOCATE_BUFFER,
                                     "%1!s! (%2!lu!)",
                                     L"%1!ls! (%2!lu!)",
                                     text ? text.get() : L"",
                                     messageId,
                                     &message,
                                     0);
  return allocated(length, message);
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
                                ? loadSystemLibrary("netmsg.dll", LOAD_LIBRARY_AS_DATAFILE)
                                : nullptr);
  const LocalHolder text = systemText(windows9x, module, messageId);
  return textOf(windows9x, withNumber(windows9x, text, messageId));
}

WString formatErrorText(int32_t code, uint32_t messageId) {
  const LastErrorKeeper keeper;
  return formatWide(L"%d: %s", code, errorMessage(isWindows9x(), messageId).c_str());
}

}  // namespace corvane
