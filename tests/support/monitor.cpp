#include "monitor.h"

#include <windows.h>

#include <algorithm>
#include <cstring>
#include <cwchar>

#include "shown_call.h"

namespace bed {

namespace {

/// In bytes.
size_t textLength(const std::string& function, const void* text) {
  return function.ends_with('W') ? std::wcslen(static_cast<const wchar_t*>(text)) * sizeof(wchar_t)
                                 : std::strlen(static_cast<const char*>(text));
}

}  // namespace

Monitor& monitor() {
  static Monitor instance;
  return instance;
}

void Monitor::arm() {
  thread_ = GetCurrentThreadId();
}

bool Monitor::watchesThisThread() const {
  return thread_ != 0 && thread_ == GetCurrentThreadId();
}

void Monitor::reset() {
  *this = Monitor();
}

const FailRule* Monitor::begin(Kind kind, const Call& call, bool canFail) {
  record(kind, call);
  if (!canFail) {
    return nullptr;
  }
  ++failable_[static_cast<size_t>(kind)];
  const FailRule* rule = dueRule(kind, call.function->name);
  if (rule != nullptr && rule->name.empty()) {
    failed_ = static_cast<int>(calls_.size()) - 1;
  }
  return rule;
}

bool Monitor::answered(Call& call, LastErrorScope& lastError) {
  const auto prepared = answers_.find(call.function->name);
  if (prepared == answers_.end() || prepared->second.empty()) {
    return false;
  }
  const Answer answer = prepared->second.front();
  if (!answer.always) {
    prepared->second.pop_front();
  }
  for (const auto& [argument, bytes] : answer.writes) {
    std::memcpy(reinterpret_cast<void*>(call.words[argument]), bytes.data(), bytes.size());
  }
  call.result = answer.result;
  if (answer.lastError != 0) {
    lastError.set(answer.lastError);
  }
  return true;
}

void Monitor::record(Kind kind, const Call& call) {
  RecordedCall entry{call.function->name, kind, {}, {}, {}};
  std::copy_n(call.words, entry.words.size(), entry.words.begin());
  entry.shown = showCall(entry.name, call.function->signature, call.words);
  if (const auto wanted = captures_.find(entry.name); wanted != captures_.end()) {
    for (const auto& [argument, size] : wanted->second) {
      const auto* bytes = reinterpret_cast<const uint8_t*>(call.words[argument]);
      if (bytes != nullptr) {
        const size_t length = size == kText ? textLength(entry.name, bytes) : size;
        entry.captured[argument].assign(bytes, bytes + length);
      }
    }
  }
  calls_.push_back(std::move(entry));
}

size_t Monitor::countOf(const std::string& name) const {
  return static_cast<size_t>(std::count_if(calls_.begin(), calls_.end(), [&](const auto& call) {
    return call.name == name;
  }));
}

std::vector<std::string> Monitor::unused() const {
  const auto told = [&](const std::string& what, const std::string& name) {
    return what + " of " + name + ", which was called " + std::to_string(countOf(name)) + " times";
  };
  std::vector<std::string> texts;
  for (const FailRule& rule : rules_) {
    if (rule.isUnused()) {
      texts.push_back(told("failure " + std::to_string(rule.nth), rule.name));
    }
  }
  for (const auto& [name, answers] : answers_) {
    if (!answers.empty() && !answers.front().always) {
      texts.push_back(told(std::to_string(answers.size()) + " answers", name));
    }
  }
  return texts;
}

const FailRule* Monitor::dueRule(Kind kind, const std::string& name) {
  const FailRule* due = nullptr;
  for (FailRule& rule : rules_) {
    if (rule.kind == kind && (rule.name.empty() || rule.name == name) && rule.isDue()) {
      due = &rule;
    }
  }
  return due;
}

LastErrorScope::LastErrorScope() : error_(GetLastError()) {}

LastErrorScope::~LastErrorScope() {
  SetLastError(error_);
}

}  // namespace bed
