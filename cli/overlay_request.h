#pragma once

#include <optional>

#include "app/station_entry.h"
#include "cli/options.h"
#include "overlay/opened_picture.h"
#include "overlay/overlay_generator.h"

/// From the options of "overlay" to the recording that its map lies on. What is taken for granted is said;
/// UsageError and Failure tell what is missing.
namespace pelorin::cli {

/// The picture that was named, if one was; what it does not hold is said.
std::optional<overlay::OpenedPicture> OpenReceived(const Arguments& arguments);

/// The map of a picture, or of so many rows (0: as long as the pass is) from a start or of a pass that is
/// found in the day's list.
overlay::OverlayRequest DescribeMap(const Arguments& arguments,
                                    const std::optional<overlay::OpenedPicture>& opened, int rows);

}  // namespace pelorin::cli
