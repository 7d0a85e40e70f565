#pragma once

#include <jni.h>

#include <cstddef>
#include <string_view>

#include "accounts.h"

namespace bed {

/// What is known of one entry of the JNI function table.
struct JniFunction {
  std::string_view name;
  size_t index = 0;
  /// The Java class of the error that a failure leaves pending (the call returns 0); null for a
  /// function that does not fail.
  const char* error = nullptr;
  Effect effect = {};
  /// Whether JNI permits the call while an exception is pending.
  bool allowedWhilePending = false;
  /// How its arguments are shown; see showCall.
  std::string_view signature = {};
};

const JniFunction* findJniFunction(std::string_view name);
/// Null for an entry that the table lacks: whoever makes the library call a new one adds a line.
const JniFunction* findJniFunction(size_t index);

constexpr size_t kJniEntries = sizeof(JNINativeInterface_) / sizeof(void*);

}  // namespace bed
