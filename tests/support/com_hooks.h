#pragma once

#include "thunk.h"

namespace bed {

/// When the call has just handed out an interface whose methods the library calls, leads them past
/// the monitor too.
void hookInterface(const Call& call);

}  // namespace bed
