#pragma once

#include <windows.h>

/// A system function that older Windows lack, looked up where it is used, so that the library loads
/// everywhere. `Function` is the pointer type of the SDK's declaration:
///   const RuntimeFunction<decltype(&MoveFileExW)> moveFileEx("kernel32.dll", "MoveFileExW");
/// False when it is missing; the thread's last error says why then. The module must be loaded
/// already.
template <class Function>
class RuntimeFunction {
 public:
  RuntimeFunction() = default;

  RuntimeFunction(const char* module, const char* name) noexcept
      : RuntimeFunction(GetModuleHandleA(module), name) {}

  /// In a module that is known already; a null one has no functions.
  RuntimeFunction(HMODULE module, const char* name) noexcept {
    if (module != nullptr) {
      function_ = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
    }
  }

  explicit operator bool() const noexcept { return function_ != nullptr; }

  template <class... Arguments>
  auto operator()(Arguments... arguments) const noexcept {
    return function_(arguments...);
  }

 private:
  Function function_ = nullptr;
};
