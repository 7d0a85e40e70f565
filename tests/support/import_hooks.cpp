#include "import_hooks.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <memory>

#include "accounts.h"
#include "com_hooks.h"
#include "heap_guard.h"
#include "monitor.h"
#include "win32_functions.h"

namespace bed {
namespace {

struct HookedImport : HookedFunction {
  const Win32Function* facts = nullptr;
  const void* stub = nullptr;
};

struct Hooks {
  std::map<std::string, std::unique_ptr<HookedImport>> imports;
  std::map<std::string, const void*> fakes;
  /// And whether it was looked up.
  std::map<std::string, bool> hidden;
  std::vector<HMODULE> modules;
  /// Set while a hook does its own work, whose calls may be hooked too.
  bool busy = false;
};

Hooks& hooks() {
  static Hooks instance;
  return instance;
}

class BusyScope {
 public:
  BusyScope() { hooks().busy = true; }
  BusyScope(const BusyScope&) = delete;
  BusyScope& operator=(const BusyScope&) = delete;
  ~BusyScope() { hooks().busy = false; }
};

bool concerns() {
  return monitor().watchesThisThread() && !hooks().busy;
}

const Win32Function& factsOf(const Call& call) {
  return *static_cast<HookedImport*>(call.function)->facts;
}

const void* targetOf(const HookedFunction& function) {
  const auto fake = hooks().fakes.find(function.name);
  return fake == hooks().fakes.end() ? function.original : fake->second;
}

bool isHiddenLookUp(const Call& call) {
  if (call.function->name != "GetProcAddress" || call.words[1] <= 0xFFFF) {
    return false;
  }
  const auto hidden = hooks().hidden.find(reinterpret_cast<const char*>(call.words[1]));
  if (hidden == hooks().hidden.end()) {
    return false;
  }
  return hidden->second = true;
}

/// Whether the call gets its result here: it is to fail, was prepared, or must not happen.
bool isSettled(Call& call, LastErrorScope& lastError) {
  const Win32Function& facts = factsOf(call);
  const FailRule* rule = monitor().begin(Kind::kWin32, call, facts.failure != Failure::kCannotFail);
  if (rule != nullptr || isHiddenLookUp(call)) {
    const uint32_t named = rule != nullptr ? rule->error : ERROR_PROC_NOT_FOUND;
    const uint32_t error = named != 0 ? named : facts.error;
    call.result = failureResult(facts, error);
    if (error != 0 && facts.failure != Failure::kStatus) {
      lastError.set(error == FailRule::kNoError ? 0 : error);
    }
    return true;
  }
  if (monitor().answered(call, lastError)) {
    return true;
  }
  return HeapGuard::guards(call) && !HeapGuard::before(call);
}

const void* beforeImport(Call& call) {
  if (!concerns()) {
    return call.function->original;
  }
  LastErrorScope lastError;
  const BusyScope busy;
  const bool settled = isSettled(call, lastError);
  const Effect& effect = factsOf(call).effect;
  const bool closing = effect.move == Effect::Move::kCloses && !HeapGuard::guards(call);
  if (closing && call.words[effect.argument] != 0) {
    accounts().close(effect.account, call.words[effect.argument], call.function->name);
  }
  return settled ? nullptr : targetOf(*call.function);
}

/// A function that was looked up is led past the monitor as an imported one is.
void hookLookedUp(Call& call);

void book(const Call& call) {
  const Win32Function& facts = factsOf(call);
  const bool applies = facts.applies == nullptr || facts.applies(call);
  if (!succeeded(facts, call.result) || !applies) {
    return;
  }
  const Effect& effect = facts.effect;
  if (effect.move == Effect::Move::kOpensResult) {
    accounts().open(effect.account, call.result, call.function->name);
  } else if (effect.move == Effect::Move::kOpensAt) {
    const auto* items = reinterpret_cast<const uint64_t*>(call.words[effect.argument]);
    for (int index = 0; index < effect.items; ++index) {
      accounts().open(effect.account, items[index], call.function->name);
    }
  }
}

void afterImport(Call& call) {
  if (!concerns()) {
    return;
  }
  LastErrorScope lastError;
  const BusyScope busy;
  if (HeapGuard::guards(call)) {
    HeapGuard::after(call);
    lastError.set(HeapGuard::kLastError);
    return;
  }
  book(call);
  if (call.function->name == "GetProcAddress") {
    hookLookedUp(call);
  }
  hookInterface(call);
}

const void* beforeMethod(Call& call) {
  const bool ours = isInHookedModule(call.caller);
  call.note = static_cast<uint64_t>(ours);
  return ours ? beforeImport(call) : call.function->original;
}

void afterMethod(Call& call) {
  if (call.note != 0) {
    afterImport(call);
  }
}

/// The stub for a function; one for all modules.
const void* stubFor(const std::string& name, const Win32Function& facts, const void* original) {
  std::unique_ptr<HookedImport>& import = hooks().imports[name];
  if (import == nullptr) {
    import = std::make_unique<HookedImport>();
    import->name = name;
    import->signature = facts.signature;
    import->original = original;
    import->before = beforeImport;
    import->after = afterImport;
    import->facts = &facts;
    import->stub = makeStub(*import);
  }
  return import->stub;
}

void hookLookedUp(Call& call) {
  if (call.words[1] <= 0xFFFF) {
    return;
  }
  const std::string name = reinterpret_cast<const char*>(call.words[1]);
  const Win32Function* facts = findWin32Function(name);
  if (facts == nullptr) {
    monitor().violation("the table of functions lacks the looked-up " + name);
  } else if (call.result != 0 || hooks().fakes.contains(name)) {
    const auto* original = reinterpret_cast<const void*>(call.result);
    call.result = reinterpret_cast<uint64_t>(stubFor(name, *facts, original));
  }
}

void replace(const void** slot, const void* value) {
  DWORD protection = 0;
  VirtualProtect(slot, sizeof *slot, PAGE_READWRITE, &protection);
  *slot = value;
  VirtualProtect(slot, sizeof *slot, protection, &protection);
}

/// Calls `visit(name, slot)` for each function that the module imports by name.
template <class Visit>
void forEachImport(HMODULE module, const Visit& visit) {
  auto* const base = reinterpret_cast<uint8_t*>(module);
  const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
  const auto* headers = reinterpret_cast<const IMAGE_NT_HEADERS64*>(base + dos->e_lfanew);
  const auto& directory = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
  const auto* import =
      reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + directory.VirtualAddress);
  for (; import->Name != 0; ++import) {
    const auto* names =
        reinterpret_cast<const IMAGE_THUNK_DATA64*>(base + import->OriginalFirstThunk);
    auto* slots = reinterpret_cast<const void**>(base + import->FirstThunk);
    for (; names->u1.AddressOfData != 0; ++names, ++slots) {
      if (!IMAGE_SNAP_BY_ORDINAL64(names->u1.Ordinal)) {
        const auto* entry =
            reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + names->u1.AddressOfData);
        visit(std::string(reinterpret_cast<const char*>(entry->Name)), slots);
      }
    }
  }
}

}  // namespace

