#pragma once

#include <windows.h>

#include "registry/registry_exception.h"

namespace corvane {

// What the result of a registry function means. Each throws RegistryException for a failure.

inline void throwUnlessSuccess(LSTATUS result) {
  if (result != ERROR_SUCCESS) {
    throw RegistryException(static_cast<uint32_t>(result));
  }
}

/// Whether something is there. That it is missing is an answer, not a failure.
inline bool foundOrMissing(LSTATUS result) {
  if (result == ERROR_FILE_NOT_FOUND) {
    return false;
  }
  throwUnlessSuccess(result);
  return true;
}

/// Deleting what is not there is a failure only when it had to be.
inline void throwUnlessDeleted(LSTATUS result, bool mustExist) {
  if (mustExist || result != ERROR_FILE_NOT_FOUND) {
    throwUnlessSuccess(result);
  }
}

}  // namespace corvane
