#pragma once

#include <windows.h>

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// A Windows that lies. It answers the library's calls out of an input, and each block of the
// library's memory ends where a page does, or begins there, beside a page that is nobody's.

namespace fuzz {

enum Flag : uint32_t {
  k9x = 1,       // of the ANSI family
  kAtBegin = 2,  // blocks begin with their page
  kJapanese = 4,
  kWritesAnyway = 8,  // also what does not fit, as far as there is room
  kOther = 16,        // the parser's other way
};

/// The numbers of an input. The lies are added to the sizes that are told, in turn.
enum Number { kFlags, kLie, kNextLie, kType, kError, kCount, kNumbers };

struct Input {
  std::array<uint32_t, kNumbers> numbers = {};
  std::string bytes;
};

inline Input input;
inline int opened = 0;     // handles that the library has not closed
inline uint32_t told = 0;  // how often a size was told
inline std::string given;  // what is in the buffer that was filled last, as far as was told

inline bool has(Flag flag) {
  return (input.numbers[kFlags] & flag) != 0;
}
/// The bytes of a character.
inline uint32_t unit() {
  return has(k9x) ? 1 : 2;
}
/// Tells a size, in units of so many bytes.
inline DWORD tell(size_t bytes) {
  return static_cast<DWORD>(input.bytes.size() / bytes) + input.numbers[kLie + told++ % 2];
}
/// Fills a buffer of so many bytes, of which `used` are told to be the answer.
void handOut(void* to, size_t size, size_t used);
/// The same for characters; what does not fit is not written, and the answer is the size it takes.
DWORD handOutText(void* to, DWORD size);
/// The answer of a function that fails when the input has an error.
BOOL succeed();

std::wstring unitsIn(std::string_view bytes);
/// The text of the family, up to its first NUL.
std::wstring textIn(std::string_view bytes);

void makeHeap();
size_t usedBlocks();
/// Whether memory comes from it.
inline bool guarding = false;

class Guarding {
 public:
  explicit Guarding(bool on) : before_(std::exchange(guarding, on)) {}
  Guarding(const Guarding&) = delete;
  Guarding& operator=(const Guarding&) = delete;
  ~Guarding() { guarding = before_; }

 private:
  bool before_;
};

/// Runs work of the library.
template <class Work>
auto guarded(const Work& work) {
  const Guarding guard(true);
  return work();
}

/// What must be; otherwise the input is shown, and the program ends.
void demand(bool holds, const char* what);

struct Parser {
  const char* name;
  void (*run)();
};
extern const Parser kParsers[15];

/// What a parser begins with, and what was ever found in it.
std::vector<Input> corpusOf(const char* parser);

/// Takes the place of a function that the library imports.
#define IMPORT(function, ...) \
  decltype(&(function)) function##Import asm("__imp_" #function) = __VA_ARGS__
#define IMPORT_PAIR(function, ...)  \
  IMPORT(function##A, __VA_ARGS__); \
  IMPORT(function##W, __VA_ARGS__)

}  // namespace fuzz
