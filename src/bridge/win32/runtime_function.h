#pragma once

#include <windows.h>

namespace corvane {

/// A system function that older Windows lack, looked up where it is used, so that the library loads
/// everywhere:
///   const auto moveFileEx = RUNTIME_FUNCTION(kernel32, MoveFileExW);
/// Its type is that of the SDK's declaration, `RuntimeFunction<decltype(&MoveFileExW)>`. False when
/// it is missing; the thread's last error says why then.
template <class Function>
class RuntimeFunction {
 public:
  RuntimeFunction() = default;

  RuntimeFunction(const char* module, const char* name) noexcept
      : RuntimeFunction(GetModuleHandleA(module), name) {}

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

/// The function in a module that must be loaded already, named without its ".dll".
#define RUNTIME_FUNCTION(module, name) RuntimeFunction<decltype(&(name))>(#module ".dll", #name)

/// The function in a module that is known by its handle; a null one has no functions.
#define RUNTIME_FUNCTION_OF(handle, name) RuntimeFunction<decltype(&(name))>(handle, #name)

}  // namespace corvane
