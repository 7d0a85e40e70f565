#pragma once

#include <windows.h>

/// An imported function's name, and the function that takes its place.
struct ImportSwap {
  const char* name;
  void* function;
};

/// Exchanges the function that `module` calls by that name with the one given, so that doing it
/// again restores what was before. False when the module imports no such function, or its table
/// cannot be written.
bool swapImport(HMODULE module, ImportSwap& swap);
