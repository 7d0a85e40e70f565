#include <windows.h>

#include <map>

#include "accounts.h"
#include "heap_guard.h"
#include "jni_hooks.h"
#include "monitor.h"
#include "thunk.h"

namespace bed {
namespace {

/// Where the library's code is.
const void* libraryBegin = nullptr;
const void* libraryEnd = nullptr;

/// Whether the library calls, on the watched thread. Where the compiler made a jump of a native's
/// last call, that returns to the native's stub.
bool concerns(const Call& call) {
  return monitor().watchesThisThread() && (isReturnToStub(call.caller) || isOfLibrary(call.caller));
}

const void* before(Call& call) {
  if (!concerns(call)) {
    return call.function->original;
  }
  checkRulesOfJni(call);
  const bool settled = monitor().settles(call) || isNullRelease(call) ||
                       (HeapGuard::guards(call) && !HeapGuard::before(call));
  const Effect& effect = call.function->facts.effect;
  const uint64_t item = call.words[effect.argument];
  if (effect.move == Effect::Move::kAsksFor) {
    accounts().open(effect.account, item, call.function->name);
  } else if (effect.move == Effect::Move::kCloses && item != 0 && !HeapGuard::guards(call)) {
    accounts().close(effect.account, item, call.function->name);
  }
  return settled ? nullptr : call.function->original;
}

void replace(const void** slot, const void* value) {
  DWORD protection = 0;
  VirtualProtect(slot, sizeof *slot, PAGE_READWRITE, &protection);
  *slot = value;
  VirtualProtect(slot, sizeof *slot, protection, &protection);
}

/// All objects of a class share their table of methods: what others call passes unseen.
void hookMethods(void* object, std::string_view names) {
  auto** const table = *static_cast<const void***>(object);
  for (const Function& method : allFunctions()) {
    if (method.name.starts_with(names)) {
      const void** const slot = table + method.slot;
      replace(slot, stubFor(std::string(method.name), method, *slot));
    }
  }
}

void book(const Call& call) {
  const Function& facts = call.function->facts;
  const Effect& effect = facts.effect;
  if (!facts.succeeded(call.result) || (facts.applies != nullptr && !facts.applies(call))) {
    return;
  }
  if (effect.move == Effect::Move::kOpensResult) {
    accounts().open(effect.account, call.result, call.function->name);
  } else if (effect.move == Effect::Move::kOpensAt) {
    const auto* items = reinterpret_cast<const uint64_t*>(call.words[effect.argument]);
    for (int index = 0; index < effect.items; ++index) {
      accounts().open(effect.account, items[index], call.function->name);
    }
    if (!effect.methods.empty()) {
      hookMethods(reinterpret_cast<void*>(*items), effect.methods);
    }
  }
}

/// A function that was looked up is led past the monitor as an imported one is.
void hookLookedUp(Call& call) {
  const std::string name = reinterpret_cast<const char*>(call.words[1]);
  const Function* const facts = findFunction(name);
  if (facts == nullptr) {
    violation("the table of functions lacks the looked-up " + name);
  } else if (call.result != 0) {
    const auto* original = reinterpret_cast<const void*>(call.result);
    call.result = reinterpret_cast<uint64_t>(stubFor(name, *facts, original));
  }
}

void after(Call& call) {
  if (!concerns(call)) {
    return;
  }
  if (HeapGuard::guards(call)) {
    HeapGuard::after(call);
    return;
  }
  book(call);
  if (call.function->name == "GetProcAddress" && call.words[1] > 0xFFFF) {
    hookLookedUp(call);
  }
}

/// False for an import that the table of functions lacks.
bool hookImport(const std::string& name, const void** slot) {
  const Function* const facts = findFunction(name);
  if (facts != nullptr && facts->failure != Failure::kUntouched) {
    replace(slot, stubFor(name, *facts, *slot));
  }
  return facts != nullptr;
}

}  // namespace

bool isOfLibrary(const void* address) {
  return libraryBegin <= address && address < libraryEnd;
}

const void* stubFor(const std::string& name, const Function& facts, const void* original) {
  static std::map<std::string, const void*> stubs;
  const auto [found, isNew] = stubs.try_emplace(name);
  if (isNew) {
    found->second = makeStub({name, original, before, after, facts});
  }
  return found->second;
}

std::vector<std::string> hookImports(void* library) {
  auto* const base = static_cast<uint8_t*>(library);
  const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
  const auto& header =
      reinterpret_cast<const IMAGE_NT_HEADERS64*>(base + dos->e_lfanew)->OptionalHeader;
  libraryBegin = base;
  libraryEnd = base + header.SizeOfImage;
  std::vector<std::string> unknown;
  const auto imports = header.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
  const auto* import = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + imports);
  for (; import->Name != 0; ++import) {
    const auto* names = reinterpret_cast<const uint64_t*>(base + import->OriginalFirstThunk);
    auto* slots = reinterpret_cast<const void**>(base + import->FirstThunk);
    for (; *names != 0; ++names, ++slots) {
      const auto* entry = reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + *names);
      const std::string name = reinterpret_cast<const char*>(entry->Name);
      if (!hookImport(name, slots)) {
        unknown.push_back(name);
      }
    }
  }
  return unknown;
}

}  // namespace bed
