#pragma once

#include "bridge/win32/text.h"

namespace corvane {

/// Whether a path begins at the root of a drive (`X:\`) or of a computer (`\\name`).
bool isAbsolute(const WString& path);

/// The path in the form in which the system takes it letter by letter and in any length, or the
/// empty one when nothing may be removed there: it is not absolute, or it is the root of a drive or
/// of a share; it leads upwards, or has a component of dots and blanks, of which systems make
/// different things, or an empty one; it names a device, several files or a part of one.
WString removablePath(const WString& path);

}  // namespace corvane
