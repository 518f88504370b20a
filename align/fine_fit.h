#pragma once

#include <optional>
#include <vector>

#include "align/fine_windows.h"
#include "align/moves.h"

namespace pelorin::align {

/// What is fitted, and how large each is thought to be: nothing else tells a yaw from a tilted coast where
/// coasts lie on one side of the track only. 0 for what is not fitted, infinite for what is not known.
struct MoveDoubts {
  double TimeS, ShiftColumns, RollDeg, YawDeg;

  std::array<double, Moves::kCount> AsArray() const { return {TimeS, ShiftColumns, RollDeg, YawDeg}; }
};

/// One window after the fit.
struct WindowResidual {
  swath::PixelPoint Middle;  ///< in the frame
  /// The window's own best place near the fitted one, as it lies from there.
  double Rows = 0, Columns = 0;
  double Votes = 0;  ///< at the fitted place
};

struct FineFit {
  Moves Found;
  /// Five times the windows' votes, less what the doubts take off.
  double Gate = 0;
  std::vector<WindowResidual> Windows;  ///< those that vote for the place
};

/// Where most windows agree. Starts with what fits best of all moves that the windows reach. `already` was
/// added to the recording before: the doubts are about both together.
FineFit FitWindows(const Frame& frame, const std::vector<FineWindow>& windows, const MoveDoubts& doubts,
                   const Moves& already);

}  // namespace pelorin::align
