#include "service/service_answer.h"

#include <cstdint>
#include <cwchar>
#include <vector>

namespace corvane {

size_t ServiceAnswer::bytesFrom(const void* place) const noexcept {
  // As numbers: pointers to different objects have no order.
  const size_t offset =
      reinterpret_cast<uintptr_t>(place) - reinterpret_cast<uintptr_t>(buffer_.data());
  return offset < buffer_.byteLength() ? buffer_.byteLength() - offset : 0;
}

OptionalText ServiceAnswer::textAt(const wchar_t* text) const {
  if (text == nullptr) {
    return {};
  }
  const size_t room = bytesFrom(text) / sizeof(wchar_t);
  const size_t length = room == 0 ? 0 : wcsnlen(text, room);
  throwUnlessHolds(length < room);
  return {text, length};
}

OptionalTexts ServiceAnswer::textsAt(const wchar_t* texts) const {
  if (texts == nullptr) {
    return std::nullopt;
  }
  std::vector<OptionalText> list;
  for (OptionalText text = textAt(texts); hasText(text.get()); text = textAt(texts)) {
    texts += std::wcslen(text.get()) + 1;
    list.push_back(std::move(text));
  }
  return list;
}

}  // namespace corvane
