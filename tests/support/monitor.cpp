#include "monitor.h"

#include <windows.h>

#include <algorithm>
#include <cstring>
#include <utility>

namespace bed {
namespace {

const char* anyOf(const Call& call) {
  return call.function->facts.isOfJni() ? "any JNI call" : "any call";
}

/// Whether the rule speaks of this call.
bool concerns(const FailRule& rule, const Call& call) {
  if (rule.name != call.function->name && rule.name != anyOf(call)) {
    return false;
  }
  return rule.lookedUp.empty() ||
         (call.words[1] > 0xFFFF && rule.lookedUp == reinterpret_cast<const char*>(call.words[1]));
}

/// The pointers of an answer, which are known only when it is written: see Hooks.HERE.
void lead(uint64_t place, size_t size) {
  constexpr uint64_t kHere = 0x5CE4E;
  auto* const words = reinterpret_cast<uint64_t*>(place);
  for (uint64_t* word = words; word < words + size / sizeof(uint64_t); ++word) {
    if (*word >> 32 == kHere) {
      *word = place + static_cast<uint32_t>(*word);
    }
  }
}

/// As the system does: not a byte more than there is, and the rest of the buffer stays as it was.
uint64_t handOut(const Call& call, const Answer& answer) {
  const std::string& value = *answer.value;
  auto* const size = reinterpret_cast<uint32_t*>(call.words[5]);
  if (auto* const type = reinterpret_cast<uint32_t*>(call.words[3]); type != nullptr) {
    *type = static_cast<uint32_t>(answer.result);
  }
  auto* const data = reinterpret_cast<void*>(call.words[4]);
  if (size == nullptr) {
    return data == nullptr ? ERROR_SUCCESS : ERROR_INVALID_PARAMETER;
  }
  const uint32_t capacity = std::exchange(*size, static_cast<uint32_t>(value.size()));
  if (data != nullptr && capacity < value.size()) {
    return ERROR_MORE_DATA;
  }
  if (data != nullptr) {
    std::memcpy(data, value.data(), value.size());
  }
  return ERROR_SUCCESS;
}

}  // namespace

LastErrorScope::LastErrorScope() : error_(GetLastError()) {}

LastErrorScope::~LastErrorScope() {
  SetLastError(error_);
}

Monitor& monitor() {
  static Monitor instance;
  return instance;
}

void violation(const std::string& text) {
  monitor().violations.push_back(text);
}

void Monitor::arm() {
  thread_ = GetCurrentThreadId();
}

bool Monitor::watchesThisThread() const {
  return thread_ == GetCurrentThreadId();
}

const FailRule* Monitor::begin(const Call& call) {
  const Function& facts = call.function->facts;
  calls.push_back(showCall(call.function->name, facts.signature, call.words));
  if (!facts.canFail()) {
    return nullptr;
  }
  ++failable[facts.isOfJni() ? 1 : 0];
  const FailRule* due = nullptr;
  for (FailRule& rule : rules) {
    if (concerns(rule, call) &&
        (++rule.seen == rule.nth || (rule.andAllLater && rule.seen > rule.nth))) {
      due = &rule;
    }
  }
  if (due != nullptr && due->name == anyOf(call)) {
    failed = static_cast<int>(calls.size()) - 1;
  }
  return due;
}

bool Monitor::answered(Call& call, LastErrorScope& lastError) {
  const auto prepared = answers.find(call.function->name);
  if (prepared == answers.end() || prepared->second.empty()) {
    return false;
  }
  const Answer answer = prepared->second.front();
  if (answer.value && prepared->second.size() == 1) {
    prepared->second.front().always = true;
  } else if (!answer.always) {
    prepared->second.pop_front();
  }
  for (const auto& [argument, bytes] : answer.writes) {
    std::memcpy(reinterpret_cast<void*>(call.words[argument]), bytes.data(), bytes.size());
    lead(call.words[argument], bytes.size());
  }
  call.result = answer.value ? handOut(call, answer) : answer.result;
  if (answer.lastError != 0) {
    lastError.set(answer.lastError);
  }
  return true;
}

bool Monitor::toldVersion(Call& call, LastErrorScope& lastError) const {
  if (!version || !call.function->name.starts_with("GetVersionEx")) {
    return false;
  }
  auto* const record = reinterpret_cast<uint32_t*>(call.words[0]);
  const bool isWide = call.function->name.ends_with('W');
  const size_t longer = *record - (isWide ? sizeof(OSVERSIONINFOW) : sizeof(OSVERSIONINFOA));
  constexpr size_t kMore = sizeof(OSVERSIONINFOEXA) - sizeof(OSVERSIONINFOA);
  if (!version->tells || (longer != 0 && (longer != kMore || !version->knowsLongRecord))) {
    lastError.set(ERROR_INSUFFICIENT_BUFFER);
    return true;
  }
  std::memset(record + 1, 0, *record - sizeof *record);
  record[1] = version->major;
  record[2] = version->minor;
  record[4] = version->platform;
  call.result = TRUE;
  return true;
}

void Monitor::leadToModule(Call& call) {
  if (call.function->name == "LoadLibraryExA") {
    const auto found = modules.find(reinterpret_cast<const char*>(call.words[0]));
    if (found != modules.end()) {
      call.words[0] = reinterpret_cast<uint64_t>(found->second.c_str());
    }
  }
}

std::vector<std::string> Monitor::unused() const {
  const auto told = [&](const std::string& what, const std::string& name) {
    const std::wstring wide(name.begin(), name.end());
    const auto count = std::count_if(calls.begin(), calls.end(), [&](const std::wstring& call) {
      return call.substr(0, call.find(L'\t')) == wide;
    });
    return "prepared in vain: " + what + " of " + name + ", which was called " +
           std::to_string(count) + " times";
  };
  std::vector<std::string> texts;
  for (const FailRule& rule : rules) {
    if (!rule.lookedUp.empty() && rule.seen == 0) {
      texts.push_back("prepared in vain: hidden " + rule.lookedUp + ", which was not looked up");
    } else if (rule.seen < rule.nth && !rule.andAllLater) {
      texts.push_back(told("failure " + std::to_string(rule.nth), rule.name));
    }
  }
  for (const auto& [name, left] : answers) {
    if (!left.empty() && !left.front().always) {
      texts.push_back(told(std::to_string(left.size()) + " answers", name));
    }
  }
  return texts;
}

}  // namespace bed
