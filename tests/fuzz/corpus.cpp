#include <initializer_list>
#include <map>

#include "hostile_windows.h"

namespace fuzz {
namespace {

using namespace std::literals;

std::string wide(std::wstring_view text) {
  return {reinterpret_cast<const char*>(text.data()), text.size() * sizeof(wchar_t)};
}

template <class Number>
std::string numbers(std::initializer_list<Number> list) {
  return {reinterpret_cast<const char*>(list.begin()), list.size() * sizeof(Number)};
}

std::string words(std::initializer_list<int64_t> list) {
  return numbers(list);
}

const std::string kFixedInfo = numbers<uint32_t>(
    {0xFEEF04BD, 0x10000, 0x10002, 0x30004, 0x50006, 0x70008, 0x3F, 0, 0x40004, 1, 0, 0, 0});

const std::multimap<std::string, Input> kCorpus = {
    {"order", {{}, "11a2c C:\\t\\a;*C:\\d;e\0"s}},
    {"order", {{}, "01A2C c:/a/b\\;\\\\s\\d\\a;C:\\..\\x\0"s}},
    {"order", {{}, "0ffffffff *\0"s}},
    {"order", {{}, "1100000000 C:\\a\0"s}},
    {"registry-bytes", {{0, 0, 0, REG_BINARY}, "\0\1\2\xFF"s}},
    {"registry-list", {{0, 0, 0, REG_MULTI_SZ}, wide(L"one\0two\0\0"sv)}},
    {"registry-list", {{k9x, 0, 0, REG_MULTI_SZ}, "one\0two\0\x81\x42\0\0"s}},
    {"registry-names", {{0, 0, 0, 0, 0, 3}, wide(L"Name\0behind"sv)}},
    {"registry-names", {{k9x | kOther, 0, 0, 0, 0, 2}, "Name\x81\x42\0"s}},
    {"registry-text", {{0, 0, 0, REG_SZ}, wide(L"C:\\Program Files\0x"sv)}},
    {"registry-text", {{k9x | kOther, 0, 0, REG_EXPAND_SZ}, "%PATH%;C:\\a\0\x81\x42"s}},
    {"rename-section", {{}, "[windows]\r\n[Rename]\r\nNUL=C:\\a\r\n"}},
    {"rename-section", {{0, 0, 0, 0, 0, 2}, "a\n[Rename]xyz"}},
    {"rename-section", {{0, 0, 0, 0, 0, 1}, "[rename]\n\0[Rename\n"s}},
    {"service-config",
     {{},
      words({0x200000010, 1, 64, 74, 5, 80, 90, 96}) + wide(L"C:\\a\0gr\0a\0b\0\0me\0Name\0"sv)}},
    {"service-config",
     {{}, words({0x200000110, 1, 66, 0, 5, 66, 64, 64}) + wide(L"\0one\0two\0\0"sv)}},
    {"service-description", {{}, words({8}) + wide(L"told\0"sv)}},
    {"service-failures",
     {{}, words({10, 40, 52, 2, 64}) + wide(L"again\0run\0\0\0"sv) + words({0x500000001, 2})}},
    {"service-failures", {{}, words({10, 0, 0, 0, 0})}},
    {"service-key", {{}, wide(L"Key\0"sv)}},
    {"service-names",
     {{0, 0, 0, ERROR_MORE_DATA, 0, 2},
      words({112, 112, 0, 0, 0, 0, 0, 116, 116, 0, 0, 0, 0, 0}) + wide(L"a\0bc\0"sv)}},
    {"service-status", {{}, numbers<uint32_t>({16, 4, 5, 0, 0, 0, 0, 300, 0})}},
    {"system-texts", {{}, wide(L"C:\\PROGRA~1\0"sv)}},
    {"system-texts", {{k9x | kOther}, "C:\\\0D:\\\0\x81\x42\0\0"s}},
    {"variable", {{}, wide(L"value")}},
    {"variable", {{k9x}, "value\x81"}},
    {"version", {{}, numbers<uint16_t>({92, 52, 0}) + wide(L"VS_VERSION_INFO\0\0"sv) + kFixedInfo}},
    {"version", {{k9x}, numbers<uint16_t>({72, 52}) + "VS_VERSION_INFO\0"s + kFixedInfo}},
    {"version", {{kOther, 0, 0, 8, 0, 52}, numbers<uint16_t>({60, 52, 0, 0}) + kFixedInfo}},
};

}  // namespace

std::vector<Input> corpusOf(const char* parser) {
  std::vector<Input> inputs;
  const auto [begin, end] = kCorpus.equal_range(parser);
  for (auto entry = begin; entry != end; ++entry) {
    inputs.push_back(entry->second);
  }
  return inputs;
}

}  // namespace fuzz
