#pragma once

#include <optional>

#include "cleaner/order.h"
#include "cleaner/parent_process.h"

namespace corvane {

/// Waits for the one order: a WM_COPYDATA to a window that is there meanwhile and never shows.
///
/// It must come from the parent: it names the parent as the process to wait for, and the window
/// that sends it, when there is one, is the parent's. Anything else is refused and changes nothing.
/// Nothing when the parent ends without an order, or a minute goes by.
std::optional<Order> receiveOrder(const ParentProcess& parent);

}  // namespace corvane
