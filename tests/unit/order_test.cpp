#include "cleaner/order.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <utility>

using namespace corvane;

namespace {

/// What is removed by an order: its process, and each path without its literal prefix, a star
/// before a tree.
std::wstring read(const std::string& message) {
  const auto order = orderIn(message.data(), message.size());
  if (!order) {
    return L"none";
  }
  std::wstring text = std::to_wstring(order->process);
  for (const Removable& removable : order->removables()) {
    EXPECT_TRUE(removable.path.starts_with(L"\\\\?\\"));
    text += (removable.isTree ? L" *" : L" ") + removable.path.substr(4);
  }
  return text;
}

/// What stands between bars has this meaning, each behind the same beginning.
void expectAll(const std::wstring& meaning, const std::string& begin, const char* list) {
  std::istringstream rest(list);
  for (std::string part; std::getline(rest, part, '|');) {
    EXPECT_EQ(read(begin + part + '\0'), meaning) << part;
  }
}

TEST(Order, IsReadStrictly) {
  expectAll(LR"(6700 C:\t\a *C:\d)", "", R"(11a2c C:\t\a;*C:\d|01A2C C:\t\a;*C:\d)");
  expectAll(L"4294967295", "", "0ffffffff ");
  expectAll(L"none", "", R"(|0|21a C:\a|1 C:\a|1-1 C:\a|1x C:\a|1100000000 C:\a|11a|11aC:\a|C:\a)");
  EXPECT_EQ(read("11a C:\\a"), L"none") << "no terminator";
  EXPECT_EQ(read(std::string("11a C:\\a\0;D:\\b\0", 15)), L"none") << "two";
  EXPECT_EQ(read(""), L"none");
  EXPECT_FALSE(orderIn(nullptr, 2));
}

/// Cut at a semicolon of its name, it would be another one, whether it is there or not.
TEST(Order, KnowsNamesWithSemicolons) {
  expectAll(LR"(10 *C:\P;old\x *C:\d;e *D:\f)", "1a ", R"(*C:\P;old\x;*C:\d;e;*D:\f)");
  expectAll(LR"(10 C:\none;x; D:\y;z;)", "1a ", R"(C:\none;x;;D:\y;z;)");
}

TEST(Order, RemovesWhatIsOneThingBelowARoot) {
  expectAll(LR"(10 a:\a\b Z:\a\..b\c.. z:\a A:\a UNC\s\d\a)",
            "1a ",
            R"(a:/a/b\;Z:\a\..b\c..;z:\a;A:\a;\\s\d\a)");
  // The second cannot be told from two.
  expectAll(
      L"10",
      "1a *",
      R"(|C:\P;D:\x|a|a\b|\a|/a|C:|C:a|C:\|c:/|C:\\|C:\\a|C:\.|C:\.\a|C:\..|C:\a\..|C:\a\..\..\b)"
      R"(|C:\a\.. \b|C:\ |C:\a\...|C:\*|C:\a?|C:\a:b|C:\a<b|\\s|\\s\d|\\s\d\|\\.\C:\a)"
      R"(|\\?\C:\a|\??\C:\a|C:\a\\b|\\s\d\/a|\\\s\d\a|1:\a)");
}

}  // namespace
