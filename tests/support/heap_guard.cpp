#include "heap_guard.h"

#include <cstring>
#include <map>
#include <string_view>

#include "accounts.h"
#include "monitor.h"

namespace bed {
namespace {

constexpr size_t kGuardSize = 32;
constexpr char kGuard = 'Z';
constexpr uint8_t kFresh = 0xA5;
constexpr uint8_t kFreed = 0xDD;

struct Block {
  size_t size = 0;
  bool isFree = false;
};
std::map<uint64_t, Block> blocks;

/// What the passwords of the tests ("geheim") end in, so that half of one is found as well. In
/// memory that is given back it must not be.
constexpr std::string_view kSecret = "eim";
constexpr std::string_view kWideSecret = {"e\0i\0m", 5};

/// Checks a block that is about to be freed or moved; one from before the watch began is not known.
/// False when it is free already.
bool retire(uint64_t address, const std::string& function) {
  const auto found = blocks.find(address);
  if (found == blocks.end()) {
    return true;
  }
  auto& [size, isFree] = found->second;
  if (isFree) {
    violation("a heap block is freed twice");
    return false;
  }
  auto* const block = reinterpret_cast<char*>(address);
  if (std::string_view(block + size, kGuardSize) != std::string(kGuardSize, kGuard)) {
    violation("the library wrote past the end of a heap block of " + std::to_string(size) +
              " bytes");
  }
  const std::string_view content(block, size);
  if (content.find(kSecret) != kSecret.npos || content.find(kWideSecret) != kSecret.npos) {
    violation("a password is left in a heap block that is freed");
  }
  accounts().close(Account::kHeapBlock, address, function);
  isFree = true;
  if (function == "free") {
    std::memset(block, kFreed, size);
  }
  return true;
}

}  // namespace

bool HeapGuard::before(Call& call) {
  const std::string& name = call.function->name;
  if ((name == "free" || name == "realloc") && !retire(call.words[0], name)) {
    return false;
  }
  if (name == "calloc") {
    call.words[1] *= call.words[0];
    call.words[0] = 1;
  }
  if (name != "free") {
    uint64_t& size = call.words[name == "malloc" ? 0 : 1];
    call.note = size;
    size += kGuardSize;
  }
  return true;
}

void HeapGuard::after(Call& call) {
  call.lastError = kLastError;
  const std::string& name = call.function->name;
  if (name == "free" || call.result == 0) {
    return;
  }
  auto* const block = reinterpret_cast<uint8_t*>(call.result);
  if (name == "malloc") {
    std::memset(block, kFresh, call.note);
  }
  std::memset(block + call.note, kGuard, kGuardSize);
  blocks[call.result] = {call.note};
  accounts().open(Account::kHeapBlock, call.result, name);
}

void HeapGuard::clear() {
  blocks.clear();
}

}  // namespace bed
