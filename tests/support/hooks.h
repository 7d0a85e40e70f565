#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "thunk.h"

namespace bed {

/// What is called instead of `original`: a stub that leads it past the monitor when the library
/// calls. One for each name.
const void* stubFor(const std::string& name, const Function& facts, const void* original);

/// Leads every function that `module` imports past the monitor, and also those that it looks up
/// with GetProcAddress, and the methods of the objects that it is handed, from now on. Returns the
/// names of imports that the table of functions lacks; those are not hooked.
std::vector<std::string> hookImports(HMODULE module);

}  // namespace bed
