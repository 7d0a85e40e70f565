#include "bridge/win32/byte_buffer.h"

#include <cstring>
#include <utility>

namespace corvane {

ByteBuffer::ByteBuffer(ByteBuffer&& other) noexcept
    : data_(std::move(other.data_)),
      count_(std::exchange(other.count_, 0)),
      elementSize_(std::exchange(other.elementSize_, 0)) {}

ByteBuffer& ByteBuffer::operator=(ByteBuffer&& other) noexcept {
  std::swap(data_, other.data_);
  std::swap(count_, other.count_);
  std::swap(elementSize_, other.elementSize_);
  return *this;
}

ByteBuffer::~ByteBuffer() {
  release();
}

void ByteBuffer::allocate(uint32_t count, uint32_t elementSize) {
  release();
  if (count == 0 || elementSize == 0) {
    return;
  }
  data_ = std::make_unique<std::byte[]>(size_t{count} * elementSize);
  count_ = count;
  elementSize_ = elementSize;
}

void ByteBuffer::release() noexcept {
  data_.reset();
  count_ = 0;
  elementSize_ = 0;
}

void ByteBuffer::truncate(uint32_t count) noexcept {
  if (count == 0) {
    release();
  } else if (count < count_) {
    std::memset(data_.get() + size_t{count} * elementSize_,
                0,
                size_t{count_ - count} * elementSize_);
    count_ = count;
  }
}

}  // namespace corvane
