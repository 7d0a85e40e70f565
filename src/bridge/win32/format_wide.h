#pragma once

#include "bridge/win32/text.h"

namespace corvane {

/// printf for UTF-16: as in the wide functions of Windows' C runtime, "%s" is a wide text and "%hs"
/// a narrow one. The arguments must be those that the format names.
WString formatWide(const wchar_t* format, ...);

}  // namespace corvane