const void* methodStub(const std::string& name, const void* original) {
  const Win32Function* facts = findWin32Function(name);
  if (facts == nullptr) {
    return original;
  }
  const void* const stub = stubFor(name, *facts, original);
  hooks().imports[name]->before = beforeMethod;
  hooks().imports[name]->after = afterMethod;
  return stub;
}

std::vector<std::string> hookImports(HMODULE module, const std::vector<std::string>& only) {
  std::vector<std::string> unknown;
  forEachImport(module, [&](const std::string& name, const void** slot) {
    const Win32Function* facts = findWin32Function(name);
    const bool wanted = only.empty() || std::find(only.begin(), only.end(), name) != only.end();
    if (facts == nullptr && wanted) {
      unknown.push_back(name);
    } else if (wanted && facts->failure != Failure::kUntouched) {
      replace(slot, stubFor(name, *facts, *slot));
    }
  });
  hooks().modules.push_back(module);
  return unknown;
}

bool isInHookedModule(const void* address) {
  HMODULE module = nullptr;
  const DWORD flags =
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
  const auto& modules = hooks().modules;
  return GetModuleHandleExA(flags, static_cast<const char*>(address), &module) != FALSE &&
         std::find(modules.begin(), modules.end(), module) != modules.end();
}

void hideFunction(const std::string& name) {
  hooks().hidden[name] = false;
}

std::vector<std::string> hiddenInVain() {
  std::vector<std::string> names;
  for (const auto& [name, met] : hooks().hidden) {
    if (!met) {
      names.push_back(name);
    }
  }
  return names;
}

void fakeFunction(const std::string& name, const void* fake) {
  if (fake == nullptr) {
    hooks().fakes.erase(name);
  } else {
    hooks().fakes[name] = fake;
  }
}

void clearFakes() {
  hooks().hidden.clear();
  hooks().fakes.clear();
}

}  // namespace bed
