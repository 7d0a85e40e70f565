#include "heap_guard.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <set>
#include <string_view>

#include "accounts.h"
#include "monitor.h"

namespace bed {
namespace {

constexpr size_t kGuardSize = 32;
constexpr uint8_t kGuard = 'Z';
constexpr uint8_t kFresh = 0xA5;
constexpr uint8_t kFreed = 0xDD;

struct Heap {
  std::map<uint64_t, size_t> sizes;
  std::set<uint64_t> freed;
};

Heap& heap() {
  static Heap instance;
  return instance;
}

bool isGuardIntact(uint64_t block, size_t size) {
  const auto* guard = reinterpret_cast<const uint8_t*>(block) + size;
  return std::all_of(guard, guard + kGuardSize, [](uint8_t byte) { return byte == kGuard; });
}

/// Checks and forgets a block that is about to be freed or moved. Returns its size, 0 when it is
/// one from before the watch began.
size_t retire(uint64_t block, const std::string& function) {
  const auto known = heap().sizes.find(block);
  if (known == heap().sizes.end()) {
    return 0;
  }
  const size_t size = known->second;
  if (!isGuardIntact(block, size)) {
    monitor().violation("the library wrote past the end of a heap block of " +
                        std::to_string(size) + " bytes");
  }
  accounts().close(Account::kHeapBlock, block, function);
  heap().sizes.erase(known);
  return size;
}

bool beforeFree(const Call& call) {
  const uint64_t block = call.words[0];
  if (block == 0) {
    return true;
  }
  if (heap().freed.contains(block)) {
    monitor().violation("a heap block is freed twice");
    return false;
  }
  if (const size_t size = retire(block, call.function->name); size != 0) {
    std::memset(reinterpret_cast<void*>(block), kFreed, size);
    heap().freed.insert(block);
  }
  return true;
}

}  // namespace

bool HeapGuard::guards(const Call& call) {
  const std::string_view name = call.function->name;
  return name == "malloc" || name == "calloc" || name == "realloc" || name == "free";
}

bool HeapGuard::before(Call& call) {
  const std::string_view name = call.function->name;
  if (name == "free") {
    return beforeFree(call);
  }
  if (name == "calloc") {
    call.note = call.words[0] * call.words[1];
    call.words[0] = 1;
  } else {
    call.note = call.words[name == "realloc" ? 1 : 0];
  }
  call.words[name == "malloc" ? 0 : 1] = call.note + kGuardSize;
  if (name == "realloc") {
    retire(call.words[0], call.function->name);
  }
  return true;
}

void HeapGuard::after(Call& call) {
  if (call.function->name == "free" || call.result == 0) {
    return;
  }
  auto* block = reinterpret_cast<uint8_t*>(call.result);
  if (call.function->name == "malloc") {
    std::memset(block, kFresh, call.note);
  }
  std::memset(block + call.note, kGuard, kGuardSize);
  heap().freed.erase(call.result);
  heap().sizes[call.result] = call.note;
  accounts().open(Account::kHeapBlock, call.result, call.function->name);
}

void HeapGuard::clear() {
  heap() = Heap();
}

}  // namespace bed
