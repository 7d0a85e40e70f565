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

}  // namespace

HOOK(void) hookJvm(JNIEnv* env) {
  hookJni(env);
}

HOOK(const wchar_t*) hookLibrary(const char* dll) {
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

HOOK(void)
prepare(const char* call, int kind, int nth, int always, uint64_t result, uint32_t error) {
  const std::string_view text = call;
  monitor().prepared.push_back({{text.begin(), text.end()},
                                static_cast<Prepared::Kind>(kind),
                                static_cast<uint32_t>(nth),
                                always != 0,
                                result,
                                error});
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

HOOK(const wchar_t*) unused() {
  return list(monitor().unused());
}

HOOK(const wchar_t*) complaints() {
  std::vector<std::string> texts = monitor().violations;
  for (const std::string& open : accounts().unbalanced()) {
    texts.push_back("still open: " + open);
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
