#include "bridge/win32/format_wide.h"

#include <gtest/gtest.h>

#include <utility>

using namespace corvane;

namespace {

TEST(FormatWide, MakesRoomForWhateverTheArgumentsBecome) {
  const std::pair<WString, WString> cases[] = {
      {formatWide(L""), L""},
      {formatWide(L"100%% %c", L'a'), L"100% a"},
      {formatWide(L"%d: %s", -42, L"text"), L"-42: text"},
      {formatWide(L"%s", static_cast<const wchar_t*>(nullptr)), L"(null)"},
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

}  // namespace
