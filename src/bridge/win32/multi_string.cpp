#include "bridge/win32/multi_string.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <stdexcept>

namespace corvane {

ByteBuffer packMultiString(const std::vector<WString>& texts) {
  size_t units = 1;
  for (const WString& text : texts) {
    units += text.size() + 1;
  }
  if (units > std::numeric_limits<uint32_t>::max()) {
    throw std::length_error("list too long for a 32-bit count");
  }
  ByteBuffer packed;
  packed.allocate(static_cast<uint32_t>(units), sizeof(wchar_t));
  auto* position = packed.data<wchar_t>();
  for (const WString& text : texts) {
    position = std::copy(text.begin(), text.end(), position) + 1;
  }
  return packed;
}

std::vector<WString> unpackMultiString(const wchar_t* data, size_t units) {
  std::vector<WString> texts;
  size_t position = 0;
  while (position + 1 < units) {
    texts.push_back(boundedText(data + position, units - position));
    position += texts.back().size() + 1;
  }
  return texts;
}

}  // namespace corvane
