#include "monitor.h"

#include <windows.h>

#include <algorithm>
#include <cstring>

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
  record(call);
  if (!call.function->facts.canFail()) {
    return nullptr;
  }
  ++failable[call.function->facts.isOfJni() ? 1 : 0];
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
  if (!answer.always) {
    prepared->second.pop_front();
  }
  for (const auto& [argument, bytes] : answer.writes) {
    std::memcpy(reinterpret_cast<void*>(call.words[argument]), bytes.data(), bytes.size());
    lead(call.words[argument], bytes.size());
  }
  call.result = answer.result;
  if (answer.lastError != 0) {
    lastError.set(answer.lastError);
  }
  return true;
}

void Monitor::record(const Call& call) {
  const std::string& name = call.function->name;
  calls.push_back({name, showCall(name, call.function->facts.signature, call.words)});
}

std::vector<std::string> Monitor::unused() const {
  const auto told = [&](const std::string& what, const std::string& name) {
    const auto count = std::count_if(calls.begin(), calls.end(), [&](const auto& call) {
      return call.name == name;
    });
    return what + " of " + name + ", which was called " + std::to_string(count) + " times";
  };
  std::vector<std::string> texts;
  for (const FailRule& rule : rules) {
    if (!rule.lookedUp.empty() && rule.seen == 0) {
      texts.push_back("hidden " + rule.lookedUp + ", which was not looked up");
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
