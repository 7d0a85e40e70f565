#include "file/in_use/rename_section.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace corvane {

namespace {

constexpr std::string_view kHeader = "[Rename]";
constexpr char kLineFeed = '\n';

/// Where the lines go, and where the file ends once they are there.
struct InsertionPoint {
  char* position;
  size_t end;
};

InsertionPoint behindNewHeader(char* text, size_t size, size_t added) {
  char* position = std::copy(kHeader.begin(), kHeader.end(), text + size);
  *position++ = kLineFeed;
  return {position, size + kHeader.size() + 1 + added};
}

InsertionPoint behindHeader(char* header, char* textEnd, size_t end, size_t added) {
  char* const behind = header + kHeader.size();
  char* const lineFeed = std::find(behind, textEnd, kLineFeed);
  if (lineFeed != textEnd) {
    char* const position = lineFeed + 1;
    std::memmove(position + added, position, static_cast<size_t>(textEnd - position));
    return {position, end};
  }
  std::memmove(behind + added + 1, behind, static_cast<size_t>(textEnd - behind));
  *behind = kLineFeed;
  return {behind + 1, end};
}

InsertionPoint makeRoom(char* text, size_t size, size_t added) {
  char* const textEnd = text + size;
  char* const header = std::search(text, textEnd, kHeader.begin(), kHeader.end());
  return header == textEnd ? behindNewHeader(text, size, added)
                           : behindHeader(header, textEnd, size + added, added);
}

}  // namespace

size_t joinedLength(const std::vector<std::string>& lines) {
  size_t length = 0;
  for (const std::string& line : lines) {
    length += line.size() + 1;
  }
  return length;
}

size_t insertRenameLines(char* text, size_t size, const std::vector<std::string>& lines) {
  InsertionPoint point = makeRoom(text, size, joinedLength(lines));
  for (const std::string& line : lines) {
    point.position = std::copy(line.begin(), line.end(), point.position);
    *point.position++ = kLineFeed;
  }
  return point.end;
}

}  // namespace corvane
