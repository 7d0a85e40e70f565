#pragma once

#include <optional>

#include "cleaner/order.h"
#include "cleaner/parent_process.h"

namespace corvane {

/// Waits for the one order: a WM_COPYDATA to a window that is there meanwhile and never shows.
///
/// It names the parent as the process to wait for, and the window that it says it is from, when it
/// names one, is the parent's. Anything else is refused and changes nothing. That keeps strays away
/// and proves nothing: another program of the user could say the same, but it could delete the same
/// files itself. Of one with fewer rights Windows lets no message through, from Vista on.
///
/// Nothing when the parent ends without an order, or a minute goes by.
std::optional<Order> receiveOrder(const ParentProcess& parent);

}  // namespace corvane
