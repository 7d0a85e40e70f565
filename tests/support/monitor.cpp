#include "monitor.h"

#include <windows.h>

#include <algorithm>
#include <cstring>

#include "jni_hooks.h"

namespace bed {
namespace {

bool begins(const std::wstring& call, const std::wstring& how) {
  return call.starts_with(how) && (call.size() == how.size() || call[how.size()] == L'\t');
}

constexpr std::wstring_view kAny = L"any call";

bool isUsedUp(const Prepared& entry) {
  return !entry.fails && entry.seen != 0 && !entry.always;
}

/// Whether a call gets it now: a failure, when it is the n-th.
bool comes(Prepared& entry, bool canFail) {
  if (!entry.fails) {
    return true;
  }
  if (!canFail) {
    return false;
  }
  ++entry.seen;
  return entry.seen == entry.nth || (entry.always && entry.seen > entry.nth);
}

void fail(Call& call, uint32_t named) {
  const Function& facts = call.function->facts;
  const uint32_t error = named != 0 ? named : facts.error();
  call.result = facts.failureResult(error);
  if (facts.isOfJni()) {
    throwInJava(call);
  } else if (error != 0 && !facts.returnsError()) {
    call.lastError = error == Prepared::kNoError ? 0 : error;
  }
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

void answer(Call& call, const Prepared& prepared) {
  for (const auto& [argument, bytes] : prepared.writes) {
    std::memcpy(reinterpret_cast<void*>(call.words[argument]), bytes.data(), bytes.size());
    lead(call.words[argument], bytes.size());
  }
  call.result = prepared.result;
  if (prepared.error != 0) {
    call.lastError = prepared.error;
  }
}

/// As the system does: not a byte more than there is, and the rest of the buffer stays as it was.
uint64_t handOut(const Call& call, const Prepared& prepared) {
  const std::string& value = prepared.writes.front().second;
  auto* const size = reinterpret_cast<uint32_t*>(call.words[5]);
  if (auto* const type = reinterpret_cast<uint32_t*>(call.words[3]); type != nullptr) {
    *type = static_cast<uint32_t>(prepared.result);
  }
  auto* const data = reinterpret_cast<void*>(call.words[4]);
  const auto whole = static_cast<uint32_t>(value.size());
  const uint32_t capacity = size == nullptr ? 0 : std::exchange(*size, whole);
  if (data == nullptr || capacity < whole) {
    return data == nullptr ? ERROR_SUCCESS : ERROR_MORE_DATA;
  }
  std::memcpy(data, value.data(), value.size());
  return ERROR_SUCCESS;
}

}  // namespace

Monitor& monitor() {
  static Monitor instance;
  return instance;
}

void violation(const std::string& text) {
  monitor().violations.emplace_back(text.begin(), text.end());
}

void Monitor::arm() {
  thread_ = GetCurrentThreadId();
}

bool Monitor::watchesThisThread() const {
  return thread_ == GetCurrentThreadId();
}

/// Failures go before answers, the last one first; then what answers once, in its order.
Prepared* Monitor::due(const Call& call) {
  const bool canFail = call.function->facts.canFail();
  Prepared* due = nullptr;
  for (Prepared& entry : prepared) {
    // Of a thousand answers, most are used up: they cost nothing any more.
    const bool isMeant =
        !isUsedUp(entry) && (entry.call == kAny || begins(calls.back(), entry.call));
    if (isMeant && comes(entry, canFail) &&
        (entry.fails || due == nullptr || (!due->fails && due->always))) {
      due = &entry;
    }
  }
  return due;
}

bool Monitor::settles(Call& call) {
  const Function& facts = call.function->facts;
  calls.push_back(showCall(call.function->name, facts.signature, call.words));
  failable += facts.canFail() ? 1 : 0;
  Prepared* const entry = due(call);
  if (entry == nullptr) {
    return false;
  }
  if (entry->fails) {
    failed = entry->call == kAny ? static_cast<int>(calls.size()) - 1 : failed;
    fail(call, entry->error);
    return true;
  }
  ++entry->seen;
  if (!entry->writes.empty() && entry->writes.front().first == Prepared::kFound) {
    call.result = handOut(call, *entry);
  } else {
    answer(call, *entry);
  }
  return true;
}

std::vector<std::wstring> Monitor::complaints() const {
  std::vector<std::wstring> texts = violations;
  for (const Prepared& entry : prepared) {
    if (entry.seen < entry.nth && !entry.always) {
      const auto isMeant = [&](const std::wstring& call) { return begins(call, entry.call); };
      texts.push_back(L"prepared in vain: " +
                      (entry.fails ? L"failure " + std::to_wstring(entry.nth) : L"an answer") +
                      L" of " + entry.call + L", which was called " +
                      std::to_wstring(std::count_if(calls.begin(), calls.end(), isMeant)) +
                      L" times");
    }
  }
  return texts;
}

}  // namespace bed
