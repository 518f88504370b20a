#pragma once

#include <functional>

namespace pelorin::desktop {

/// Calls `end`, from the message loop, when the system asks the program to end, as at the end of a session:
/// what the user has set is saved then, too. Once, and only where processes are asked by signals.
void EndBySignal(std::function<void()> end);

}  // namespace pelorin::desktop
