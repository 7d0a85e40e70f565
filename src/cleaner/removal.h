#pragma once

#include <vector>

#include "cleaner/order.h"

namespace corvane {

/// Removes all of it. A link goes itself, and where it leads nothing is touched, also when others
/// put it there meanwhile; that something is read-only is no obstacle. What cannot be removed is
/// tried again for ten seconds and then left to the next start of Windows, by its name, directories
/// with what is left in them too. A directory that was given as a file stays, and so does a link to
/// one.
void removeAll(const std::vector<Removable>& removables);

}  // namespace corvane
