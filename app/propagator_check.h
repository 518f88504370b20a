#pragma once

#include <QStringList>

namespace pelorin::app {

/// The propagator's self-check for the debug page: a known element set, minute by minute through an hour two
/// and a half days after its epoch. A line a minute: UTC, position (km), velocity (km/s), both in the frame
/// of the elements.
QStringList PropagatorCheckLines();

}  // namespace pelorin::app
