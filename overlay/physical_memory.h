#pragma once

#include <optional>

namespace pelorin::overlay {

/// Physical memory that programs can still have, in whole megabytes; nothing where the system does not tell.
std::optional<int> AvailablePhysicalMemoryMb();

}  // namespace pelorin::overlay
