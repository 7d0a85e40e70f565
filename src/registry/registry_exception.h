#pragma once

#include "bridge/win32/win32_failure.h"

namespace corvane {

/// A registry function failed; the code is the Win32 error. Thrown for nothing else: some callers
/// treat what the registry lacks otherwise than any other failure.
class RegistryException : public Win32Failure {
 public:
  using Win32Failure::Win32Failure;
};

}  // namespace corvane
