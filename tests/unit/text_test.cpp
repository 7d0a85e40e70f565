#include "bridge/win32/text.h"

#include <gtest/gtest.h>

#include <utility>

using namespace corvane;

namespace {

TEST(Text, PathsEndInOneSeparator) {
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {L"", L"\\"},
      {L"C:", L"C:\\"},
      {L"C:\\", L"C:\\"},
      {L"C:\\a", L"C:\\a\\"},
      {L"C:/a/", L"C:/a/"},
      {L"C:/a", L"C:/a\\"},
  };
  for (const auto& [path, expected] : cases) {
    WString text = path;
    appendPathSeparator(text);
    EXPECT_EQ(text, expected);
  }
}

TEST(Text, BoundedTextStaysInItsBounds) {
  EXPECT_EQ(boundedText(L"abc", 2), L"ab");
  EXPECT_EQ(boundedText(L"a\0c", 3), L"a");
  EXPECT_EQ(boundedText(nullptr, 0), L"");
  EXPECT_EQ(boundedTextFromAnsi("abc", 2), L"ab");
  EXPECT_EQ(boundedTextFromAnsi(nullptr, 0), L"");
}

TEST(ByteBuffer, HasDataOnlyWhenItHasASize) {
  ByteBuffer buffer;
  for (const auto& [count, size] : {std::pair{0U, 1U}, {3U, 0U}, {0U, 0U}}) {
    buffer.allocate(2, 2);
    ASSERT_NE(buffer.data(), nullptr);
    buffer.allocate(count, size);
    EXPECT_EQ(buffer.data(), nullptr);
    EXPECT_EQ(buffer.count() + buffer.elementSize() + buffer.byteLength(), 0U);
  }
}

TEST(ByteBuffer, IsZeroFilledAndMovesAsAWhole) {
  ByteBuffer buffer;
  buffer.allocate(3, 2);
  EXPECT_EQ(buffer.byteLength(), 6U);
  EXPECT_EQ(WString(buffer.data<wchar_t>(), 3), WString(3, L'\0'));
  const ByteBuffer moved = std::move(buffer);
  EXPECT_EQ(moved.byteLength(), 6U);
  // NOLINTBEGIN(bugprone-use-after-move,clang-analyzer-cplusplus.Move): empty is promised.
  EXPECT_EQ(buffer.data(), nullptr);
  EXPECT_EQ(buffer.byteLength(), 0U);
  // NOLINTEND(bugprone-use-after-move,clang-analyzer-cplusplus.Move)
}

TEST(ByteBuffer, TruncatesAndNeverGrows) {
  ByteBuffer buffer;
  buffer.allocate(4, 1);
  buffer.truncate(9);
  EXPECT_EQ(buffer.count(), 4U);
  buffer.truncate(1);
  EXPECT_EQ(buffer.byteLength(), 1U);
  buffer.truncate(0);
  EXPECT_EQ(buffer.data(), nullptr);
}

}  // namespace
