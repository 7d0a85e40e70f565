#include "hostile_windows.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>

namespace fuzz {
namespace {

constexpr size_t kPage = 4096;
constexpr size_t kLargestBlock = 16 * kPage;  // more memory than that is not had
constexpr size_t kStride = kLargestBlock + kPage;

char* heap = nullptr;
struct Slot {
  char* block = nullptr;
  size_t size = 0;
};
Slot slots[512];
Slot* freeSlots[std::size(slots)];
size_t freeCount = 0;

size_t slotOf(const void* block) {
  return (reinterpret_cast<uintptr_t>(block) - reinterpret_cast<uintptr_t>(heap)) / kStride;
}

void* allocate(size_t size) {
  if (size > kLargestBlock || freeCount == 0) {
    return nullptr;
  }
  Slot* const slot = freeSlots[--freeCount];
  const size_t at = static_cast<size_t>(slot - slots) * kStride;
  *slot = {heap + at + (has(kAtBegin) ? 0 : kLargestBlock - size), size};
  return std::memset(slot->block, 0xA5, size);
}

void release(Slot& slot, const void* block) {
  demand(slot.block == block, "a block is freed once");
  std::memset(slot.block, 0xDD, std::min(slot.size, size_t{64}));
  slot.block = nullptr;
  freeSlots[freeCount++] = &slot;
}

}  // namespace

void makeHeap() {
  const size_t size = std::size(slots) * kStride + kPage;
  heap = static_cast<char*>(VirtualAlloc(nullptr, size, MEM_COMMIT, PAGE_READWRITE)) + kPage;
  for (size_t slot = 0; slot <= std::size(slots); ++slot) {
    DWORD before = 0;
    VirtualProtect(heap + slot * kStride - kPage, kPage, PAGE_NOACCESS, &before);
  }
  for (Slot& slot : slots) {
    freeSlots[freeCount++] = &slot;
  }
}

size_t usedBlocks() {
  return std::size(slots) - freeCount;
}

void handOut(void* to, size_t size, size_t used) {
  const Guarding none(false);
  std::memcpy(to, input.bytes.data(), std::min(size, input.bytes.size()));
  given.assign(static_cast<const char*>(to), std::min(used, size));
}

DWORD handOutText(void* to, DWORD size) {
  const DWORD length = tell(unit());
  given.clear();
  SetLastError(input.numbers[kError]);
  if (size == 0 || (length >= size && !has(kWritesAnyway))) {
    return length + 1;
  }
  handOut(to, size_t{size} * unit(), size_t{length} * unit());
  return length;
}

BOOL succeed() {
  SetLastError(input.numbers[kError]);
  return input.numbers[kError] == 0 ? TRUE : FALSE;
}

std::wstring unitsIn(std::string_view bytes) {
  std::wstring text(bytes.size() / sizeof(wchar_t), L'\0');
  std::memcpy(text.data(), bytes.data(), text.size() * sizeof(wchar_t));
  return text;
}

std::wstring textIn(std::string_view bytes) {
  std::wstring text = unitsIn(bytes);
  if (has(k9x)) {
    bytes = bytes.substr(0, bytes.find('\0'));
    const auto size = static_cast<int>(bytes.size());
    text.assign(bytes.size(), L'\0');
    MultiByteToWideChar(GetACP(),
                        0,
                        bytes.data(),
                        static_cast<int>(bytes.size()),
                        text.data(),
                        size);
  }
  return text.substr(0, text.find(L'\0'));
}

IMPORT(GetACP, []() -> UINT { return has(kJapanese) ? 932 : 1252; });
IMPORT(GetVersionExA, [](OSVERSIONINFOA* version) -> BOOL {
  version->dwPlatformId = has(k9x) ? VER_PLATFORM_WIN32_WINDOWS : VER_PLATFORM_WIN32_NT;
  return TRUE;
});

}  // namespace fuzz

// In place of the library's own, whose file is left out.

void* operator new(size_t size) {
  void* const block = fuzz::guarding ? fuzz::allocate(size) : std::malloc(size);
  if (block == nullptr) {
    throw std::bad_alloc();
  }
  return block;
}

void operator delete(void* block) noexcept {
  const size_t slot = fuzz::slotOf(block);
  if (fuzz::heap != nullptr && slot < std::size(fuzz::slots)) {
    fuzz::release(fuzz::slots[slot], block);
  } else {
    std::free(block);
  }
}

void operator delete(void* block, size_t /*unused*/) noexcept {
  operator delete(block);
}
