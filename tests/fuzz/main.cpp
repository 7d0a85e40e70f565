#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <new>
#include <string>

#include "bridge/win32/win32_failure.h"
#include "hostile_windows.h"

// corvane_fuzz SEED COUNT [PARSER [FIRST]]: so many inputs for each parser, or for one of them,
// from the first on; ends at the first that fails.

namespace fuzz {
namespace {

const char* parser = "";
std::vector<Input> corpus;
uint64_t seed = 0;
uint64_t number = 0;
uint64_t refused = 0;
uint64_t randomState = 0;

uint64_t random() {
  uint64_t mixed = randomState += 0x9E3779B97F4A7C15;
  mixed = (mixed ^ mixed >> 30) * 0xBF58476D1CE4E5B9;
  mixed = (mixed ^ mixed >> 27) * 0x94D049BB133111EB;
  return mixed ^ mixed >> 31;
}
size_t below(size_t limit) {
  return random() % limit;
}
const Input& any() {
  return corpus[below(corpus.size())];
}

/// More often than not close to where something ends, or where arithmetic does.
uint32_t size() {
  constexpr uint32_t kEnds[] =
      {8, 40, 52, 64, 92, 255, 256, 512, 1024, 0x7FFF, 0xFFFF, 0x3FFFFFFF, 0x7FFFFFFF, 0xFFFFFFC0};
  const uint32_t all[] = {0,
                          static_cast<uint32_t>(input.bytes.size()),
                          kEnds[below(std::size(kEnds))],
                          static_cast<uint32_t>(random() >> below(64))};
  return all[below(std::size(all))] + static_cast<uint32_t>(below(5)) - 2;
}

void write(size_t at, uint64_t value, size_t width) {
  if (at + width <= input.bytes.size()) {
    std::memcpy(&input.bytes[at], &value, width);
  }
}

/// Repeats or cuts what there is.
void stretch(std::string& bytes, size_t length) {
  for (size_t at = 0; bytes.size() < length && at < bytes.size(); ++at) {
    bytes += bytes[at];
  }
  bytes.resize(length);
}

void mutate() {
  std::string& bytes = input.bytes;
  const std::string& other = any().bytes;
  const size_t at = below(bytes.size() + 1);
  const size_t count = below(below(2) == 0 ? 9 : bytes.size() - at + 1);
  switch (below(8)) {
    case 0:
      input.numbers[kFlags] ^= 1U << below(5);
      break;
    case 1:
      input.numbers[1 + below(kNumbers - 1)] = size();
      break;
    case 2:
      bytes.erase(at, count);
      break;
    case 3:
      bytes.insert(at, count, below(2) == 0 ? '\0' : static_cast<char>(random()));
      break;
    case 4:
      bytes.insert(at, other, below(other.size() + 1), count);
      break;
    case 5:
      stretch(bytes, size() % 2051);
      break;
    case 6:
      write(at & ~size_t{7}, static_cast<uint64_t>(static_cast<int32_t>(size())), 8);
      break;
    default:
      write(at, random(), size_t{1} << below(3));
      break;
  }
}

/// First the corpus, in each family, place and code page, then what is made of it. The same seed
/// and number give the same.
void makeInput() {
  constexpr uint64_t kWays = 8;
  randomState = seed << 40 ^ number;
  const bool isNew = number >= corpus.size() * kWays;
  input = isNew ? any() : corpus[number / kWays];
  input.numbers[kFlags] ^= static_cast<uint32_t>(number % kWays);
  for (size_t steps = isNew ? below(4) + 1 : 0; steps > 0; --steps) {
    mutate();
  }
}

/// The input is shown as the corpus has it.
[[noreturn]] void fail(const char* what) {
  std::printf("FAILED: %s\nAgain: scripts/fuzz %llu 1 %s %llu\n{\"%s\", {{",
              what,
              seed,
              parser,
              number,
              parser);
  for (const uint32_t each : input.numbers) {
    std::printf("0x%X, ", each);
  }
  std::printf("}, \"");
  for (const char byte : input.bytes) {
    std::printf("\\x%02X", static_cast<uint8_t>(byte));
  }
  std::printf("\"s}},\n");
  std::fflush(stdout);
  std::_Exit(1);
}

LONG WINAPI onFault(EXCEPTION_POINTERS* fault) {
  char what[80];
  std::snprintf(what,
                sizeof(what),
                "exception %lX at %p",
                fault->ExceptionRecord->ExceptionCode,
                fault->ExceptionRecord->ExceptionAddress);
  fail(what);
}

void runOne(void (*run)()) {
  opened = 0;
  told = 0;
  given.clear();
  try {
    run();
  } catch (const corvane::Win32Failure&) {
    ++refused;
  } catch (const std::bad_alloc&) {
    ++refused;
  } catch (...) {
    fail("an exception that is not the library's");
  }
  demand(opened == 0, "what was opened is closed");
  demand(usedBlocks() == 0, "all memory is freed");
}

void runAll(void (*run)(), uint64_t first, uint64_t count) {
  const ULONGLONG began = GetTickCount64();
  corpus = corpusOf(parser);
  refused = 0;
  for (number = first; number < first + count; ++number) {
    makeInput();
    runOne(run);
  }
  std::printf("%s: %llu inputs hold, %llu of them refused, %.1f s\n",
              parser,
              count,
              refused,
              static_cast<double>(GetTickCount64() - began) / 1000);
  std::fflush(stdout);
}

}  // namespace

void demand(bool holds, const char* what) {
  if (!holds) {
    fail(what);
  }
}

}  // namespace fuzz

int main(int count, char** arguments) {
  using namespace fuzz;
  SetUnhandledExceptionFilter(onFault);
  std::set_terminate([] { fail("the library ends the program"); });
  makeHeap();
  given.reserve(1 << 16);
  seed = std::strtoull(arguments[1], nullptr, 10);
  for (const auto& [name, run] : kParsers) {
    parser = name;
    if (count < 4 || std::string(name) == arguments[3]) {
      runAll(run,
             count < 5 ? 0 : std::strtoull(arguments[4], nullptr, 10),
             std::strtoull(arguments[2], nullptr, 10));
    }
  }
}
