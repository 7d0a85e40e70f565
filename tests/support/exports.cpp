#include <jni.h>
#include <windows.h>

#include "accounts.h"
#include "heap_guard.h"
#include "jni_hooks.h"
#include "monitor.h"

// What com.corvane.testing.Hooks calls through JNA, and says of each.

using namespace bed;

#define HOOK(result) extern "C" __declspec(dllexport) result

namespace {

/// A list of texts as one, which lives until the next; Hooks takes it apart.
template <class Texts>
const wchar_t* list(const Texts& texts) {
  static std::wstring list;
  list.clear();
  for (const auto& text : texts) {
    list.append(text.begin(), text.end());
    list += L'\1';
  }
  return list.c_str();
}

void prepare(std::string_view call, Prepared prepared) {
  prepared.call.assign(call.begin(), call.end());
  monitor().prepared.push_back(std::move(prepared));
}

}  // namespace

HOOK(const wchar_t*) hook(JNIEnv* env, const char* dll) {
  hookJni(env);
  return list(hookImports(GetModuleHandleA(dll)));
}

HOOK(void) reset() {
  monitor().reset();
  accounts().clear();
  HeapGuard::clear();
}

HOOK(void) arm() {
  monitor().arm();
}

HOOK(void) disarm() {
  monitor().disarm();
}

HOOK(void) fail(const char* call, uint32_t nth, uint32_t error, int andAllLater) {
  prepare(call, {.nth = nth, .always = andAllLater != 0, .error = error});
}

HOOK(void) answer(const char* call, uint64_t result, uint32_t lastError, int always) {
  prepare(call, {Prepared::Kind::kAnswers, 1, always != 0, result, lastError});
}

HOOK(void) writeTo(int argument, const char* data, int size) {
  monitor().prepared.back().writes.emplace_back(argument, std::string(data, data + size));
}

HOOK(void) findValue(const char* call, int type, const char* data, int size) {
  for (const bool always : {false, true}) {
    prepare(call, {Prepared::Kind::kFinds, 1, always, static_cast<uint64_t>(type)});
    writeTo(0, data, size);
  }
}

HOOK(int) knows(const char* function) {
  return findFunction(function) != nullptr ? 1 : 0;
}

HOOK(const wchar_t*) calls() {
  return list(monitor().calls);
}

HOOK(const wchar_t*) unused() {
  return list(monitor().unused());
}

HOOK(const wchar_t*) complaints() {
  std::vector<std::string> texts = monitor().violations;
  for (const std::string& open : accounts().unbalanced()) {
    texts.push_back("still open: " + open);
  }
  constexpr size_t kPromisedByJni = 16;
  if (const size_t peak = accounts().peak(Account::kLocalReference); peak > kPromisedByJni) {
    texts.push_back("references pile up: " + std::to_string(peak) + " at once");
  }
  return list(texts);
}

HOOK(const wchar_t*) returned() {
  return returnedBesideException().c_str();
}

HOOK(int) failable(int jni) {
  return monitor().failable[jni != 0 ? 1 : 0];
}

HOOK(int) failed() {
  return monitor().failed;
}

HOOK(int) leftOpen() {
  return static_cast<int>(accounts().leftOpen());
}

HOOK(int) peak(const char* account) {
  return static_cast<int>(accounts().peak(account));
}
