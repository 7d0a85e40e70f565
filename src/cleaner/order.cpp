#include "cleaner/order.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <system_error>
#include <utility>

#include "cleaner/removable_path.h"

namespace corvane {

namespace {

constexpr wchar_t kSeparator = L';';
constexpr const wchar_t* kTreeMark = L"*";

/// A semicolon may be part of a name. No name has a star and every tree has one, and files come
/// before trees: what has none behind a tree belongs to its name. Behind a file it does when it is
/// not absolute, for nothing else may be removed. Were it taken for an entry, what comes before it
/// would be another: the one whose name ends before the semicolon.
bool goesOn(const Removable& before, const WString& piece) {
  return !piece.starts_with(kTreeMark) && (before.isTree || !isAbsolute(piece));
}

void append(std::vector<Removable>& entries, const WString& piece) {
  if (!entries.empty() && goesOn(entries.back(), piece)) {
    entries.back().path += kSeparator + piece;
  } else if (piece.starts_with(kTreeMark)) {
    entries.push_back({piece.substr(1), true});
  } else {
    entries.push_back({piece, false});
  }
}

std::vector<Removable> entriesIn(const WString& list) {
  std::vector<Removable> entries;
  for (size_t begin = 0; begin <= list.size();) {
    const size_t end = std::min(list.find(kSeparator, begin), list.size());
    append(entries, list.substr(begin, end - begin));
    begin = end + 1;
  }
  return entries;
}

}  // namespace

std::vector<Removable> Order::removables() const {
  std::vector<Removable> removables;
  for (const Removable& entry : entriesIn(boundedTextFromAnsi(list.data(), list.size()))) {
    if (WString path = removablePath(entry.path); !path.empty()) {
      removables.push_back({std::move(path), entry.isTree});
    }
  }
  return removables;
}

std::optional<Order> orderIn(const char* message, size_t size) {
  if (message == nullptr || size < 2 || strnlen(message, size) != size - 1 ||
      (*message != '0' && *message != '1')) {
    return std::nullopt;
  }
  const char* const end = message + size - 1;
  Order order;
  const auto [blank, error] = std::from_chars(message + 1, end, order.process, 16);
  if (error != std::errc() || blank == end || *blank != ' ') {
    return std::nullopt;
  }
  order.list.assign(blank + 1, end);
  return order;
}

}  // namespace corvane
