#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace bed {

/// Leads every function that `module` imports past the monitor, and also those that it looks up
/// with GetProcAddress from now on. Returns the names of imports that the table of functions lacks;
/// those are not hooked. `only`: when not empty, nothing else is hooked.
std::vector<std::string> hookImports(HMODULE module, const std::vector<std::string>& only = {});

/// What stands in a table of methods instead of `original`. Calls by others than the hooked modules
/// pass unseen.
const void* methodStub(const std::string& name, const void* original);

/// Whether an address is in the code of a hooked module.
bool isInHookedModule(const void* address);

/// Functions that GetProcAddress does not find, as on a Windows that is too old for them.
void hideFunction(const std::string& name);
/// Those of them that were not looked up.
std::vector<std::string> hiddenInVain();

/// Replaces a function for all callers that are hooked; null gives it back.
void fakeFunction(const std::string& name, const void* fake);

/// Forgets what is hidden and faked.
void clearFakes();

}  // namespace bed
