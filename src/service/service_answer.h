#pragma once

#include <windows.h>

#include <optional>
#include <span>
#include <utility>

#include "bridge/win32/byte_buffer.h"
#include "bridge/win32/optional_text.h"
#include "bridge/win32/win32_failure.h"

namespace corvane {

/// What the service manager wrote into a buffer: a record, and behind it what its pointers lead to.
///
/// It is not trusted, for it may come from a program that put itself before the system's. All that
/// is taken from it lies in the buffer, whole, or is a Win32Failure with ERROR_INVALID_DATA.
class ServiceAnswer {
 public:
  explicit ServiceAnswer(ByteBuffer buffer) noexcept : buffer_(std::move(buffer)) {}

  /// The record at the head.
  template <class Record>
  const Record& record() const {
    return records(buffer_.data<Record>(), 1).front();
  }

  /// The `count` records from `first` on; none are anywhere.
  template <class Record>
  std::span<const Record> records(const Record* first, size_t count) const {
    throwUnlessHolds(bytesFrom(first) / sizeof(Record) >= count);
    return {first, count};
  }

  /// All records of which the buffer begins with `count`.
  template <class Record>
  std::span<const Record> records(size_t count) const {
    return records(buffer_.data<Record>(), count);
  }

  /// The text at a pointer, null for null.
  OptionalText textAt(const wchar_t* text) const;

  /// The texts one after the other up to one that is empty; no list for null.
  OptionalTexts textsAt(const wchar_t* texts) const;

 private:
  static void throwUnlessHolds(bool holds) {
    if (!holds) {
      throw Win32Failure(ERROR_INVALID_DATA);
    }
  }

  /// How many bytes of the buffer there are from a place on; 0 outside of it.
  size_t bytesFrom(const void* place) const noexcept;

  ByteBuffer buffer_;
};

/// Asks for an answer, which takes two calls of `query(buffer, size, &needed)`: the first has no
/// buffer and must fail with `sizeError`, the second has one of the size that is then needed.
///
/// Nothing when the first succeeds: without a buffer that means that there is nothing to tell.
/// Throws Win32Failure.
template <class Query>
std::optional<ServiceAnswer> askServiceManager(DWORD sizeError, const Query& query) {
  DWORD size = 0;
  if (query(nullptr, DWORD{0}, &size) != FALSE) {
    return std::nullopt;
  }
  if (const DWORD error = GetLastError(); error != sizeError) {
    throw Win32Failure(error);
  }
  ByteBuffer buffer;
  buffer.allocate(size, 1);
  throwUnless(query(buffer.data(), size, &size) != FALSE);
  return ServiceAnswer(std::move(buffer));
}

}  // namespace corvane
