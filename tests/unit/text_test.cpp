#include "bridge/win32/text.h"

#include <gtest/gtest.h>

#include <utility>

#include "bridge/win32/format_wide.h"
#include "bridge/win32/scoped_handle.h"

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

/// Its closer is found at run time, here one that adds up what it closes.
struct AddingTraits {
  using Handle = int;
  static Handle none() noexcept { return 0; }
  void close(Handle handle) const noexcept { *sum += handle; }

  int* sum = nullptr;
};

TEST(ScopedHandle, ClosesWhatItOwnsWithTheCloserThatItWasGiven) {
  int closed = 0;
  {
    ScopedHandle<AddingTraits> owner({&closed}, 1);
    *owner.receive() = 10;
    EXPECT_EQ(closed, 1);
    owner = ScopedHandle<AddingTraits>({&closed}, 100);
    EXPECT_EQ(closed, 11);
    EXPECT_EQ(owner.get(), 100);
  }
  EXPECT_EQ(closed, 111);
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
