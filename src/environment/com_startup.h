#pragma once

#include <windows.h>

namespace corvane {

/// The result of starting COM when the library was loaded: CoInitialize(NULL), once, on the thread
/// that loaded it. What uses COM does nothing when it is negative. At unload CoUninitialize
/// follows, whatever the result was. It is the only state that the library keeps.
HRESULT comStartupResult() noexcept;

}  // namespace corvane
