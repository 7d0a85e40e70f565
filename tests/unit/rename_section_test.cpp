#include "file/in_use/rename_section.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

using namespace corvane;

namespace {

using Lines = std::vector<std::string>;

/// The rules, told as plainly as they can be.
std::string expected(const std::string& text, const Lines& lines) {
  const std::string header = "[Rename]";
  std::string joined;
  for (const std::string& line : lines) {
    joined += line + "\n";
  }
  const size_t found = text.find(header);
  if (found == std::string::npos) {
    return text + header + "\n" + joined;
  }
  const size_t behind = found + header.size();
  const size_t lineFeed = text.find('\n', behind);
  if (lineFeed != std::string::npos) {
    return text.substr(0, lineFeed + 1) + joined + text.substr(lineFeed + 1);
  }
  // Without a line feed behind the header the last byte is lost: the line feed of the last line, or
  // what stood at the end of the file.
  const std::string whole = text.substr(0, behind) + "\n" + joined + text.substr(behind);
  return whole.substr(0, text.size() + joined.size());
}

std::string inserted(const std::string& text, const Lines& lines) {
  constexpr char kUntouched = '\x55';
  const size_t room = text.size() + joinedLength(lines) + 10;
  std::string memory = text + std::string(room - text.size(), '\0') + kUntouched;
  const size_t end = insertRenameLines(memory.data(), text.size(), lines);
  EXPECT_EQ(memory.back(), kUntouched) << "written beyond the room that there is";
  return memory.substr(0, end);
}

TEST(RenameSection, FollowsTheRules) {
  EXPECT_EQ(inserted("[Rename]xyz", {"NUL=a", "b=c"}), "[Rename]\nNUL=a\nb=c\nxy");
  const Lines pieces = {"[Rename]",
                        "[rename]",
                        "[Rename",
                        "\n",
                        "\r\n",
                        "a=b",
                        std::string(3, '\0'),
                        std::string(5000, 'x')};
  std::mt19937 random(20260);
  const auto below = [&](size_t limit) { return random() % limit; };
  for (int round = 0; round < 20000; ++round) {
    std::string text;
    for (size_t piece = below(9); piece > 0; --piece) {
      text += pieces[below(pieces.size() - (round % 50 == 0 ? 0 : 1))];
    }
    Lines lines;
    for (size_t line = below(4) + 1; line > 0; --line) {
      lines.push_back(std::string(below(30), static_cast<char>('a' + line)));
    }
    ASSERT_EQ(inserted(text, lines), expected(text, lines)) << "round " << round << ": " << text;
  }
}

}  // namespace
