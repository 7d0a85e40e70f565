#pragma once

#include <vector>

#include "bridge/win32/byte_buffer.h"
#include "bridge/win32/text.h"

namespace corvane {

/// The form in which Windows takes and keeps a list of texts, as a REG_MULTI_SZ or as the
/// dependencies of a service: each text with its terminator, then one terminator more.

/// Throws std::length_error when the list is beyond what a 32-bit count can hold.
ByteBuffer packMultiString(const std::vector<WString>& texts);

/// The texts in `units` units of data, the last unit being the list's own terminator. Data without
/// terminators ends at its end.
std::vector<WString> unpackMultiString(const wchar_t* data, size_t units);

}  // namespace corvane
