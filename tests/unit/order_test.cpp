#include "cleaner/order.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "cleaner/removable_path.h"

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

std::string terminated(const char* text) {
  return {text, std::string(text).size() + 1};
}

/// What stands between bars.
std::vector<std::wstring> parts(const wchar_t* list) {
  std::wistringstream rest(list);
  std::vector<std::wstring> found;
  for (std::wstring part; std::getline(rest, part, L'|');) {
    found.push_back(part);
  }
  return found;
}

TEST(Order, IsReadStrictly) {
  EXPECT_EQ(read(terminated("11a2c C:\\t\\a;*C:\\d")), L"6700 C:\\t\\a *C:\\d");
  EXPECT_EQ(read(terminated("0ffffffff ")), L"4294967295");
  for (const std::wstring& text :
       parts(LR"(|0|21a C:\a|1 C:\a|1-1 C:\a|1x C:\a|1100000000 C:\a|11a|11aC:\a|C:\a)")) {
    const std::string message(text.begin(), text.end());
    EXPECT_EQ(read(terminated(message.c_str())), L"none") << message;
  }
  EXPECT_EQ(read("11a C:\\a"), L"none") << "no terminator";
  EXPECT_EQ(read(terminated("11a C:\\a") + terminated(";D:\\b")), L"none") << "two";
  EXPECT_EQ(read(""), L"none");
  EXPECT_FALSE(orderIn(nullptr, 2));
}

/// Cut at a semicolon of its name, it would be another one, whether it is there or not.
TEST(Order, KnowsNamesWithSemicolons) {
  EXPECT_EQ(read(terminated("1a *C:\\P;old\\x;*C:\\d;e;*D:\\f")),
            L"10 *C:\\P;old\\x *C:\\d;e *D:\\f");
  EXPECT_EQ(read(terminated("1a *C:\\P;D:\\x")), L"10") << "two that cannot be told apart";
  EXPECT_EQ(read(terminated("1a C:\\none;x;D:\\y;z")), L"10 C:\\none;x D:\\y;z");
}

TEST(RemovablePath, IsOneThingBelowARoot) {
  const std::wstring literal = L"\\\\?\\";
  for (const auto& [path, form] : {std::pair(L"c:/a/b\\", L"c:\\a\\b"),
                                   std::pair(L"C:\\a\\b c.d;e", L"C:\\a\\b c.d;e"),
                                   std::pair(L"C:\\a\\..b\\c..", L"C:\\a\\..b\\c.."),
                                   std::pair(L"\\\\s\\d\\a", L"UNC\\s\\d\\a")}) {
    EXPECT_EQ(removablePath(path), literal + form);
  }
  for (const std::wstring& path : parts(
           LR"(|a|a\b|\a|/a|C:|C:a|C:\|c:/|C:\\|C:\.|C:\.\a|C:\..|C:\a\..|C:\a\..\..\b|C:\a\.. \b)"
           LR"(|C:\ |C:\a\...|C:\*|C:\a?|C:\a:b|C:\a<b|\\s|\\s\d|\\s\d\|\\.\C:\a|\\?\C:\a|\??\C:\a)"
           LR"(|C:\a\\b|\\s\d\/a|\\\s\d\a|1:\a)")) {
    EXPECT_EQ(removablePath(path), L"") << testing::PrintToString(path);
  }
}

}  // namespace
