#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

namespace corvane {

/// An owned, zero-filled block of `count` elements of `elementSize` bytes: 1 for ANSI text and raw
/// data, 2 for UTF-16. `data()` is null exactly when both numbers are 0.
class ByteBuffer {
 public:
  ByteBuffer() = default;
  ByteBuffer(ByteBuffer&& other) noexcept;
  ByteBuffer& operator=(ByteBuffer&& other) noexcept;
  ByteBuffer(const ByteBuffer&) = delete;
  ByteBuffer& operator=(const ByteBuffer&) = delete;
  ~ByteBuffer();

  /// Frees the block that is there and, unless one of the numbers is 0, allocates a new one of
  /// zeros. Throws std::bad_alloc; the buffer is empty then.
  void allocate(uint32_t count, uint32_t elementSize);

  /// Frees the block. The thread's last error stays as it is.
  void release() noexcept;

  /// Takes the elements from `count` on out of the buffer, when it has more: a system call may
  /// return less than it announced, and what lies behind is nobody's data.
  void truncate(uint32_t count) noexcept;

  template <class Element = std::byte>
  Element* data() noexcept {
    return reinterpret_cast<Element*>(data_.get());
  }
  template <class Element = std::byte>
  const Element* data() const noexcept {
    return reinterpret_cast<const Element*>(data_.get());
  }
  uint32_t count() const noexcept { return count_; }
  uint32_t elementSize() const noexcept { return elementSize_; }
  size_t byteLength() const noexcept { return size_t{count_} * elementSize_; }

 private:
  std::unique_ptr<std::byte[]> data_;
  uint32_t count_ = 0;
  uint32_t elementSize_ = 0;
};

}  // namespace corvane
