#include "bridge/win32/text.h"

#include <gtest/gtest.h>

#include <utility>

#include "bridge/win32/format_wide.h"

using namespace corvane;

namespace {

TEST(Text, PathsEndInOneSeparator) {
  const std::pair<WString, const wchar_t*> cases[] = {
      {L"", L"\\"},
      {L"C:\\", L"C:\\"},
      {L"C:/a/", L"C:/a/"},
      {L"C:/a", L"C:/a\\"},
  };
  for (auto [path, expected] : cases) {
    appendPathSeparator(path);
    EXPECT_EQ(path, expected);
  }
}

TEST(FormatWide, MakesRoomForWhateverTheArgumentsBecome) {
  const std::pair<WString, WString> cases[] = {
      {formatWide(L""), L""},
      {formatWide(L"100%% %c", L'a'), L"100% a"},
      {formatWide(L"%d: %s", -42, L"text"), L"-42: text"},
      {formatWide(L"%ls%05d %hs %S", L"n", 7, "narrow", "too"), L"n00007 narrow too"},
      {formatWide(L"%-*s|%.*s|%-5c|", 6, L"ab", 2, L"abc", L'x'), L"ab    |ab|x    |"},
      {formatWide(L"%*d|", -4, 1), L"1   |"},
      {formatWide(L"%#lx %I64d %.3u", 255UL, 1LL << 62, 7U), L"0xff 4611686018427387904 007"},
      {formatWide(L"%300d", 1), WString(299, L' ') + L'1'},
      {formatWide(L"%+.2f %e", 0.1, 0.0).substr(0, 4), L"+0.1"},
      {formatWide(L"%.1f%s", 1e308, L"!").substr(309), L".0!"},
  };
  for (const auto& [text, expected] : cases) {
    EXPECT_EQ(text, expected);
  }
}

TEST(ByteBuffer, IsEmptyOrHasBoth) {
  ByteBuffer buffer;
  buffer.allocate(3, 2);
  EXPECT_EQ(WString(buffer.data<wchar_t>(), 3), WString(3, L'\0'));
  buffer.truncate(9);
  EXPECT_EQ(buffer.byteLength(), 6U);
  ByteBuffer moved = std::move(buffer);
  EXPECT_EQ(moved.byteLength(), 6U);
  // NOLINTNEXTLINE(bugprone-use-after-move,clang-analyzer-cplusplus.Move): empty is promised.
  EXPECT_EQ(buffer.count() + buffer.elementSize(), 0U);
  moved.allocate(3, 0);
  EXPECT_EQ(moved.data(), nullptr);
  EXPECT_EQ(moved.count() + moved.elementSize(), 0U);
}

}  // namespace
