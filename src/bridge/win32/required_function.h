#pragma once

#include "bridge/win32/runtime_function.h"
#include "bridge/win32/win32_failure.h"

namespace corvane {

/// Only what was found: throws Win32Failure with `error` for a function that is missing.
template <DWORD error, class Function>
RuntimeFunction<Function> required(RuntimeFunction<Function> function) {
  if (!function) {
    throw Win32Failure(error);
  }
  return function;
}

}  // namespace corvane
