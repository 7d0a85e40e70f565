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
  prepare(call, {false, 1, always != 0, result, lastError});
}

HOOK(void) writeTo(int argument, const char* data, int size) {
  monitor().prepared.back().writes.emplace_back(argument, std::string(data, data + size));
}

HOOK(int) knows(const char* function) {
  return findFunction(function) != nullptr ? 1 : 0;
}

HOOK(const wchar_t*) calls() {
  return list(monitor().calls);
}

HOOK(const wchar_t*) complaints() {
  std::vector<std::wstring> texts = monitor().complaints();
  for (const std::string& open : accounts().unbalanced()) {
    texts.push_back(L"still open: " + std::wstring(open.begin(), open.end()));
  }
  return list(texts);
}

HOOK(const wchar_t*) returned() {
  return returnedBesideException().c_str();
}

HOOK(int) failable() {
  return monitor().failable;
}

HOOK(int) failed() {
  return monitor().failed;
}

HOOK(int) leftOpen() {
  return static_cast<int>(accounts().leftOpen());
}
