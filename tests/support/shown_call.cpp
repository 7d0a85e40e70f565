#include "functions.h"

#include <windows.h>

#include <cstdio>
#include <cstring>
#include <iterator>
#include <sstream>

namespace bed {
namespace {

/// Below it a number is shown in decimal.
constexpr int64_t kSmall = 1000;

template <class Target>
const Target* at(uint64_t word) {
  return reinterpret_cast<const Target*>(word);
}

std::wstring showNumber(uint64_t number) {
  const auto value = static_cast<int64_t>(number);
  std::wostringstream text;
  if (value > -kSmall && value < kSmall) {
    text << value;
  } else {
    text << L"0x" << std::hex << std::uppercase << number;
  }
  return text.str();
}

std::wstring showNumber32(uint32_t number) {
  const auto value = static_cast<int32_t>(number);
  return showNumber(value > -kSmall && value < 0 ? static_cast<uint64_t>(int64_t{value}) : number);
}

std::wstring showBytes(const uint8_t* bytes, size_t count) {
  constexpr wchar_t digits[] = L"0123456789ABCDEF";
  std::wstring hex = L"x";
  for (size_t index = 0; index < count; ++index) {
    hex += {digits[bytes[index] / 16], digits[bytes[index] % 16]};
  }
  return hex;
}

std::wstring showText(const char* text) {
  std::wstring wide(static_cast<size_t>(MultiByteToWideChar(CP_ACP, 0, text, -1, nullptr, 0)),
                    L'\0');
  MultiByteToWideChar(CP_ACP, 0, text, -1, wide.data(), static_cast<int>(wide.size()));
  wide.pop_back();
  return wide;
}

/// What is no address is the number of a function in a module, which has no name.
std::wstring showText(bool wide, uint64_t word) {
  if (word <= 0xFFFF) {
    return word == 0 ? L"null" : showNumber(word);
  }
  return wide ? at<wchar_t>(word) : showText(at<char>(word));
}

std::wstring showKey(uint64_t word) {
  constexpr const wchar_t* kNames[] = {L"HKCR", L"HKCU", L"HKLM", L"HKU", L"HKPD", L"HKCC"};
  const uint32_t number = static_cast<uint32_t>(word) - 0x80000000U;
  return number < std::size(kNames) ? kNames[number] : word == 0 ? L"null" : L"a key";
}

std::wstring showSid(const void* sid) {
  const auto* bytes = static_cast<const uint8_t*>(sid);
  std::wstring text = L"S-" + std::to_wstring(bytes[0]) + L"-" + std::to_wstring(bytes[7]);
  for (size_t index = 0; index < bytes[1]; ++index) {
    text += L"-" + std::to_wstring(*reinterpret_cast<const uint32_t*>(bytes + 8 + 4 * index));
  }
  return text;
}

std::wstring showRecords(std::string_view fields, bool wide, uint64_t address, size_t count);

/// A description, or what is done on failure: a record, and one for each action.
std::wstring showServiceChange(uint64_t level, uint64_t address) {
  if (level == SERVICE_CONFIG_DESCRIPTION) {
    return showRecords("u", true, address, 1);
  }
  const auto& failure = *at<SERVICE_FAILURE_ACTIONSW>(address);
  const auto actions = reinterpret_cast<uint64_t>(failure.lpsaActions);
  return showRecords("nuunp", true, address, 1) +
         (failure.cActions == 0 ? L"" : showRecords("nn", true, actions, failure.cActions));
}

std::wstring showArgument(char letter, bool wide, const uint64_t* word) {
  const uint64_t value = *word;
  const bool isNull = value == 0;
  switch (letter) {
    case 't':
    case 'u':
      return showText(wide || letter == 'u', value);
    case 'n':
      return showNumber32(static_cast<uint32_t>(value));
    case 'y':
      return showNumber(value & 0xFF);
    case 'h':
    case 'w':
      return showNumber(value);
    case 'p':
      return isNull ? L"0" : L"&";
    case 'k':
      return showKey(value);
    case 'i':
      return isNull ? L"null" : showNumber32(*at<uint32_t>(value));
    case 'q':
      return isNull ? L"null" : showNumber(*at<uint64_t>(value));
    case 's':
      return isNull ? L"null" : showSid(at<void>(value));
    case 'c':
      return showServiceChange(word[-1], value);
    case 'f':
      return at<FILE>(value) == stderr ? L"stderr" : L"another";
    case 'd':
      return isNull ? L"null" : showBytes(at<uint8_t>(value), static_cast<uint32_t>(word[1]));
    default:
      return isNull ? L"null" : showBytes(at<uint8_t>(value), static_cast<size_t>(letter - '0'));
  }
}

size_t sizeOfField(char letter) {
  return letter == 'y' ? 1 : letter == 'h' ? 2 : letter == 'n' || letter == '.' ? 4 : 8;
}

/// Records that stand one behind the other; each field is at the next place that its size allows.
std::wstring showRecords(std::string_view fields, bool wide, uint64_t address, size_t count) {
  std::wstring shown;
  for (; address != 0 && count != 0; --count) {
    wchar_t separator = L'(';
    for (const char letter : fields) {
      const size_t size = sizeOfField(letter);
      address = (address + size - 1) / size * size;
      uint64_t word = 0;
      std::memcpy(&word, at<void>(address), size);
      if (letter != '-' && letter != '.') {
        shown += separator + showArgument(letter, wide, &word);
        separator = L',';
      }
      address += size;
    }
    address = (address + 7) / 8 * 8;
    shown += L')';
  }
  return shown.empty() ? L"null" : shown;
}

}  // namespace

std::wstring showCall(std::string_view name, std::string_view signature, const uint64_t* words) {
  std::wstring shown(name.begin(), name.end());
  const bool wide = name.ends_with('W');
  for (; !signature.empty(); signature.remove_prefix(1), ++words) {
    const char letter = signature[0];
    if (letter == '{' || letter == '[') {
      const size_t end = signature.find_first_of("}]");
      const size_t count = letter == '{' ? 1 : static_cast<uint32_t>(words[1]);
      shown += L'\t' + showRecords(signature.substr(1, end - 1), wide, *words, count);
      signature.remove_prefix(end);
    } else if (letter != '-') {
      const std::wstring argument = showArgument(letter, wide, words);
      shown += L'\t' + (argument.empty() ? L"''" : argument);
    }
  }
  return shown;
}

}  // namespace bed
