#pragma once

#include <functional>

#include "bridge/win32/text.h"

namespace corvane {

/// The commands that the system runs once at its next start: values of the machine's key
/// "RunOnce". Those of this library are named "ZELQ00001" and so on; others are listed and never
/// removed. All throw RegistryException.

/// Registers a command under the first name that is free.
void addStartupCommand(const WString& command);

/// Hands over every command, in the system's order, with its variables expanded where its type asks
/// for that; what is no text is passed over. The key stays open (see RegistryKey).
void listStartupCommands(const std::function<void(const WString&)>& take);

/// Removes the first of this library's values that is this command, letter by letter and not
/// expanded. None is no failure. The key stays open, too.
void removeStartupCommand(const WString& command);

}  // namespace corvane
