#pragma once

namespace corvane {

/// Which Windows this is. Every predicate asks the system anew (GetVersionExA), and nothing is
/// cached. When the system does not tell, all of them are false: the library then takes the wide
/// functions and treats what only some versions have as absent.

/// Windows 95, 98 or ME: the ANSI functions are called. Elsewhere the wide ones are.
bool isWindows9x();

/// The NT family: NT 4, 2000, XP and all that followed.
bool isWindowsNT();

bool isWindowsME();

/// Version 5.0 and no other: what asks this keeps its behaviour to that one version.
bool isWindows2000();

bool isWindowsXPOrLater();

}  // namespace corvane
